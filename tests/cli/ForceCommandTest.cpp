// SPDX-License-Identifier: Apache-2.0
#include "tests/cli/CameraFixture.h"

#include <gmock/gmock.h>
#include <set>

using namespace base::literals;
using cli::ExitStatus;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

namespace {

/// The camera is out of reach.
class ForceCommandTest : public CameraFixture
{
protected:
    ForceCommandTest() : CameraFixture({.ip = "10.0.0.9"}) {}

    ExitStatus force(const std::string& ip = "192.0.2.30", const std::vector<std::string>& more = {})
    {
        return run({"force", Mac, "--ip", ip, "--mask", "255.255.255.0"}, more);
    }

    void expectRefusedUnsent(const std::string& ip, const std::string& reason)
    {
        EXPECT_EQ(force(ip), ExitStatus::Failed);
        EXPECT_EQ(out.str(), "");
        EXPECT_THAT(err.str(), AllOf(HasSubstr(ip + " is in use: "), HasSubstr(reason)));
        EXPECT_THAT(err.str(), Not(HasSubstr(" -> "))) << "what is refused is not announced";
        EXPECT_THAT(forced(), IsEmpty());
    }

    /// From now on the camera takes an address and then makes this of it.
    void forceAs(const std::function<void(RZ_GIGE_DEVICE_INFO&)>& change)
    {
        sdk.forceIp = [obey = sdk.forceIp, change](RZ_CC_DEVICE_INFO* info, auto... addresses) {
            const int result = obey(info, addresses...);
            change(info->stGigEInfo);
            return result;
        };
    }
};

} // namespace

TEST_F(ForceCommandTest, ForcesTheCameraOfThatMacAndNoOther)
{
    EXPECT_EQ(force("192.0.2.30", {"--gateway", "192.0.2.1"}), ExitStatus::Done);
    EXPECT_THAT(forced(), ElementsAre("ForceIpEx(00:00:00:00:00:02, 192.0.2.30, 255.255.255.0, 192.0.2.1)"));
    EXPECT_EQ(out.str(), "        STATUS       USER NAME  IP CONFIG  ADDRESS     MASK           GATEWAY\n"
                         "before  Unreachable  Name       LLA        10.0.0.9    255.255.255.0  0.0.0.0\n"
                         "after   Free         Name       LLA        192.0.2.30  255.255.255.0  192.0.2.1\n");
    EXPECT_EQ(sdk.livingHandles(), 0u);
}

TEST_F(ForceCommandTest, SetsNoGatewayUnlessOneIsGiven)
{
    camera().nDeviceGateway = SdkDouble::address("10.0.0.1");
    EXPECT_EQ(force(), ExitStatus::Done);
    EXPECT_THAT(forced(), ElementsAre("ForceIpEx(00:00:00:00:00:02, 192.0.2.30, 255.255.255.0, 0.0.0.0)"));
}

TEST_F(ForceCommandTest, SaysWhatItIsAboutToDoBeforeItDoesIt)
{
    sdk.forceIp = [this](auto...) {
        EXPECT_THAT(err.str(),
                    HasSubstr("Model (00:00:00:00:00:02): 10.0.0.9, mask 255.255.255.0, no gateway -> "
                              "192.0.2.30, mask 255.255.255.0, no gateway\n"));
        return RZ_ERROR_REFUSED;
    };
    EXPECT_EQ(force(), ExitStatus::Failed);
    EXPECT_EQ(forced().size(), 1u);
}

TEST_F(ForceCommandTest, SendsNothingWhenAnArgumentIsWrong)
{
    const std::vector<std::string> lines[] = {
        {"force", "00:00:00:00:00", "--ip", "192.0.2.30", "--mask", "255.255.255.0"},
        {"force", Mac, "--ip", "192.0.2.300", "--mask", "255.255.255.0"},
        {"force", Mac, "--ip", "192.0.2.30", "--mask", "255.0.255.0"},
        {"force", Mac, "--ip", "192.0.2.30", "--mask", "255.255.255.0", "--gateway", "10.0.0.1"},
    };
    for (const auto& words : lines) {
        EXPECT_EQ(run(words), ExitStatus::WrongArguments);
        EXPECT_EQ(out.str(), "");
        EXPECT_NE(err.str(), "");
    }
    EXPECT_THAT(sdk.calls(), IsEmpty());
    EXPECT_THAT(questions, IsEmpty());
}

TEST_F(ForceCommandTest, TellsWhatIsThereWhenTheCameraIsNot)
{
    sdk.listed.pop_back();
    EXPECT_EQ(force(), ExitStatus::NoSuchCamera);
    EXPECT_EQ(out.str(), "");
    EXPECT_EQ(err.str(), "ip-configurator-cli: no camera has the MAC address 00:00:00:00:00:02; found:\n"
                         "    00:00:00:00:00:01  Model  192.0.2.20\n");
    sdk.listed.clear();
    sdk.listener = RZ_LISTENER_UNPRIVILEGED;
    EXPECT_EQ(force(), ExitStatus::NoSuchCamera);
    EXPECT_THAT(err.str(), AllOf(HasSubstr("sudo setcap"), HasSubstr("no camera answered at all")));
    EXPECT_THAT(forced(), IsEmpty());
}

TEST_F(ForceCommandTest, RefusesTheAddressOfAnotherCamera)
{
    expectRefusedUnsent("192.0.2.20", "the camera Model (00:00:00:00:00:01) has it");
}

TEST_F(ForceCommandTest, RefusesAnAddressThatSomebodyHas)
{
    ownerAnswer.owner = cli::AddressOwner{base::MacAddress{{0xAA, 0, 0, 0, 0, 9}}, true, {}};
    expectRefusedUnsent("192.0.2.30", "the device AA:00:00:00:00:09 answers ping");
    EXPECT_THAT(questions, ElementsAre("192.0.2.30"_ip));
}

TEST_F(ForceCommandTest, TakesTheCamerasOwnAddressForNoConflict)
{
    ownerAnswer.owner = cli::AddressOwner{base::MacAddress{{0xAA, 0, 0, 0, 0, 9}}, true, {}};
    EXPECT_EQ(force("10.0.0.9", {"--gateway", "10.0.0.1"}), ExitStatus::Done);
    EXPECT_THAT(questions, IsEmpty());
    EXPECT_EQ(camera().nDeviceGateway, SdkDouble::address("10.0.0.1"));
}

TEST_F(ForceCommandTest, NotesThatTheCameraWillBeOutOfReach)
{
    EXPECT_EQ(force("198.51.100.7"), ExitStatus::Done);
    EXPECT_THAT(err.str(), HasSubstr("outside the subnet of the adapter that hears the camera (192.0.2.5)"));
    EXPECT_EQ(force("192.0.2.30"), ExitStatus::Done);
    EXPECT_THAT(err.str(), Not(HasSubstr("outside the subnet")));
}

TEST_F(ForceCommandTest, NotesUnlessTheCameraIsStaticThatAResetUndoesIt)
{
    const struct
    {
        uint32_t ipConfig;
        const char* note;
    } table[] = {{2, "as its IP configuration is DHCP"}, {4, "as its IP configuration is LLA"}};
    for (const auto& each : table) {
        camera().nIpConfigCurrent = each.ipConfig;
        EXPECT_EQ(force(), ExitStatus::Done);
        EXPECT_THAT(err.str(), HasSubstr(each.note));
    }
    camera().nIpConfigCurrent = 1;
    EXPECT_EQ(force(), ExitStatus::Done);
    EXPECT_THAT(err.str(), Not(HasSubstr("reset")));
}

TEST_F(ForceCommandTest, TriesACameraInUseAndTellsWhyItFailed)
{
    camera().nDeviceIp = SdkDouble::address("192.0.2.21");
    sdk.isDeviceAccessible = [](const RZ_CC_DEVICE_INFO*) { return false; };
    sdk.forceIp = [](auto...) { return RZ_ERROR_ACCESS_DENIED; };
    EXPECT_EQ(force(), ExitStatus::Failed);
    EXPECT_EQ(out.str(), "");
    EXPECT_THAT(
        err.str(),
        HasSubstr("ip-configurator-cli: Model (00:00:00:00:00:02): another application controls the camera"));
    EXPECT_EQ(forced().size(), 1u);
}

TEST_F(ForceCommandTest, HasASentenceOfItsOwnForEveryErrorOfTheSdk)
{
    std::set<std::string> sentences;
    for (int error = RZ_ERROR_HANDLE; error <= RZ_ERROR_OTHER_CAMERA; ++error) {
        sdk.forceIp = [error](auto...) { return error; };
        EXPECT_EQ(force(), ExitStatus::Failed);
        const std::size_t begin = err.str().find("ip-configurator-cli: Model (00:00:00:00:00:02): ");
        ASSERT_NE(begin, std::string::npos) << err.str();
        EXPECT_TRUE(sentences.insert(err.str().substr(begin)).second) << error;
    }
}

TEST_F(ForceCommandTest, TellsTheSdksReasonAndWhatMayBeDone)
{
    sdk.forceIp = [](auto...) { return RZ_ERROR_NETWORK; };
    EXPECT_EQ(force(), ExitStatus::Failed);
    EXPECT_THAT(err.str(), HasSubstr("(00:00:00:00:00:02): the network adapter that heard the camera cannot "
                                     "be used; check that it is up and has an address\n"));
    sdk.getErrorText = [](const RZ_CC_DEVICE_INFO*) { return "its adapter is gone"; };
    EXPECT_EQ(force(), ExitStatus::Failed);
    EXPECT_THAT(err.str(), HasSubstr("(00:00:00:00:00:02): its adapter is gone; check that it is up and has "
                                     "an address\n"));
}

TEST_F(ForceCommandTest, WaitsForACameraThatIsMissedAtFirst)
{
    atEachLook([](int look) { return look == 2 || look == 3 ? 1 : 2; });
    EXPECT_EQ(force(), ExitStatus::Done);
    EXPECT_EQ(looks, 4);
    EXPECT_EQ(forced().size(), 1u);
}

TEST_F(ForceCommandTest, FailsWithTheDifferenceWhenTheCameraReportsAnotherAddress)
{
    forceAs([](RZ_GIGE_DEVICE_INFO& camera) { camera.nDeviceIp ^= 1u << 8; });
    EXPECT_EQ(force(), ExitStatus::Failed);
    EXPECT_EQ(out.str(), "");
    EXPECT_THAT(err.str(), HasSubstr("asked for 192.0.2.30, mask 255.255.255.0, no gateway; it reports "
                                     "192.0.3.30, mask 255.255.255.0, no gateway\n"));
}

TEST_F(ForceCommandTest, NotesTheMaskAndTheGatewayThatTheCameraMakesOfThem)
{
    forceAs([](RZ_GIGE_DEVICE_INFO& camera) {
        camera.nDeviceSubnetMask = SdkDouble::address("255.255.0.0");
        camera.nDeviceGateway = SdkDouble::address("192.0.2.254");
    });
    EXPECT_EQ(force(), ExitStatus::Done);
    EXPECT_THAT(err.str(),
                AllOf(HasSubstr("note: the camera uses the mask 255.255.0.0 instead of 255.255.255.0\n"),
                      HasSubstr("note: the camera uses the gateway 192.0.2.254 instead of 0.0.0.0\n")));
    EXPECT_THAT(out.str(), HasSubstr("192.0.2.30  255.255.0.0    192.0.2.254\n"));
}

TEST_F(ForceCommandTest, HasAnAddressStoredThatStillWaitsForIt)
{
    bool isWaiting = true;
    sdk.isForcedIpWaiting = [&](const RZ_CC_DEVICE_INFO*) { return isWaiting; };
    sdk.openDevice = [&](RZ_CC_DEVICE_INFO* info) {
        EXPECT_EQ(info->stGigEInfo.nDeviceIp, SdkDouble::address("192.0.2.30"));
        isWaiting = false;
        return RZ_OK;
    };
    EXPECT_EQ(force(), ExitStatus::Done);
    EXPECT_FALSE(isWaiting);
    EXPECT_EQ(sdk.livingHandles(), 0u);
}

TEST_F(ForceCommandTest, FailsWithTheReasonAndWhatIsStoredWhenTheAddressIsNot)
{
    camera().nIpConfigCurrent = 1;
    sdk.isForcedIpWaiting = [](const RZ_CC_DEVICE_INFO*) { return true; };
    sdk.openDevice = [](RZ_CC_DEVICE_INFO*) { return RZ_ERROR_NOT_STORED; };
    sdk.getErrorText = [](const RZ_CC_DEVICE_INFO*) {
        return "its address could not be stored (write protect)";
    };
    sdk.getPersistentIp = [](RZ_CC_DEVICE_INFO*, unsigned& ip, unsigned& mask, unsigned& gateway) {
        ip = SdkDouble::address("10.0.0.9");
        mask = SdkDouble::address("255.0.0.0");
        gateway = SdkDouble::address("10.0.0.1");
        return RZ_OK;
    };
    EXPECT_EQ(force(), ExitStatus::Failed);
    EXPECT_EQ(out.str(), "");
    EXPECT_THAT(
        err.str(),
        HasSubstr("Model (00:00:00:00:00:02) took the address but has not stored it, or not all of it, and "
                  "starts with what it has stored after its next reset: its address could not be stored "
                  "(write protect); try again; its stored address is 10.0.0.9, mask 255.0.0.0, gateway "
                  "10.0.0.1\n"));

    sdk.getPersistentIp = [](auto&&...) { return RZ_ERROR_NO_ANSWER; };
    EXPECT_EQ(force("192.0.2.31"), ExitStatus::Failed);
    EXPECT_THAT(err.str(), HasSubstr("it may have stored some of the old settings and some of the new\n"));
}

TEST_F(ForceCommandTest, TellsWhyTheAddressIsNotStoredThoughAskingForWhatIsStoredFailsToo)
{
    camera().nIpConfigCurrent = 1;
    std::string latest;
    sdk.isForcedIpWaiting = [](const RZ_CC_DEVICE_INFO*) { return true; };
    sdk.getErrorText = [&latest](const RZ_CC_DEVICE_INFO*) { return latest; };
    sdk.openDevice = [&latest](RZ_CC_DEVICE_INFO*) {
        latest = "its address could not be stored";
        return RZ_ERROR_NOT_STORED;
    };
    sdk.getPersistentIp = [&latest](auto&&...) {
        latest = "it does not answer";
        return RZ_ERROR_NO_ANSWER;
    };
    EXPECT_EQ(force(), ExitStatus::Failed);
    EXPECT_THAT(err.str(), HasSubstr("its address could not be stored; try again; it may have stored some"));
}

TEST_F(ForceCommandTest, NamesTheCameraThatAnswersInItsPlace)
{
    sdk.isForcedIpWaiting = [](const RZ_CC_DEVICE_INFO*) { return true; };
    sdk.openDevice = [](RZ_CC_DEVICE_INFO*) { return RZ_ERROR_OTHER_CAMERA; };
    sdk.getErrorText = [](const RZ_CC_DEVICE_INFO*) { return "at its address 00:00:00:00:00:01 answers"; };
    EXPECT_EQ(force(), ExitStatus::Failed);
    EXPECT_THAT(err.str(), HasSubstr("at its address Model (00:00:00:00:00:01) answers; give one of the two "
                                     "another address first"));
}

TEST_F(ForceCommandTest, TellsWhatTheCameraHasWhenTheReportOfItCannotBeWritten)
{
    out.setstate(std::ios::badbit);
    EXPECT_EQ(force(), ExitStatus::Failed);
    EXPECT_THAT(err.str(), AllOf(HasSubstr("Model (00:00:00:00:00:02) has what was asked for"),
                                 HasSubstr("192.0.2.30, mask 255.255.255.0, no gateway"),
                                 HasSubstr("the report of it cannot be written")));
}

TEST_F(ForceCommandTest, NamesTheCameraToTheSdkAndLooksForItThreeTimes)
{
    atEachLook([](int look) { return look < 3 ? 1 : 2; });
    EXPECT_EQ(force(), ExitStatus::Done);
    EXPECT_EQ(sdk.calls().front(), "ExpectDevice(00:00:00:00:00:02)");

    atEachLook([](int) { return 0; });
    EXPECT_EQ(force(), ExitStatus::NoSuchCamera);
    EXPECT_EQ(looks, 3);
}

TEST_F(ForceCommandTest, TellsWhereTheCameraCouldNotBeLookedFor)
{
    sdk.listed.pop_back();
    sdk.notSearched = "eth1: Too many open files";
    EXPECT_EQ(force(), ExitStatus::NoSuchCamera);
    EXPECT_EQ(err.str(),
              "ip-configurator-cli: no camera that answered has the MAC address 00:00:00:00:00:02, but not "
              "all networks were searched (eth1: Too many open files); found:\n"
              "    00:00:00:00:00:01  Model  192.0.2.20\n");
}

TEST_F(ForceCommandTest, FailsWhenTheCameraIsNotHeardAgain)
{
    sdk.forceIp = [this](auto...) {
        sdk.listed.pop_back();
        return RZ_OK;
    };
    EXPECT_EQ(force(), ExitStatus::Failed);
    EXPECT_EQ(out.str(), "");
    EXPECT_THAT(err.str(), HasSubstr("was not heard again"));
}

TEST_F(ForceCommandTest, DoesNotTakeAnOldListForTheCamerasAnswer)
{
    camera().nDeviceIp = SdkDouble::address("192.0.2.30");
    sdk.forceIp = [this](auto...) {
        sdk.enumDevices = [](RZ_CC_DEVICE_INFO_LIST&) { return RZ_ERROR_NETWORK; };
        return RZ_OK;
    };
    EXPECT_EQ(force("192.0.2.30"), ExitStatus::Failed);
}
