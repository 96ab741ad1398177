// SPDX-License-Identifier: Apache-2.0
#include "tests/cli/SetFixture.h"

#include <gmock/gmock.h>

using cli::ExitStatus;
using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

namespace {

class SetFailureTest : public SetFixture
{};

} // namespace

TEST_F(SetFailureTest, FailsWithTheDifferenceWhenTheCameraComesBackOtherwise)
{
    session.restartPatience = std::chrono::seconds(0);
    restart = [this] {
        camera().nIpConfigCurrent = 2;
        camera().nDeviceIp = SdkDouble::address("192.0.2.21");
        store("192.0.2.30");
    };
    EXPECT_EQ(set(fixed), ExitStatus::Failed);
    EXPECT_EQ(out.str(), "");
    EXPECT_THAT(
        err.str(),
        HasSubstr("ip-configurator-cli: Model (00:00:00:00:00:02): asked for Static IP, 192.0.2.30, mask "
                  "255.255.255.0, no gateway; it reports DHCP, 192.0.2.21, mask 255.255.255.0, no "
                  "gateway; its stored address is 192.0.2.30, mask 255.255.255.0, no gateway\n"));
}

TEST_F(SetFailureTest, FailsWhenTheCameraDoesNotComeBack)
{
    session.restartPatience = std::chrono::seconds(0);
    restart = [this] { sdk.listed.pop_back(); };
    EXPECT_EQ(set({"--lla"}), ExitStatus::Failed);
    EXPECT_THAT(err.str(), HasSubstr("Model (00:00:00:00:00:02): it was not heard again\n"));
}

TEST_F(SetFailureTest, FailsWhenTheCameraDoesNotRestartThoughToldTwice)
{
    session.restartPatience = std::chrono::seconds(0);
    EXPECT_EQ(set({"--lla"}), ExitStatus::Failed);
    EXPECT_EQ(std::count(written.begin(), written.end(), "DeviceReset()"), 2);
    EXPECT_THAT(err.str(),
                HasSubstr("asked for LLA with an address that begins with 169.254; it reports LLA, "
                          "192.0.2.21, mask 255.255.255.0, no gateway\n"));
}

TEST_F(SetFailureTest, TellsWhatTheWorkerComplainsOfAndWhatTheCameraReports)
{
    sdk.forceIp = [](auto...) { return RZ_ERROR_ACCESS_DENIED; };
    EXPECT_EQ(set(fixed), ExitStatus::Failed);
    EXPECT_EQ(out.str(), "");
    EXPECT_THAT(
        err.str(),
        AllOf(HasSubstr("Error: Failed to modify the IP address.The camera may be in use at present.\n"),
              HasSubstr(
                  "Model (00:00:00:00:00:02): Failed to modify the IP address.The camera may be in use at "
                  "present. Asked for Static IP, 192.0.2.30")));
    EXPECT_THAT(written, IsEmpty());
}

TEST_F(SetFailureTest, FailsWhenTheWorkerComplainsThoughTheCameraReportsWhatWasAsked)
{
    nodes.addCommand("DeviceReset", [] { throw 7; });
    EXPECT_EQ(set(fixed), ExitStatus::Failed);
    EXPECT_EQ(out.str(), "");
    EXPECT_THAT(
        err.str(),
        AllOf(HasSubstr("Error: Restart Device Error: code 0x7\n"),
              HasSubstr("Model (00:00:00:00:00:02): Restart Device Error: code 0x7; its stored address "
                        "is 192.0.2.30, mask 255.255.255.0, no gateway\n")));
}

TEST_F(SetFailureTest, DoesNotWaitForARestartThatWasNotOrdered)
{
    nodes.remove("DeviceUserID");
    EXPECT_EQ(set({"--user-id", "New"}), ExitStatus::Failed);
    EXPECT_THAT(err.str(),
                AllOf(HasSubstr("Set UserID Error: code 0x0; asked for the user name \"New\"; it reports "
                                "\"Name\"\n"),
                      Not(HasSubstr("come back"))));
}

TEST_F(SetFailureTest, TellsTheSdksReasonInsteadOfAGuess)
{
    sdk.openDevice = [](RZ_CC_DEVICE_INFO*) { return RZ_ERROR_NO_ANSWER; };
    sdk.getErrorText = [](const RZ_CC_DEVICE_INFO*) { return "READREG: 192.0.2.21 does not answer"; };
    EXPECT_EQ(set({"--lla"}), ExitStatus::Failed);
    EXPECT_THAT(err.str(), AllOf(HasSubstr("no gateway; READREG: 192.0.2.21 does not answer\n"),
                                 Not(HasSubstr("description"))));
}

TEST_F(SetFailureTest, NamesTheCameraThatAnswersInItsPlaceAndWhatToDo)
{
    sdk.openDevice = [](RZ_CC_DEVICE_INFO*) { return RZ_ERROR_OTHER_CAMERA; };
    sdk.getErrorText = [](const RZ_CC_DEVICE_INFO*) {
        return "the camera 00:00:00:00:00:01 answers and not 00:00:00:00:00:02";
    };
    EXPECT_EQ(set({"--lla"}), ExitStatus::Failed);
    EXPECT_THAT(err.str(),
                HasSubstr("the camera Model (00:00:00:00:00:01) answers and not Model "
                          "(00:00:00:00:00:02); give one of the two another address with the force "
                          "command first\n"));
}

TEST_F(SetFailureTest, SuspectsTheDescriptionWhenNobodyHasAnythingToSay)
{
    nodes.onMake = [] { throw 1; };
    EXPECT_EQ(set({"--lla"}), ExitStatus::Failed);
    EXPECT_THAT(err.str(), HasSubstr("it may lack a usable description"));
}

TEST_F(SetFailureTest, NamesTheStateThatKeepsTheCameraFromBeingSet)
{
    sdk.openDevice = [](RZ_CC_DEVICE_INFO*) { return RZ_ERROR_NO_ANSWER; };
    sdk.isDeviceAccessible = [](const RZ_CC_DEVICE_INFO*) { return false; };
    EXPECT_EQ(set({"--lla"}), ExitStatus::Failed);
    EXPECT_THAT(err.str(), HasSubstr("another application controls it"));

    camera().nDeviceIp = SdkDouble::address("10.0.0.9");
    EXPECT_EQ(set({"--lla"}), ExitStatus::Failed);
    EXPECT_THAT(err.str(), HasSubstr("give it an address of that subnet first"));
}

TEST_F(SetFailureTest, TellsWhyTheTypeCouldNotBeChanged)
{
    nodes.addBoolean("GevCurrentIPConfigurationDHCP", [] { throw 7; });
    nodes.addRegister("DeviceUserID", 16, [] { throw 8; }); // Overwrites the reason.
    EXPECT_EQ(set({"--lla", "--user-id", "New"}), ExitStatus::Failed);
    EXPECT_THAT(
        err.str(),
        AllOf(HasSubstr("Information: Failed to change the IP configuration type. Error code:0x7\n"),
              HasSubstr("Model (00:00:00:00:00:02): Failed to change the IP configuration type. Error "
                        "code:0x7; ")));
}

TEST_F(SetFailureTest, FailsWhenTheAddressIsInUseButNotStored)
{
    camera().nIpConfigCurrent = 1;
    camera().nDeviceIp = SdkDouble::address("192.0.2.30");
    store("192.0.2.21");
    sdk.openDevice = [](RZ_CC_DEVICE_INFO*) { return RZ_ERROR_NOT_STORED; };
    sdk.isForcedIpWaiting = [](const RZ_CC_DEVICE_INFO*) { return true; };
    sdk.getErrorText = [](const RZ_CC_DEVICE_INFO*) {
        return "its address could not be stored (write protect)";
    };
    EXPECT_EQ(set(fixed), ExitStatus::Failed);
    EXPECT_EQ(out.str(), "");
    EXPECT_THAT(err.str(),
                HasSubstr("it has the address but has not stored it; its address could not be stored (write "
                          "protect); its stored address is 192.0.2.21, mask 255.255.255.0, no gateway\n"));
}

TEST_F(SetFailureTest, NamesTheOtherApplicationBesideWhatTheWorkerSays)
{
    sdk.isDeviceAccessible = [](const RZ_CC_DEVICE_INFO*) { return false; };
    sdk.forceIp = [](auto...) { return RZ_ERROR_ACCESS_DENIED; };
    EXPECT_EQ(set({"--user-id", "New"}), ExitStatus::Failed);
    EXPECT_THAT(err.str(),
                HasSubstr("Failed to modify. Asked for the user name \"New\"; it reports \"Name\"; "
                          "another application controls it\n"));

    sdk.isDeviceAccessible = [](const RZ_CC_DEVICE_INFO*) { return true; };
    EXPECT_EQ(set({"--user-id", "New"}), ExitStatus::Failed);
    EXPECT_THAT(err.str(), HasSubstr("it reports \"Name\"\n")) << "no guess beside what is known";
}

TEST_F(SetFailureTest, TellsWhatTheCameraHasWhenTheReportOfItCannotBeWritten)
{
    out.setstate(std::ios::badbit);
    EXPECT_EQ(set({"--user-id", "New"}), ExitStatus::Failed);
    EXPECT_THAT(err.str(),
                AllOf(HasSubstr("Model (00:00:00:00:00:02) has what was asked for (user name \"New\""),
                      HasSubstr("the report of it cannot be written")));
}
