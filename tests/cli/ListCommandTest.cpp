// SPDX-License-Identifier: Apache-2.0
#include "tests/cli/MarkingTranslator.h"
#include "tests/cli/ProgramFixture.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>
#include <set>

using cli::ExitStatus;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

namespace {

template <std::size_t Size>
void setText(char (&field)[Size], const std::string& text)
{
    field[text.copy(field, Size - 1)] = '\0';
}

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

TEST_F(ListCommandTest, PrintsEveryMemberInAFixedOrder)
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
    setText(sdk.listed[0]->stGigEInfo.szManufacturerName, "Maker");
    setText(sdk.listed[0]->stGigEInfo.szDeviceVersion, "1.2.3");
    EXPECT_EQ(json().dump(), nlohmann::ordered_json::parse(R"([{
        "DeviceModelName": "FC-2400M", "DeviceUserID": "瓶盖检测", "DeviceSerialNumber": "0815",
        "GevMACAddress": "00:1A:2B:3C:4D:5E", "GevIPConfigurationStatus": "PersistentIP",
        "GevCurrentIPAddress": "192.0.2.20", "GevCurrentSubnetMask": "255.255.255.0",
        "GevCurrentDefaultGateway": "192.0.2.1", "DeviceVendorName": "Maker", "DeviceVersion": "1.2.3",
        "Status": "Free", "AdapterAddress": "192.0.2.5", "AdapterName": "", "GevLinkSpeed": null,
        "Conflicts": []}])")
                                 .dump());
    EXPECT_EQ(err.str(), "");
}

TEST_F(ListCommandTest, PrintsEachMemberOnALineOfItsOwn)
{
    sdk.listed = {sdk.record({.mac = "00:00:00:00:00:01",
                              .ip = "192.0.2.21",
                              .model = "\"\\\n",
                              .userName = "\u00E9\u202E\x1B"}),
                  sdk.record({.mac = "00:00:00:00:00:02"})};
    EXPECT_EQ(run({"list", "--json"}), ExitStatus::Done);
    // Shell completion reads it so.
    EXPECT_THAT(out.str(), testing::StartsWith("[\n  {\n"
                                               "    \"DeviceModelName\": \"\\\"\\\\\\n\",\n"
                                               "    \"DeviceUserID\": \"\\u00e9\\u202e\\u001b\",\n"));
    EXPECT_THAT(out.str(), HasSubstr("\",\n    \"GevMACAddress\": \"00:00:00:00:00:01\",\n"));
    EXPECT_THAT(out.str(), HasSubstr("\n  },\n  {\n    \"DeviceModelName\": \""));
    EXPECT_THAT(out.str(), testing::EndsWith("\n  }\n]\n"));
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
    for (const auto& [mac, ip] : {std::pair("00:00:00:00:00:10", "192.0.2.10"),
                                  {"00:00:00:00:00:09", "192.0.2.9"},
                                  {"00:00:00:00:00:0A", "192.0.2.11"}})
        sdk.listed.push_back(sdk.record({.mac = mac, .ip = ip}));
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
    EXPECT_THAT(err.str(),
                AllOf(testing::StartsWith("No camera "), HasSubstr("ip-configurator-cli doctor\n")));
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
    const auto expectReason = [this](const char* reason) {
        EXPECT_EQ(run({"list", "--json"}), ExitStatus::Failed);
        EXPECT_EQ(out.str(), "[]\n");
        EXPECT_THAT(err.str(), AllOf(HasSubstr("not all networks were searched ("), HasSubstr(reason),
                                     Not(HasSubstr("No camera"))))
            << "who was asked then?";
    };
    sdk.look = [](unsigned, unsigned, const RZ_CC_LOOK_SINK& sink) {
        const RZ_CC_LOOK_REPORT report{0, RZ_LISTENER_HEARS, "", "eth1: Too many open files"};
        sink.pOnReport(sink.pContext, &report);
        return RZ_ERROR_NETWORK;
    };
    expectReason("eth1: Too many open files");
    sdk.openLook = [] { return RZ_ERROR_NETWORK; };
    expectReason("the network adapters");
}

TEST_F(ListCommandTest, ListsAThousandCamerasEachOnce)
{
    for (int i = 0; i < 1000; ++i) {
        char mac[18];
        std::snprintf(mac, sizeof mac, "00:00:00:00:%02X:%02X", i / 256, i % 256);
        const std::string ip = "198.18." + std::to_string(i / 250) + "." + std::to_string(1 + i % 250);
        for (const char* adapter : {"10.0.0.5", "198.18.0.254"})
            sdk.listed.push_back(sdk.record({.mac = mac, .ip = ip, .adapter = adapter}));
    }
    std::set<std::string> macs;
    for (const auto& each : json())
        macs.insert(each["GevMACAddress"]);
    EXPECT_EQ(macs.size(), 1000u);
    EXPECT_EQ(lines().size(), 1001u);
    EXPECT_EQ(err.str(), "");
}

TEST_F(ListCommandTest, TellsHowManyCamerasItCannotTellFromAFlood)
{
    sdk.listed = {sdk.record({})};
    sdk.unlisted = 44;
    EXPECT_EQ(run({"list"}), ExitStatus::Done);
    EXPECT_THAT(err.str(), HasSubstr("note: 44 more cameras answered"));
    sdk.unlisted = 1;
    EXPECT_EQ(run({"list"}), ExitStatus::Done);
    EXPECT_THAT(err.str(), HasSubstr("note: 1 more camera answered"));
}

TEST_F(ListCommandTest, MarksAnAddressThatSomebodyElseHasAndTellsWhose)
{
    sdk.listed = {sdk.record({.mac = "00:00:00:00:00:01", .model = "A\x1B"}),
                  sdk.record({.mac = "00:00:00:00:00:02", .model = "B"}),
                  sdk.record({.mac = "00:00:00:00:00:03", .ip = "192.0.2.30", .model = "C"}),
                  sdk.record({.mac = "00:00:00:00:00:04", .ip = "192.0.2.40", .model = "D"})};
    sdk.look = [this, look = sdk.look](unsigned options, unsigned time, const RZ_CC_LOOK_SINK& sink) {
        const RZ_CC_ARRIVAL machine{RZ_ARRIVAL_SPEECH, 0, 0x0011, 0x22334455, sdk.address("192.0.2.30")};
        sink.pOnArrival(sink.pContext, &machine);
        return look(options, time, sink);
    };
    const auto array = json();
    EXPECT_EQ(array[0]["Conflicts"].dump(), R"(["00:00:00:00:00:02"])");
    EXPECT_EQ(array[1]["Conflicts"].dump(), R"(["00:00:00:00:00:01"])");
    EXPECT_EQ(array[2]["Conflicts"].dump(), R"(["00:11:22:33:44:55"])");
    EXPECT_EQ(array[3]["Conflicts"].dump(), "[]");
    EXPECT_THAT(
        lines(),
        ElementsAre(
            testing::_, HasSubstr("  192.0.2.20 !  "), HasSubstr("  192.0.2.20 !  "),
            HasSubstr("  192.0.2.30 !  "), HasSubstr("  192.0.2.40    "),
            "! A\\x1B (00:00:00:00:00:01): 192.0.2.20 is the address of B (00:00:00:00:00:02) as well.",
            "! B (00:00:00:00:00:02): 192.0.2.20 is the address of A\\x1B (00:00:00:00:00:01) as well.",
            "! C (00:00:00:00:00:03): 192.0.2.30 is the address of the device 00:11:22:33:44:55 as "
            "well."));
}

TEST_F(ListCommandTest, NamesOfManyWithOneAddressAFew)
{
    for (const char* mac : {"00:00:00:00:00:01", "00:00:00:00:00:02", "00:00:00:00:00:03",
                            "00:00:00:00:00:04", "00:00:00:00:00:05", "00:00:00:00:00:06"})
        sdk.listed.push_back(sdk.record({.mac = mac}));
    EXPECT_THAT(lines()[7], testing::EndsWith("Model (00:00:00:00:00:04) and of 2 more as well."));
    EXPECT_EQ(json()[0]["Conflicts"].size(), 5u);
}

TEST_F(ListCommandTest, MarksAnAdapterWithoutAnAddress)
{
    sdk.listed = {sdk.record({.adapter = "0.0.0.0"})};
    EXPECT_THAT(lines()[1], testing::StartsWith("Unreachable"));
    EXPECT_THAT(lines()[2], HasSubstr("which hears it, has no IPv4 address"));
    EXPECT_EQ(json()[0]["AdapterAddress"], "0.0.0.0");
}

TEST_F(ListCommandTest, TellsTheLinkSpeedOfACameraThatSaysIt)
{
    sdk.listed = {sdk.record({})};
    sdk.look = [this](unsigned, unsigned, const RZ_CC_LOOK_SINK& sink) {
        RZ_CC_SIGHTING seen = sdk.sighting(sdk.listed[0]);
        seen.nTold = RZ_TOLD_LINK_SPEED;
        seen.nLinkSpeed = 100;
        sink.pOnCamera(sink.pContext, &seen, 1);
        return RZ_OK;
    };
    EXPECT_EQ(json()[0]["GevLinkSpeed"].dump(), "100");
}

TEST_F(ListCommandTest, SpeaksOfThePrivilegeBeforePowerAndCables)
{
    sdk.listener = RZ_LISTENER_UNPRIVILEGED;
    EXPECT_EQ(run({"list"}), ExitStatus::Done);
    EXPECT_LT(err.str().find("sudo setcap"), err.str().find("No camera "));
}
