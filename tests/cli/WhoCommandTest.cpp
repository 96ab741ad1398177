// SPDX-License-Identifier: Apache-2.0
#include "cli/cameras/HoldingReport.h"
#include "tests/cli/ProgramFixture.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

using cli::ExitStatus;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

namespace {

/// Two cameras; the commands are about the second, of which a look tells what a test says.
class WhoCommandTest : public ProgramFixture
{
protected:
    static constexpr const char* Mac = "00:00:00:00:00:02";

    WhoCommandTest()
    {
        sdk.listed = {sdk.record({.mac = "00:00:00:00:00:01", .model = "First"}),
                      sdk.record({.mac = Mac, .ip = "192.0.2.21", .model = "Second\x1B"})};
        told = sdk.sighting(sdk.listed[1]);
        sdk.look = [this](unsigned, unsigned, const RZ_CC_LOOK_SINK& sink) {
            ++looks;
            const RZ_CC_SIGHTING first = sdk.sighting(sdk.listed[0]);
            sink.pOnCamera(sink.pContext, &first, 1);
            if (looks >= heardAt)
                sink.pOnCamera(sink.pContext, &told, 1);
            const RZ_CC_LOOK_REPORT report{0, sdk.listener, sdk.listenerPath.c_str(), ""};
            sink.pOnReport(sink.pContext, &report);
            return RZ_OK;
        };
    }

    /// With everything that a camera can tell.
    void tellAll(std::uint32_t privilege)
    {
        told.nRegisters = RZ_REGISTERS_TOLD;
        told.nTold = RZ_TOLD_PRIVILEGE | RZ_TOLD_HOLDER | RZ_TOLD_HEARTBEAT_TIMEOUT | RZ_TOLD_HEARTBEAT_OFF |
                     RZ_TOLD_STREAM;
        told.nPrivilege = privilege;
        told.nHeartbeatTimeout = 3000;
        if (privilege == 0)
            return;
        told.nHolderIp = SdkDouble::address("198.18.0.77");
        told.nHolderPort = 40000;
        told.nStreamIp = SdkDouble::address("198.18.0.78");
        told.nStreamPort = 50020;
    }

    nlohmann::ordered_json json(ExitStatus status = ExitStatus::Done)
    {
        EXPECT_EQ(run({"who", Mac, "--json"}), status);
        return nlohmann::ordered_json::parse(out.str());
    }

    RZ_CC_SIGHTING told{};
    int heardAt = 1;
    int looks = 0;
};

} // namespace

TEST_F(WhoCommandTest, PrintsEveryMemberInAFixedOrder)
{
    tellAll(2);
    EXPECT_EQ(json().dump(), nlohmann::ordered_json::parse(R"({
        "GevMACAddress": "00:00:00:00:00:02", "Privilege": "control", "HolderAddress": "198.18.0.77",
        "HolderPort": 40000, "HeartbeatTimeout": 3000, "HeartbeatDisabled": false,
        "StreamDestination": "198.18.0.78:50020", "Process": null,
        "Reason": "It is held by an application on another computer, 198.18.0.77, port 40000; which program that is, can be seen there only."})")
                                 .dump());
    EXPECT_EQ(err.str(), "");
}

TEST_F(WhoCommandTest, OfAFreeCameraSaysNone)
{
    tellAll(0);
    const auto object = json();
    EXPECT_EQ(object["Privilege"], "none");
    for (const char* member : {"HolderAddress", "HolderPort", "StreamDestination", "Process"})
        EXPECT_TRUE(object[member].is_null()) << member;
    EXPECT_EQ(object["HeartbeatTimeout"], 3000);
    EXPECT_EQ(object["Reason"], "No application controls the camera.");
}

TEST_F(WhoCommandTest, LeavesOpenWhatTheCameraDoesNotTell)
{
    told.nRegisters = RZ_REGISTERS_TOLD;
    told.nTold = RZ_TOLD_PRIVILEGE;
    told.nPrivilege = 2;
    const auto object = json();
    EXPECT_EQ(object["Privilege"], "control");
    for (const char* member :
         {"HolderAddress", "HolderPort", "HeartbeatTimeout", "HeartbeatDisabled", "StreamDestination"})
        EXPECT_TRUE(object[member].is_null()) << member;
    EXPECT_THAT(object["Reason"], HasSubstr("the camera does not tell"));
}

TEST_F(WhoCommandTest, TakesACameraThatRefusesEveryRegisterAsHeldExclusively)
{
    told.nRegisters = RZ_REGISTERS_REFUSED;
    const auto object = json();
    EXPECT_EQ(object["Privilege"], "exclusive");
    EXPECT_TRUE(object["HolderAddress"].is_null());
    EXPECT_THAT(object["Reason"], HasSubstr("held exclusively"));
}

TEST_F(WhoCommandTest, FailsWhenNothingTellsWhetherItIsHeld)
{
    told.nRegisters = RZ_REGISTERS_SILENT;
    const auto object = json(ExitStatus::Failed);
    EXPECT_EQ(object["Privilege"], "unknown");
    EXPECT_TRUE(object["Process"].is_null());
    EXPECT_THAT(object["Reason"], HasSubstr("did not tell"));
    EXPECT_THAT(err.str(), AllOf(HasSubstr("Second\\x1B (00:00:00:00:00:02): neither the camera nor"),
                                 Not(HasSubstr("\x1B"))));
}

TEST_F(WhoCommandTest, TellsPeopleInAFewLines)
{
    tellAll(2);
    EXPECT_EQ(run({"who", Mac}), ExitStatus::Done);
    EXPECT_EQ(
        out.str(),
        "Second\\x1B (00:00:00:00:00:02), 192.0.2.21, is held by an application; others may read from it.\n"
        "  Holder     198.18.0.77, port 40000\n"
        "  Heartbeat  3000 ms\n"
        "  Stream to  198.18.0.78:50020\n"
        "It is held by an application on another computer, 198.18.0.77, port 40000; which program that "
        "is, can be seen there only.\n");
    told.nHeartbeatOff = 1;
    EXPECT_EQ(run({"who", Mac}), ExitStatus::Done);
    EXPECT_THAT(out.str(),
                AllOf(HasSubstr("  Heartbeat  switched off\n"), HasSubstr("cut the camera's power")));
    told = sdk.sighting(sdk.listed[1]);
    tellAll(0);
    EXPECT_EQ(run({"who", Mac}), ExitStatus::Done);
    EXPECT_EQ(out.str(), "Second\\x1B (00:00:00:00:00:02), 192.0.2.21, is free.\n"
                         "  Heartbeat  3000 ms\n");
}

TEST_F(WhoCommandTest, LooksAgainForACameraThatIsNotHeard)
{
    tellAll(0);
    heardAt = 3;
    EXPECT_EQ(json()["Privilege"], "none");
    looks = 0;
    heardAt = 100;
    EXPECT_EQ(run({"who", Mac, "--json"}), ExitStatus::NoSuchCamera);
    EXPECT_EQ(out.str(), "");
    EXPECT_EQ(err.str(), "ip-configurator-cli: no camera has the MAC address 00:00:00:00:00:02; found:\n"
                         "    00:00:00:00:00:01  First  192.0.2.20\n");
    EXPECT_LT(looks, 10);
}

TEST_F(WhoCommandTest, SaysThatTheListenerMayBeWhyACameraIsNotHeard)
{
    heardAt = 100;
    sdk.listener = RZ_LISTENER_UNPRIVILEGED;
    EXPECT_EQ(run({"who", Mac}), ExitStatus::NoSuchCamera);
    EXPECT_THAT(err.str(), HasSubstr("sudo setcap cap_net_raw+ep /usr/libexec/ip-configurator-hear\n"));
}

TEST_F(WhoCommandTest, TakesNoControlOfTheCamera)
{
    EXPECT_EQ(run({"who", Mac}), ExitStatus::Failed);
    for (const std::string& call : sdk.calls())
        EXPECT_THAT(call, AllOf(Not(HasSubstr("OpenDevice")), Not(HasSubstr("ForceIp"))));
}

TEST(HoldingReport, LetsNoTextOfAProcessReachTheTerminalAsAnOrder)
{
    inventory::Camera camera;
    camera.privilege = inventory::Privilege::Control;
    for (const std::string text : {"\x1B[2J", "a\nb", "\u202Egnp", "\xFF\xFE", "\u009B31m"}) {
        inventory::Holding holding;
        holding.process = {7, text, text, text};
        holding.isGuess = true;
        holding.reason = {{"It may be %1.", {text}}};
        const std::string page = cli::holdingText(camera, holding);
        EXPECT_EQ(std::count(page.begin(), page.end(), '\n'), 3) << "headline, process and reason";
        EXPECT_THAT(page, HasSubstr("(a guess)"));
        for (const char* order : {"\x1B", "\u009B", "\u202E", "\xFF"})
            EXPECT_THAT(page, Not(HasSubstr(order)));
        const std::string json = cli::holdingJson(camera, holding);
        for (const char byte : json)
            EXPECT_TRUE((byte >= ' ' && byte < 0x7F) || byte == '\n') << static_cast<int>(byte);
        const auto process = nlohmann::json::parse(json)["Process"];
        EXPECT_EQ(process["Pid"], 7);
        for (const char* member : {"Name", "User", "CommandLine"})
            EXPECT_EQ(process[member], text == "\xFF\xFE" ? "\uFFFD\uFFFD" : text);
    }
}
