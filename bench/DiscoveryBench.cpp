// SPDX-License-Identifier: Apache-2.0
// Lists cameras with this project's program and with arv-tool, each as a whole command, one after the other
// on the same network, and prints how many each found and how long it took.
#include "tests/network/DiscoveryConditions.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <exception>
#include <vector>

namespace {

using Seconds = std::chrono::duration<double>;

struct Program
{
    std::vector<std::string> command;
    std::string markOfACamera; ///< Its output has this once for each camera.
};

const Program Ours{{CLI, "list", "--json"}, "\"GevMACAddress\""};
/// With the option that lets cameras answer by broadcast, without which it finds fewer.
const Program ArvTool{{"arv-tool-0.8", "--gv-allow-broadcast-discovery-ack"}, " ("};

struct Result
{
    std::size_t cameras = 0;
    std::vector<double> seconds;

    double median() const
    {
        std::vector<double> sorted = seconds;
        std::sort(sorted.begin(), sorted.end());
        return sorted[sorted.size() / 2];
    }
};

void run(const Program& program, const std::vector<std::string>& wrapper, const Site& site, Result& result)
{
    std::vector<std::string> command = wrapper;
    command.insert(command.end(), program.command.begin(), program.command.end());
    const auto start = std::chrono::steady_clock::now();
    const auto output = site.host().execute(command);
    result.seconds.push_back(Seconds(std::chrono::steady_clock::now() - start).count());
    const std::string& text = output.standardOutput;
    for (auto at = text.find(program.markOfACamera); at != std::string::npos;
         at = text.find(program.markOfACamera, at + 1))
        ++result.cameras;
}

void compare(const std::string& description, const std::function<void(Site&)>& build, unsigned cameras,
             unsigned enumerations, const std::vector<std::string>& wrapper = {})
{
    Site site;
    build(site);
    Result ours;
    Result arvTool;

    const unsigned pairs = std::max(enumerations, 3u);
    for (unsigned i = 0; i < pairs; ++i) {
        run(Ours, wrapper, site, ours);
        run(ArvTool, wrapper, site, arvTool);
    }
    std::printf("| %-76s | %4u | %4zu | %6.3f | %4zu | %6.3f | %5.2f |\n", description.c_str(),
                cameras * pairs, ours.cameras, ours.median(), arvTool.cameras, arvTool.median(),
                ours.median() / arvTool.median());
    std::fflush(stdout);
}

void buildForgery(Site& site)
{
    site.addCameras(site.addAdapter("eth0", "192.168.1.5/24"),
                    R"({"mac": "02:00:00:00:01:01", "address": "192.168.1.20", "forgedAnswers": 10000})");
}

} // namespace

int main()
try {
    std::printf("Cameras listed and median seconds of the whole command; cameras summed over the runs.\n\n"
                "| %-76s |  all | ours |      s |  arv |      s | ratio |\n"
                "|%s|-----:|-----:|-------:|-----:|-------:|------:|\n",
                "condition", std::string(78, '-').c_str());
    const std::vector<std::string> unprivileged{"setpriv", "--bounding-set=-net_raw", "--inh-caps=-net_raw"};
    for (const auto& condition : discoveryConditions())
        compare(condition.description, condition.build, condition.cameras, condition.enumerations);
    for (const char* name : {"InsideAndOutsideTheSubnet", "ReversePathFilter1WithoutDefaultRoute",
                             "FirewallThatPassesEstablishedConnections"}) {
        const auto& condition = discoveryCondition(name);
        compare("without CAP_NET_RAW: " + condition.description, condition.build, condition.cameras, 1,
                unprivileged);
    }
    compare("one camera and 10,000 forged answers to each question", buildForgery, 1, 1);
    return 0;
} catch (const std::exception& error) {
    std::fprintf(stderr, "discovery_bench: %s\n", error.what());
    return 1;
}
