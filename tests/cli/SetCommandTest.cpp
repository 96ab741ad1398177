// SPDX-License-Identifier: Apache-2.0
#include "tests/cli/SetFixture.h"

#include <QTimer>

#include <atomic>
#include <csignal>
#include <gmock/gmock.h>
#include <thread>
#include <unistd.h>

using cli::ExitStatus;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

namespace {

class SetCommandTest : public SetFixture
{
protected:
    /// Interrupts the command when it has opened the camera.
    ExitStatus setInterrupted(const std::vector<std::string>& options)
    {
        std::atomic<bool> told{false};
        QTimer watch;
        QObject::connect(&watch, &QTimer::timeout,
                         [&] { told = err.str().find("Interrupted") != std::string::npos; });
        watch.start(1);
        sdk.openDevice = [&told](RZ_CC_DEVICE_INFO*) {
            ::kill(::getpid(), SIGINT);
            while (!told)
                std::this_thread::yield();
            return RZ_OK;
        };
        return set(options);
    }
};

} // namespace

TEST_F(SetCommandTest, GivesTheCameraOfThatMacAStaticAddress)
{
    EXPECT_EQ(set(fixed), ExitStatus::Done) << err.str();
    EXPECT_THAT(forced(), ElementsAre("ForceIpEx(00:00:00:00:00:02, 192.0.2.30, 255.255.255.0, 0.0.0.0)"));
    EXPECT_THAT(written, AllOf(testing::Contains("GevCurrentIPConfigurationPersistentIP = 1"),
                               testing::Contains("DeviceReset()")));
    EXPECT_EQ(out.str(), "        STATUS  USER NAME  IP CONFIG  ADDRESS     MASK           GATEWAY\n"
                         "before  Free    Name       DHCP       192.0.2.21  255.255.255.0  0.0.0.0\n"
                         "after   Free    Name       Static IP  192.0.2.30  255.255.255.0  0.0.0.0\n");
    EXPECT_THAT(err.str(),
                AllOf(HasSubstr("Model (00:00:00:00:00:02): DHCP, 192.0.2.21, mask 255.255.255.0, no "
                                "gateway -> Static IP, 192.0.2.30, mask 255.255.255.0, no gateway\n"),
                      HasSubstr("Information: Modified. The device will reboot automatically.\n"),
                      HasSubstr("to come back with Static IP"),
                      HasSubstr("The camera answers as asked: Static IP, 192.0.2.30")));
    EXPECT_EQ(sdk.livingHandles(), 0u);
}

TEST_F(SetCommandTest, RenamesWithoutARestart)
{
    EXPECT_EQ(set({"--user-id", "New"}), ExitStatus::Done) << err.str();
    EXPECT_THAT(written, AllOf(testing::Contains(HasSubstr("DeviceUserID = 4e 65 77 00")),
                               Not(testing::Contains("DeviceReset()"))));
    EXPECT_THAT(err.str(), AllOf(HasSubstr("user name \"Name\" -> \"New\"\n"), Not(HasSubstr("come back"))));
    EXPECT_THAT(out.str(), HasSubstr("after   Free    New        DHCP"));
}

TEST_F(SetCommandTest, WaitsForACameraThatIsAwayAndSaysWhatItSees)
{
    restart = [this] {
        atEachLook([this](int look) {
            camera().nDeviceIp = SdkDouble::address(look == 3 ? "0.0.0.0" : "169.254.9.9");
            return look <= 2 ? 1 : 2;
        });
    };
    EXPECT_EQ(set({"--lla"}), ExitStatus::Done) << err.str();
    const std::string text = err.str();
    const std::size_t away = text.find("The camera does not answer while it restarts ...\n");
    const std::size_t early = text.find("The camera answers, not yet as asked: LLA, 0.0.0.0");
    const std::size_t back = text.find("The camera answers as asked: LLA, 169.254.9.9");
    EXPECT_TRUE(away < early && early < back && back != std::string::npos) << text;
    EXPECT_EQ(text.find("does not answer"), text.rfind("does not answer")) << "each state is told once";
}

TEST_F(SetCommandTest, SendsNothingWhenTheCameraIsAsAskedAlready)
{
    store("192.0.2.99");
    EXPECT_EQ(set({"--dhcp", "--user-id", "Name"}), ExitStatus::Done);
    EXPECT_THAT(err.str(), HasSubstr("reports all of this already; nothing was sent to it\n"));
    EXPECT_THAT(out.str(), HasSubstr("after   Free    Name       DHCP       192.0.2.21"));
    EXPECT_THAT(forced(), IsEmpty());
    EXPECT_THAT(questions, IsEmpty()) << "there is no address to ask for";
}

TEST_F(SetCommandTest, RestartsACameraThatDoesNotHaveTheAddressOfItsKind)
{
    const struct
    {
        const char* option;
        uint32_t ipConfig;
        const char* address;
        const char* stored;
        const char* reason; ///< Empty where nothing is sent.
    } table[] = {
        {"--lla", 4, "192.0.2.21", "192.0.2.21", "has no link-local address"},
        {"--lla", 4, "169.254.1.2", "169.254.1.2", ""},
        {"--dhcp", 2, "169.254.1.2", "192.0.2.99", "has a link-local address"},
        {"--dhcp", 2, "192.0.2.21", "192.0.2.21", "still has its stored address"},
        {"--dhcp", 2, "192.0.2.21", "192.0.2.99", ""},
    };
    restart = [this] { camera().nDeviceIp = SdkDouble::address("169.254.9.9"); };
    for (const auto& each : table) {
        written.clear();
        camera().nIpConfigCurrent = each.ipConfig;
        camera().nDeviceIp = SdkDouble::address(each.address);
        store(each.stored);
        EXPECT_EQ(set({each.option}), ExitStatus::Done) << err.str();
        const bool isRestarted = std::count(written.begin(), written.end(), "DeviceReset()") == 1;
        EXPECT_EQ(isRestarted, *each.reason != '\0') << each.option << ' ' << each.address;
        EXPECT_THAT(err.str(),
                    HasSubstr(isRestarted ? std::string("note: Model (00:00:00:00:00:02) ") + each.reason
                                          : "nothing was sent to it"));
    }
}

TEST_F(SetCommandTest, RestartsACameraThatMissedItsRestartAgain)
{
    const struct
    {
        const char* option;
        uint32_t ipConfig;
        const char* address;
        const char* reason;
    } table[] = {
        {"--lla", 1, "192.0.2.21", "has no link-local address"},
        {"--dhcp", 1, "192.0.2.21", "still has its stored address"},
        {"--dhcp", 4, "169.254.1.2", "has a link-local address"},
    };
    store("192.0.2.21");
    for (const auto& each : table) {
        SCOPED_TRACE(each.reason);
        written.clear();
        camera().nIpConfigCurrent = each.ipConfig;
        camera().nDeviceIp = SdkDouble::address(each.address);
        restart = [this] { restart = [this] { camera().nDeviceIp = SdkDouble::address("169.254.9.9"); }; };
        EXPECT_EQ(set({each.option}), ExitStatus::Done) << err.str();
        EXPECT_EQ(std::count(written.begin(), written.end(), "DeviceReset()"), 2);
        EXPECT_THAT(err.str(), HasSubstr(std::string("note: Model (00:00:00:00:00:02) ") + each.reason));
        EXPECT_THAT(out.str(), testing::ContainsRegex("after .*169.254.9.9"));
    }
}

TEST_F(SetCommandTest, GivesACameraThatIsSlowToGoDownTimeBeforeItRestartsItAgain)
{
    restart = [this] {
        atEachLook([this](int look) {
            if (look == 9)
                camera().nDeviceIp = SdkDouble::address("169.254.9.9");
            return 2;
        });
    };
    EXPECT_EQ(set({"--lla"}), ExitStatus::Done) << err.str();
    EXPECT_EQ(std::count(written.begin(), written.end(), "DeviceReset()"), 1);
}

TEST_F(SetCommandTest, SendsNothingWhenTheCameraDoesNotTellWhatItHasStored)
{
    sdk.getPersistentIp = [](auto&&...) { return RZ_ERROR_NO_ANSWER; };
    EXPECT_EQ(set({"--dhcp"}), ExitStatus::Done);
    EXPECT_THAT(err.str(), HasSubstr("nothing was sent to it"));
}

TEST_F(SetCommandTest, WaitsOnForACameraThatSaysSomethingElseForLong)
{
    restart = [this] {
        atEachLook([this](int look) {
            camera().nIpConfigCurrent = look <= 11 ? 2 : 4;
            camera().nDeviceIp = SdkDouble::address("169.254.9.9");
            return 2;
        });
    };
    EXPECT_EQ(set({"--lla"}), ExitStatus::Done) << err.str();
}

TEST_F(SetCommandTest, SendsAStaticAddressAgainSoThatItIsStored)
{
    camera().nIpConfigCurrent = 1;
    camera().nDeviceIp = SdkDouble::address("192.0.2.30");
    EXPECT_EQ(set(fixed), ExitStatus::Done) << err.str();
    EXPECT_THAT(err.str(), HasSubstr("reports all of this already; it is sent again"));
    EXPECT_EQ(forced().size(), 1u);
    EXPECT_THAT(written, Not(testing::Contains("DeviceReset()")));
}

TEST_F(SetCommandTest, NotesThatNoServerGaveAnAddress)
{
    camera().nIpConfigCurrent = 1;
    restart = [this] { camera().nDeviceIp = SdkDouble::address("169.254.9.9"); };
    EXPECT_EQ(set({"--dhcp"}), ExitStatus::Done) << err.str();
    EXPECT_THAT(err.str(), HasSubstr("note: no DHCP server gave the camera an address"));
}

TEST_F(SetCommandTest, SendsNothingForAnAddressThatIsTaken)
{
    EXPECT_EQ(set({"--static", "--ip", "192.0.2.20", "--mask", "255.255.255.0"}), ExitStatus::Failed);
    EXPECT_THAT(err.str(), HasSubstr("192.0.2.20 is in use: the camera Model (00:00:00:00:00:01) has it"));
    ownerAnswer.owner = cli::AddressOwner{base::MacAddress{{0xAA, 0, 0, 0, 0, 9}}, false, {}};
    EXPECT_EQ(set(fixed), ExitStatus::Failed);
    EXPECT_THAT(err.str(), HasSubstr("192.0.2.30 is in use: the device AA:00:00:00:00:09 answers ARP"));
    EXPECT_THAT(forced(), IsEmpty());
}

TEST_F(SetCommandTest, TellsWhatIsThereWhenTheCameraIsNot)
{
    sdk.listed.pop_back();
    EXPECT_EQ(set({"--dhcp"}), ExitStatus::NoSuchCamera);
    EXPECT_THAT(err.str(), HasSubstr("00:00:00:00:00:01  Model  192.0.2.20\n"));
    EXPECT_EQ(out.str(), "");
}

TEST_F(SetCommandTest, TouchesNoCameraWhenAnArgumentIsWrong)
{
    for (const std::vector<std::string>& options :
         {std::vector<std::string>{}, {"--dhcp", "--lla"}, {"--static", "--ip", "192.0.2.30"}}) {
        EXPECT_EQ(set(options), ExitStatus::WrongArguments);
        EXPECT_EQ(out.str(), "");
    }
    EXPECT_THAT(sdk.calls(), IsEmpty());
}

TEST_F(SetCommandTest, GivesTheCameraBackWhenItIsInterrupted)
{
    EXPECT_EQ(setInterrupted({"--user-id", "New"}), ExitStatus::Interrupted);
    EXPECT_EQ(sdk.livingHandles(), 0u);
    EXPECT_EQ(out.str(), "");
    EXPECT_THAT(err.str(), AllOf(HasSubstr("Interrupted; giving the camera back ...\n"),
                                 HasSubstr("may have the old ones, the new ones or some of each")));
}

TEST_F(SetCommandTest, TellsWhatIsStoredWhenAStaticAddressIsInterrupted)
{
    store("192.0.2.30");
    EXPECT_EQ(setInterrupted(fixed), ExitStatus::Interrupted);
    EXPECT_THAT(err.str(), HasSubstr("the camera is given back; its stored address is 192.0.2.30, mask "
                                     "255.255.255.0, no gateway\n"));
    sdk.getPersistentIp = [](auto&&...) { return RZ_ERROR_NO_ANSWER; };
    EXPECT_EQ(setInterrupted(fixed), ExitStatus::Interrupted);
    EXPECT_THAT(err.str(), HasSubstr("may have the old ones, the new ones or some of each\n"));
}

TEST_F(SetCommandTest, StopsWaitingWhenItIsInterrupted)
{
    restart = [this] {
        atEachLook([](int) {
            ::kill(::getpid(), SIGTERM);
            return 0;
        });
    };
    EXPECT_EQ(set({"--lla"}), ExitStatus::Interrupted);
    EXPECT_EQ(out.str(), "");
    EXPECT_THAT(err.str(), HasSubstr("interrupted while it restarts"));
}
