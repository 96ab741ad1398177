// SPDX-License-Identifier: Apache-2.0
// Something happens to a camera in the midst of its change, at whatever packet: what is said of each
// afterwards is so, and the same plan again finishes the job.
#include "tests/simulator/DhcpServer.h"
#include "tests/site/AppliedLine.h"

#include <array>

using inventory::IpMethod;
using site::Result;

namespace {

/// A change, in whose texts @ stands for a number of the camera's own.
struct Change
{
    const char* name;
    const char* atFirst;
    IpMethod method;
    const char* address;
};

void PrintTo(const Change& change, std::ostream* out)
{
    *out << change.name;
}

constexpr std::array Actions{"vanish", "hold", "reset", "mute"};
/// As many commands belong to a change at most.
constexpr int Packets = 40;

std::string filledIn(std::string text, int number)
{
    if (const auto at = text.find('@'); at != std::string::npos)
        text.replace(at, 1, std::to_string(number));
    return text;
}

LineCamera cameraOf(const Change& change, int number, const std::string& fault)
{
    const std::string name = std::to_string(number);
    return {filledIn(change.atFirst, number) + R"(, "rebootTime": 300, "userName": "Old)" + name + '"' +
                (fault.empty() ? "" : R"(, "faults": [)" + fault + "]"),
            change.method, filledIn(change.address, number), "New" + name, fault};
}

std::vector<LineCamera> camerasFor(const Change& change)
{
    // The first one, which changes alone, is one that does it.
    std::vector<LineCamera> cameras{cameraOf(change, 1, "")};
    for (int packet = 0; packet < Packets; packet += Slowness)
        for (const std::string action : Actions)
            cameras.push_back(cameraOf(change, static_cast<int>(cameras.size()) + 1,
                                       R"({"command": "CHANGE", "times": 1, "action": ")" + action +
                                           R"(", "after": )" + std::to_string(packet) + "}"));
    return cameras;
}

class ApplyFaults : public AppliedLine, public testing::WithParamInterface<Change>
{
protected:
    ApplyFaults() { build(camerasFor(GetParam())); }

private:
    const simulator_tests::DhcpServer m_server{site.host(), "192.168.3.1,192.168.3.250,255.255.0.0"};
};

} // namespace

TEST_P(ApplyFaults, AtWhateverPacketLeaveEachCameraAsIsSaid)
{
    apply();
    RecordProperty("results", tally());
    judgeAll();
    EXPECT_EQ(outcomes()[0].result, Result::Changed) << describe(0);
    for (std::size_t i = 1; i < count(); ++i) {
        const std::string action = Actions[(i - 1) % Actions.size()];
        if (action == "mute") {
            EXPECT_EQ(outcomes()[i].result, Result::Changed)
                << "one lost answer is no matter to " << describe(i);
        }
        if (action != "vanish") {
            EXPECT_TRUE(outcomes()[i].now) << "it can be asked: " << describe(i);
        }
    }
    const std::size_t lastPulled = count() - Actions.size();
    EXPECT_TRUE(shown(lastPulled).at("plugged")) << "there is a packet at which nothing happened";

    for (std::size_t i = 0; i < count(); ++i)
        for (const std::string command : {"heal ", "release ", "plug "})
            farm->control(command + macOf(static_cast<int>(i)));
    apply();
    for (std::size_t i = 0; i < count(); ++i)
        expectAsPlanned(i);
}

INSTANTIATE_TEST_SUITE_P(
    Changes, ApplyFaults,
    testing::Values(
        Change{"DhcpToStatic", R"("ipConfiguration": "dhcp")", IpMethod::Static, "192.168.2.@"},
        Change{"LinkLocalToStatic",
               R"("ipConfiguration": "lla", "address": "169.254.3.@", "mask": "255.255.0.0")",
               IpMethod::Static, "192.168.2.@"},
        Change{"StaticOutOfReachToAnother", R"("ipConfiguration": "persistent", "address": "10.0.0.@")",
               IpMethod::Static, "192.168.2.@"},
        Change{
            "StaticToDhcp",
            R"("ipConfiguration": "persistent", "persistent": {"address": "192.168.4.@", "mask": "255.255.0.0"})",
            IpMethod::Dhcp, ""}),
    [](const testing::TestParamInfo<Change>& change) { return change.param.name; });
