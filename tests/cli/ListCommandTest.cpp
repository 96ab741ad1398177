// SPDX-License-Identifier: Apache-2.0
#include "tests/cli/MarkingTranslator.h"
#include "tests/cli/ProgramFixture.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

using cli::ExitStatus;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

namespace {

class ListCommandTest : public ProgramFixture
{
protected:
    nlohmann::ordered_json json()
    {
        EXPECT_EQ(run({"list", "--json"}), ExitStatus::Done);
        return nlohmann::ordered_json::parse(out.str());
    }

    std::vector<std::string> lines()
    {
        EXPECT_EQ(run({"list"}), ExitStatus::Done);
        std::vector<std::string> result;
        std::istringstream text(out.str());
        for (std::string line; std::getline(text, line);)
            result.push_back(line);
        return result;
    }
};

} // namespace

TEST_F(ListCommandTest, PrintsEveryMemberAsATextInAFixedOrder)
{
    sdk.listed = {sdk.record({.mac = "00:1A:2B:3C:4D:5E",
                              .ip = "192.0.2.20",
                              .mask = "255.255.255.0",
                              .gateway = "192.0.2.1",
                              .model = "FC-2400M",
                              .serial = "0815",
                              .userName = "瓶盖检测",
                              .ipConfig = 1,
                              .adapter = "192.0.2.5"})};
    EXPECT_EQ(json().dump(), nlohmann::ordered_json::parse(R"([{
        "DeviceModelName": "FC-2400M", "DeviceUserID": "瓶盖检测", "DeviceSerialNumber": "0815",
        "GevMACAddress": "00:1A:2B:3C:4D:5E", "GevIPConfigurationStatus": "PersistentIP",
        "GevCurrentIPAddress": "192.0.2.20", "GevCurrentSubnetMask": "255.255.255.0",
        "GevCurrentDefaultGateway": "192.0.2.1", "Status": "Free", "AdapterAddress": "192.0.2.5"}])")
                                 .dump());
    EXPECT_EQ(err.str(), "");
}

TEST_F(ListCommandTest, PrintsEachMemberOnALineOfItsOwn)
{
    sdk.listed = {sdk.record({.mac = "00:00:00:00:00:01", .model = "\"\\\n", .userName = "\u00E9\u202E\x1B"}),
                  sdk.record({.mac = "00:00:00:00:00:02"})};
    EXPECT_EQ(run({"list", "--json"}), ExitStatus::Done);
    // Shell completion reads it so.
    EXPECT_THAT(out.str(), testing::StartsWith("[\n  {\n"
                                               "    \"DeviceModelName\": \"\\\"\\\\\\n\",\n"
                                               "    \"DeviceUserID\": \"\\u00e9\\u202e\\u001b\",\n"));
    EXPECT_THAT(out.str(), HasSubstr("\",\n    \"GevMACAddress\": \"00:00:00:00:00:01\",\n"));
    EXPECT_THAT(out.str(), HasSubstr("\"\n  },\n  {\n    \"DeviceModelName\": \""));
    EXPECT_THAT(out.str(), testing::EndsWith("\"\n  }\n]\n"));
}

TEST_F(ListCommandTest, NamesEachStateAsTheConventionDoesWhateverTheLanguage)
{
    int count = 1;
    char name[] = "tests";
    char* words[] = {name, nullptr};
    const QCoreApplication application(count, words);
    const MarkingTranslator translator;
    sdk.listed = {
        sdk.record({.mac = "00:00:00:00:00:01", .ipConfig = 1}),
        sdk.record({.mac = "00:00:00:00:00:02", .ipConfig = 2}),
        sdk.record({.mac = "00:00:00:00:00:03", .ip = "10.0.0.9", .ipConfig = 4}),
    };
    sdk.isDeviceAccessible = [this](const RZ_CC_DEVICE_INFO* info) { return info != sdk.listed[1]; };
    EXPECT_THAT(lines()[1], AllOf(HasSubstr("<Free>"), HasSubstr("<Static IP>")));
    const auto array = json();
    ASSERT_EQ(array.size(), 3u);
    const char* const states[][2] = {{"Free", "PersistentIP"}, {"InUse", "DHCP"}, {"Unreachable", "LLA"}};
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_EQ(array[i]["Status"], states[i][0]);
        EXPECT_EQ(array[i]["GevIPConfigurationStatus"], states[i][1]);
    }
}

TEST_F(ListCommandTest, KeepsTheEnginesOrderInBothForms)
{
    for (const char* mac : {"00:00:00:00:00:10", "00:00:00:00:00:09", "00:00:00:00:00:0A"})
        sdk.listed.push_back(sdk.record({.mac = mac}));
    std::vector<std::string> macs;
    for (const auto& each : json())
        macs.push_back(each["GevMACAddress"]);
    EXPECT_THAT(macs, ElementsAre("00:00:00:00:00:0A", "00:00:00:00:00:09", "00:00:00:00:00:10"));
    EXPECT_THAT(lines(),
                ElementsAre(HasSubstr("STATUS"), HasSubstr(macs[0]), HasSubstr(macs[1]), HasSubstr(macs[2])));
}

TEST_F(ListCommandTest, PrintsATableWithTheStatusFirst)
{
    sdk.listed = {
        sdk.record(
            {.mac = "00:00:00:00:00:01", .model = "FC-1", .serial = "S", .userName = "瓶盖", .ipConfig = 1}),
        sdk.record({.mac = "00:00:00:00:00:02",
                    .ip = "10.0.0.9",
                    .mask = "255.0.0.0",
                    .model = "FC",
                    .serial = "S12345",
                    .userName = "",
                    .ipConfig = 2}),
    };
    EXPECT_THAT(
        lines(),
        ElementsAre(
            "STATUS       MODEL  USER NAME  SERIAL  MAC                IP CONFIG  ADDRESS     MASK           "
            "GATEWAY  ADAPTER",
            "Free         FC-1   瓶盖       S       00:00:00:00:00:01  Static IP  192.0.2.20  255.255.255.0  "
            "0.0.0.0  192.0.2.5",
            "Unreachable  FC                S12345  00:00:00:00:00:02  DHCP       10.0.0.9    255.0.0.0      "
            "0.0.0.0  192.0.2.5"));
}

TEST_F(ListCommandTest, ColoursTheStatusOnlyForATerminal)
{
    sdk.listed = {sdk.record({})};
    EXPECT_THAT(lines(), Not(testing::Contains(HasSubstr("\x1B"))));
    session.coloured = true;
    EXPECT_THAT(lines()[1], testing::StartsWith("\x1B[32mFree\x1B[0m    Model"));
    EXPECT_EQ(json()[0]["Status"], "Free");
    sdk.isDeviceAccessible = [](const RZ_CC_DEVICE_INFO*) { return false; };
    EXPECT_THAT(lines()[1], testing::StartsWith("\x1B[33mIn Use\x1B[0m  Model"));
    sdk.listed = {sdk.record({.ip = "10.0.0.9"})};
    EXPECT_THAT(lines()[1], testing::StartsWith("\x1B[31mUnreachable\x1B[0m  Model"));
}

TEST_F(ListCommandTest, LetsNoDeviceTextReachTheTerminalAsAnOrder)
{
    const std::string texts[] = {"\x1B[2Jx",  "a\nFree  FC-1", "\u009B31m",
                                 "\u202Egnp", "\xFF\xFE",      "\x7F\u2028"};
    for (const std::string& text : texts) {
        sdk.listed = {sdk.record({.model = text, .serial = text, .userName = text})};
        EXPECT_EQ(lines().size(), 2u) << "one line each for header and camera";
        for (const char* order : {"\x1B", "\u009B", "\u202E", "\x7F", "\u2028"})
            EXPECT_THAT(out.str(), Not(HasSubstr(order)));
        const auto array = json();
        for (const char byte : out.str())
            EXPECT_TRUE((byte >= ' ' && byte < 0x7F) || byte == '\n') << static_cast<int>(byte);
        EXPECT_EQ(array[0]["DeviceUserID"], text == "\xFF\xFE" ? "\uFFFD\uFFFD" : text);
    }
}

TEST_F(ListCommandTest, WithoutAnyCameraSaysWhatToCheckAndSucceeds)
{
    EXPECT_EQ(run({"list"}), ExitStatus::Done);
    EXPECT_EQ(out.str(), "");
    EXPECT_THAT(err.str(), testing::StartsWith("No camera "));
    EXPECT_EQ(json(), nlohmann::ordered_json::array());
}

TEST_F(ListCommandTest, SaysWhatIsMissingWithoutThePrivilegeToHearAll)
{
    sdk.listed = {sdk.record({})};
    sdk.listener = RZ_LISTENER_UNPRIVILEGED;
    EXPECT_EQ(json().size(), 1u);
    EXPECT_THAT(err.str(), HasSubstr("sudo setcap cap_net_raw+ep /usr/libexec/ip-configurator-hear\n"));
}

TEST_F(ListCommandTest, TellsSomebodyWhoWatchesThatItIsLooking)
{
    session.interactive = true;
    sdk.listed = {sdk.record({})};
    EXPECT_EQ(json().size(), 1u);
    EXPECT_EQ(err.str(), "Looking for cameras ...\n");
}

TEST_F(ListCommandTest, PrintsWhatItHasAndFailsWhenAdaptersWereNotSearched)
{
    sdk.listed = {sdk.record({})};
    sdk.notSearched = "eth1: Too many open files";
    for (const std::vector<std::string>& words : {std::vector<std::string>{"list"}, {"list", "--json"}}) {
        EXPECT_EQ(run(words), ExitStatus::Failed);
        EXPECT_THAT(out.str(), HasSubstr("00:1A:2B:3C:4D:5E"));
        EXPECT_EQ(err.str(),
                  "ip-configurator-cli: cameras may be missing, as not all networks were searched (eth1: "
                  "Too many open files)\n");
    }
}

TEST_F(ListCommandTest, FailsWithTheReasonWhenNothingWasSearched)
{
    sdk.enumDevices = [](RZ_CC_DEVICE_INFO_LIST&) { return RZ_ERROR_NETWORK; };
    sdk.notSearched = "the network adapters: Too many open files";
    EXPECT_EQ(run({"list", "--json"}), ExitStatus::Failed);
    EXPECT_EQ(out.str(), "[]\n");
    EXPECT_THAT(err.str(),
                AllOf(HasSubstr("the network adapters: Too many open files"), Not(HasSubstr("No camera"))))
        << "who was asked then?";
}

TEST_F(ListCommandTest, TellsHowManyCamerasAreBeyondTheList)
{
    sdk.listed = {sdk.record({})};
    sdk.unlisted = 44;
    EXPECT_EQ(run({"list"}), ExitStatus::Done);
    EXPECT_THAT(err.str(), HasSubstr("note: 44 more cameras answered"));
    sdk.unlisted = 1;
    EXPECT_EQ(run({"list"}), ExitStatus::Done);
    EXPECT_THAT(err.str(), HasSubstr("note: 1 more camera answered"));
}

TEST_F(ListCommandTest, SpeaksOfThePrivilegeBeforePowerAndCables)
{
    sdk.listener = RZ_LISTENER_UNPRIVILEGED;
    EXPECT_EQ(run({"list"}), ExitStatus::Done);
    EXPECT_LT(err.str().find("sudo setcap"), err.str().find("No camera "));
}
