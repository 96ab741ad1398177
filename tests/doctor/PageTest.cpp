// SPDX-License-Identifier: Apache-2.0
#include "doctor/Doctor.h"
#include "tests/doctor/Situation.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

namespace {

constexpr const char* Other = "00:1A:2B:00:00:02";

std::string asItIs(const std::string& text)
{
    return text;
}

/// Stands for what makes a text fit for a terminal.
std::string withoutEscapes(const std::string& text)
{
    std::string result = text;
    std::ranges::replace(result, '\x1B', '?');
    return result;
}

doctor::Diagnosis diagnosisOf(Situation& at)
{
    auto judgement = at.judged();
    return {at.inventory, judgement.findings};
}

std::vector<std::string> linesOf(const std::string& text)
{
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

std::vector<std::string> idsOf(const std::vector<doctor::Finding>& findings)
{
    std::vector<std::string> ids;
    for (const doctor::Finding& each : findings)
        ids.push_back(each.id);
    return ids;
}

} // namespace

TEST(Page, OfANetworkInOrderIsALineForEachAdapter)
{
    Situation order;
    order.adapter("eth0").addresses.push_back({Situation::ip("10.0.0.5"), 8});
    order.addAdapter("enp12s0", "192.168.2.5").linkSpeed.reset();
    EXPECT_EQ(page(diagnosisOf(order), &asItIs),
              "eth0     192.168.1.5/24, 10.0.0.5/8  1000 Mbit/s    MTU 1500  1 camera\n"
              "enp12s0  192.168.2.5/24              unknown speed  MTU 1500  no camera\n");
}

TEST(Page, TellsOfEachFindingWhatWhyAndWhatToType)
{
    Situation at;
    at.addCamera("eth0", Other, "10.0.0.9");
    at.addAdapter("eth1").hasCarrier = false;
    const std::string text = page(diagnosisOf(at), &asItIs);
    EXPECT_THAT(text,
                HasSubstr("\nERROR  outside-subnet on eth0\n  The camera FC-1 (00:1A:2B:00:00:02) has the "
                          "address 10.0.0.9, "));
    EXPECT_THAT(text, HasSubstr("\n  Why: The camera was heard on eth0, which has 192.168.1.5/24; "));
    EXPECT_THAT(
        text, HasSubstr("\n  To repair it, type as root:\n      ip-configurator-cli force 00:1A:2B:00:00:02 "
                        "--ip 192.168.1.10 --mask 255.255.255.0\n"));
    EXPECT_THAT(text, HasSubstr("\neth1  no IPv4 address  no link "));
    EXPECT_THAT(text, HasSubstr("\nNOTE  no-link on eth1\n"));
    const std::size_t note = text.find("NOTE");
    EXPECT_EQ(text.find("To repair", note), std::string::npos) << "where hands are needed";
}

TEST(Page, IsAsWideAsATerminalThatOneReads)
{
    Situation at;
    at.addCamera("eth0", Other, "10.0.0.9").model = "瓶盖检测瓶盖检测";
    for (const std::string& line : linesOf(page(diagnosisOf(at), &asItIs)))
        EXPECT_LE(line.size(), 100 + 2 * 8) << line;
}

TEST(Page, ShowsDeviceTextsOnlyAsItIsTold)
{
    Situation at;
    at.addCamera("eth0", Other, "10.0.0.9").model = "\x1B[2J %1";
    EXPECT_THAT(page(diagnosisOf(at), &withoutEscapes),
                AllOf(HasSubstr("?[2J %1 (00:1A:2B:00:00:02)"), Not(HasSubstr("\x1B"))));
}

TEST(Page, CanStillBeReadWhenAThousandCamerasAreWrong)
{
    Situation at;
    for (unsigned i = 0; i < 1000; ++i) {
        base::MacAddress mac = Situation::mac("00:1A:2B:01:00:00");
        mac.bytes[4] = static_cast<std::uint8_t>(i >> 8);
        mac.bytes[5] = static_cast<std::uint8_t>(i);
        at.addCamera("eth0", mac.toText(), "10.0." + std::to_string(i >> 8) + "." + std::to_string(i & 0xFF));
        at.inventory.cameras.back().hearing.bySocket = false;
    }
    const std::string text = page(diagnosisOf(at), &asItIs);
    EXPECT_LT(linesOf(text).size(), 120u);
    EXPECT_THAT(text, HasSubstr("ERROR  outside-subnet: 990 more like those above"));
    EXPECT_THAT(text, HasSubstr("... (+992)")) << "of the firewall's";
}

TEST(AboutCamera, LeavesWhatIsAboutItItsAdapterOrAll)
{
    Situation at;
    at.addCamera("eth0", Other, "10.0.0.9").hearing.bySocket = false;
    at.addCamera("eth0", "00:1A:2B:00:00:03", "10.0.0.10").hearing.bySocket = false;
    at.camera().linkSpeed = 100;
    at.addAdapter("eth1", "192.168.7.5").isUp = false;
    at.listener = doctor::findListenerFault(inventory::Listener::Missing, "/hear");
    at.say(inventory::Arrival::Kind::DhcpRequest, "00:1A:2B:00:00:99");
    const doctor::Diagnosis all = diagnosisOf(at);
    EXPECT_THAT(idsOf(all.findings), ElementsAre("outside-subnet", "outside-subnet", "adapter-down",
                                                 "no-listener", "firewall", "slow-link", "silent-device"));
    const auto about = aboutCamera(all, Situation::mac(Other));
    ASSERT_TRUE(about);
    EXPECT_THAT(idsOf(about->findings), ElementsAre("outside-subnet", "no-listener", "firewall"));
    EXPECT_EQ(about->findings[0].camera, Situation::mac(Other));
}

TEST(AboutCamera, TellsOfAnAddressThatItSharesThoughTheOtherOneIsToMove)
{
    Situation at;
    at.addCamera("eth0", Other, "192.168.1.20");
    const doctor::Diagnosis all = diagnosisOf(at);
    for (const char* each : {Situation::Mac, Other})
        EXPECT_THAT(idsOf(aboutCamera(all, Situation::mac(each))->findings), ElementsAre("duplicate-address"))
            << each;
}

TEST(AboutCamera, IsNothingOfAMacThatNoCameraHas)
{
    Situation at;
    at.say(inventory::Arrival::Kind::DhcpRequest, "00:1A:2B:00:00:99");
    const doctor::Diagnosis all = diagnosisOf(at);
    EXPECT_EQ(aboutCamera(all, Situation::mac("00:1A:2B:00:00:99")), std::nullopt);
    EXPECT_TRUE(aboutCamera(all, Situation::mac(Situation::Mac)));
}
