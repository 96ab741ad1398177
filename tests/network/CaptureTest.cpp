// SPDX-License-Identifier: Apache-2.0
#include "tests/network/OpenCamera.h"
#include "tests/network/Sdk.h"
#include "tests/simulator/Shown.h"
#include "tests/support/CameraDescriptions.h"
#include "tests/support/WaitUntil.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <stdexcept>

namespace {

/// A capture of what crosses the host's adapter, read by tshark. Its program is halted until stop(): the
/// kernel keeps all that there is to capture, however late a busy machine gives the program a processor.
class Capture
{
public:
    Capture(const Site& site, const std::string& interface)
        : m_site(site),
          m_file(testing::TempDir() + "gvcp-" + std::to_string(getpid()) + ".pcap"),
          m_process(site.host().start({"sh", "-c",
                                       "exec tcpdump --immediate-mode -s 2048 -B 16384 -Z root -U -i " +
                                           interface + " -w " + m_file + " udp port 3956 or port 9 2>&1"}))
    {
        while (m_process.readLine().find("listening on") == std::string::npos) {
        }
        kill(m_process.id(), SIGSTOP);
    }
    Capture(const Capture&) = delete;
    Capture& operator=(const Capture&) = delete;
    ~Capture() { std::filesystem::remove(m_file); }

    /// When all that has crossed so far is in the file; a last packet to a listening host, `target`, marks
    /// it.
    void stop(const std::string& target)
    {
        const std::string mark = "end of what is captured";
        m_site.host().execute({"bash", "-c", "echo " + mark + " >/dev/udp/" + target + "/9"});
        kill(m_process.id(), SIGCONT);
        if (!waitUntil([&] { return content().find(mark) != std::string::npos; }))
            throw std::runtime_error("the capture does not get to its end");
        kill(m_process.id(), SIGINT);
        m_process.wait();
    }

    /// One line for each packet that the filter selects: the fields, with tabs between.
    std::vector<std::string> read(const std::string& filter, const std::vector<std::string>& fields) const
    {
        std::vector<std::string> arguments{"tshark", "-r", m_file, "-Y", filter, "-T", "fields"};
        for (const auto& field : fields)
            arguments.insert(arguments.end(), {"-e", field});
        const auto output = m_site.host().execute(arguments);
        EXPECT_EQ(output.status, 0) << output.standardError;
        std::vector<std::string> lines;
        std::istringstream stream(output.standardOutput);
        for (std::string line; std::getline(stream, line);)
            lines.push_back(line);
        return lines;
    }

private:
    std::string content() const
    {
        std::ifstream file(m_file, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    const Site& m_site;
    std::string m_file;
    lab::Process m_process;
};

} // namespace

TEST(OurPackets, AreAllGvcpToOthersAndNoneIsMalformed)
{
    Site site;
    site.addCameras(site.addAdapter("eth0", "192.168.1.5/24"), R"(
        {"mac": "02:00:00:00:01:01", "address": "192.168.1.20"},
        {"mac": "02:00:00:00:01:02", "address": "10.0.0.9"},
        {"mac": "02:00:00:00:01:03", "address": "10.0.0.10", "forceIpAcknowledge": "never"},
        {"mac": "02:00:00:00:01:04", "address": "192.168.1.21", "heldBy": "192.168.1.77"})");
    Capture capture(site, "eth0");
    const auto records = enumerate(site);
    ASSERT_THAT(records, testing::SizeIs(4));
    EXPECT_THAT(look(site), testing::SizeIs(4));
    EXPECT_EQ(force(site, *recordOf(records, "02:00:00:00:01:02"), "192.168.1.50"_ip), RZ_OK);
    EXPECT_EQ(force(site, *recordOf(records, "02:00:00:00:01:03"), "192.168.1.51"_ip), RZ_OK);
    EXPECT_NE(force(site, *recordOf(records, "02:00:00:00:01:04"), "192.168.1.52"_ip), RZ_OK);
    {
        const OpenCamera camera(site, *recordOf(records, "02:00:00:00:01:01"));
        ASSERT_EQ(camera.result(), RZ_OK);
        EXPECT_FALSE(camera.description().empty());
        camera.port()->Write("Right\0\0\0\0\0\0\0\0\0\0", 0xE8, 16);
    }
    capture.stop("192.168.1.20");

    const auto ours = capture.read("ip.src == 192.168.1.5 && udp.dstport == 3956", {"frame.number"});
    const auto dissected = capture.read("ip.src == 192.168.1.5 && gvcp", {"frame.number"});
    EXPECT_GT(ours.size(), 20u);
    EXPECT_EQ(dissected.size(), ours.size());
    EXPECT_THAT(capture.read("_ws.malformed", {"frame.number"}), testing::SizeIs(0));

    for (const char* command : {"0x0002", "0x0004", "0x0080", "0x0082", "0x0084", "0x0086"})
        EXPECT_THAT(capture.read(std::string("ip.src == 192.168.1.5 && gvcp.cmd.command == ") + command,
                                 {"frame.number"}),
                    testing::Not(testing::IsEmpty()))
            << command;
}

TEST(ASaveOfACameraWithAnOldDescription, WritesTheModesAsTheStandardHasThem)
{
    const std::string mac = "02:00:00:00:01:01";
    const std::string file = testing::TempDir() + "old-" + std::to_string(getpid()) + ".xml";
    std::ofstream(file) << descriptions::file(descriptions::allModes()[0].nodes +
                                                  descriptions::allResets()[0].nodes +
                                                  descriptions::allNames()[0].nodes,
                                              "0");
    Site site;
    const auto& farm =
        site.addCameras(site.addAdapter("eth0", "192.168.1.5/24"),
                        R"({"mac": "02:00:00:00:01:01", "address": "192.168.1.20", "rebootTime": 50,
            "resetRegister": "0x00042004", "description": ")" +
                            file + "\"}");
    {
        // Bits above the modes are other features'.
        const OpenCamera camera(site, *recordOf(enumerate(site), mac));
        camera.write(0x14, 0xC0000006);
    }
    Capture capture(site, "eth0");
    const auto save = [&](std::vector<std::string> options) {
        options.insert(options.begin(), {CLI, "set", mac});
        const auto output = site.host().execute(options);
        EXPECT_EQ(output.status, 0) << output.standardError;
    };
    save({"--static", "--ip", "192.168.1.30", "--mask", "255.255.255.0"});
    EXPECT_EQ(simulator_tests::runningCamera(farm, mac).at("ipConfigurationBits"), 0xC0000007);
    save({"--dhcp"});
    EXPECT_EQ(simulator_tests::runningCamera(farm, mac).at("ipConfigurationBits"), 0xC0000006);
    EXPECT_EQ(simulator_tests::runningCamera(farm, mac).at("resets"), 2);
    capture.stop("192.168.1.20");
    std::filesystem::remove(file);

    const std::string ipConfig = "gvcp.bootstrap.ipconfig.";
    auto writes =
        capture.read("ip.src == 192.168.1.5 && gvcp.cmd.writereg.bootstrapregister == 0x14",
                     {ipConfig + "persistentip", ipConfig + "dhcp", ipConfig + "lla", "udp.payload"});
    // A request that is sent again is the same to the bit.
    writes.erase(std::unique(writes.begin(), writes.end()), writes.end());
    EXPECT_THAT(writes, testing::ElementsAre(testing::MatchesRegex("1\t1\t1\t.*00000014c0000007"),
                                             testing::MatchesRegex("0\t1\t1\t.*00000014c0000006"),
                                             testing::MatchesRegex("0\t1\t1\t.*00000014c0000006")));
}
