// SPDX-License-Identifier: Apache-2.0
#include "tests/cli/ProgramFixture.h"
#include "tests/save/NodeMapDouble.h"
#include "tests/support/ScriptedProgram.h"

#include <QCoreApplication>
#include <QTimer>

#include <algorithm>
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

constexpr const char* Mac = "00:00:00:00:00:02";

struct IgnorantPort : GenApi::IPort
{
    GenApi::EAccessMode GetAccessMode() const override { return GenApi::RW; }
    void Read(void*, int64_t, int64_t) override {}
    void Write(const void*, int64_t, int64_t) override {}
};

/// Two cameras, the second of which obeys what is written to its features. Nobody answers the worker's ping.
class SetCommandTest : public ProgramFixture
{
protected:
    SetCommandTest()
    {
        ping.set("exit 1");
        sdk.listed = {sdk.record({.mac = "00:00:00:00:00:01"}),
                      sdk.record({.mac = Mac, .ip = "192.0.2.21", .ipConfig = 2})};
        sdk.description = "<xml/>";
        sdk.port = &port;
        nodes.addBoolean("GevCurrentIPConfigurationPersistentIP");
        nodes.addBoolean("GevCurrentIPConfigurationDHCP");
        nodes.addRegister("DeviceUserID", 16, [this] { setName("New"); });
        nodes.addCommand("DeviceReset", [this] { restart(); });
    }

    ExitStatus set(const std::vector<std::string>& options)
    {
        std::vector<std::string> words{"set", Mac};
        words.insert(words.end(), options.begin(), options.end());
        return run(words);
    }

    void write(const std::string& event)
    {
        written.push_back(event);
        if (event == "GevCurrentIPConfigurationPersistentIP = 1")
            camera().nIpConfigCurrent |= 1;
        else if (event == "GevCurrentIPConfigurationPersistentIP = 0")
            camera().nIpConfigCurrent &= ~1u;
        else if (event == "GevCurrentIPConfigurationDHCP = 1")
            camera().nIpConfigCurrent |= 2;
        else if (event == "GevCurrentIPConfigurationDHCP = 0")
            camera().nIpConfigCurrent &= ~2u;
    }

    void setName(const std::string& name)
    {
        std::copy_n(name.c_str(), name.size() + 1, camera().szUserDefinedName);
    }

    RZ_GIGE_DEVICE_INFO& camera() { return sdk.listed[1]->stGigEInfo; }

    const std::vector<std::string> fixed{"--static", "--ip", "192.0.2.30", "--mask", "255.255.255.0"};
    std::vector<std::string> written; ///< Through the node map, and what became of the node map.
    std::function<void()> restart = [] {};
    ScriptedProgram ping{"ping"};
    NodeMapDouble nodes{[this](const std::string& event) { write(event); }};
    IgnorantPort port;

private:
    int m_argumentCount = 1;
    char m_programName[6] = "tests";
    char* m_arguments[2] = {m_programName, nullptr};
    QCoreApplication m_application{m_argumentCount, m_arguments};
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
        auto looks = std::make_shared<int>(0);
        sdk.enumDevices = [this, looks](RZ_CC_DEVICE_INFO_LIST& list) {
            const int look = ++*looks;
            camera().nDeviceIp = SdkDouble::address(look == 3 ? "0.0.0.0" : "169.254.9.9");
            list.nDeviceCount = look <= 2 ? 1 : 2;
            std::copy(sdk.listed.begin(), sdk.listed.end(), list.apDeviceInfo);
            return RZ_OK;
        };
    };
    EXPECT_EQ(set({"--lla"}), ExitStatus::Done) << err.str();
    const std::string text = err.str();
    const std::size_t away = text.find("The camera does not answer while it restarts ...\n");
    const std::size_t early = text.find("The camera answers, not yet as asked: LLA, 0.0.0.0");
    const std::size_t back = text.find("The camera answers as asked: LLA, 169.254.9.9");
    EXPECT_TRUE(away < early && early < back && back != std::string::npos) << text;
    EXPECT_EQ(text.find("does not answer"), text.rfind("does not answer")) << "each state is told once";
}

TEST_F(SetCommandTest, FailsWithTheDifferenceWhenTheCameraComesBackOtherwise)
{
    session.restartPatience = std::chrono::seconds(0);
    restart = [this] {
        camera().nIpConfigCurrent = 2;
        camera().nDeviceIp = SdkDouble::address("192.0.2.21");
    };
    EXPECT_EQ(set(fixed), ExitStatus::Failed);
    EXPECT_EQ(out.str(), "");
    EXPECT_THAT(
        err.str(),
        HasSubstr("ip-configurator-cli: Model (00:00:00:00:00:02): asked for Static IP, 192.0.2.30, mask "
                  "255.255.255.0, no gateway; it reports DHCP, 192.0.2.21, mask 255.255.255.0, no "
                  "gateway\n"));
}

TEST_F(SetCommandTest, FailsWhenTheCameraDoesNotComeBack)
{
    session.restartPatience = std::chrono::seconds(0);
    restart = [this] { sdk.listed.pop_back(); };
    EXPECT_EQ(set({"--lla"}), ExitStatus::Failed);
    EXPECT_THAT(err.str(), HasSubstr("Model (00:00:00:00:00:02): it was not heard again\n"));
}

TEST_F(SetCommandTest, TellsWhatTheWorkerComplainsOfAndWhatTheCameraReports)
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

TEST_F(SetCommandTest, FailsWhenTheWorkerComplainsThoughTheCameraReportsWhatWasAsked)
{
    nodes.addCommand("DeviceReset", [] { throw 7; });
    EXPECT_EQ(set(fixed), ExitStatus::Failed);
    EXPECT_EQ(out.str(), "");
    EXPECT_THAT(err.str(), AllOf(HasSubstr("Error: Restart Device Error: code 0x7\n"),
                                 HasSubstr("Model (00:00:00:00:00:02): Restart Device Error: code 0x7\n")));
}

TEST_F(SetCommandTest, DoesNotWaitForARestartThatWasNotOrdered)
{
    nodes.remove("DeviceUserID");
    EXPECT_EQ(set({"--user-id", "New"}), ExitStatus::Failed);
    EXPECT_THAT(err.str(),
                AllOf(HasSubstr("Set UserID Error: code 0x0; asked for the user name \"New\"; it reports "
                                "\"Name\"\n"),
                      Not(HasSubstr("come back"))));
}

TEST_F(SetCommandTest, NamesALikelyCauseWhenTheWorkerHasNothingToSay)
{
    sdk.openDevice = [](RZ_CC_DEVICE_INFO*) { return RZ_ERROR_NO_ANSWER; };
    EXPECT_EQ(set({"--lla"}), ExitStatus::Failed);
    EXPECT_THAT(err.str(), HasSubstr("it may lack a usable description"));

    sdk.isDeviceAccessible = [](const RZ_CC_DEVICE_INFO*) { return false; };
    EXPECT_EQ(set({"--lla"}), ExitStatus::Failed);
    EXPECT_THAT(err.str(), HasSubstr("another application controls it"));

    camera().nDeviceIp = SdkDouble::address("10.0.0.9");
    EXPECT_EQ(set({"--lla"}), ExitStatus::Failed);
    EXPECT_THAT(err.str(), HasSubstr("give it an address of that subnet first"));
}

TEST_F(SetCommandTest, NamesTheOtherApplicationBesideWhatTheWorkerSays)
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

TEST_F(SetCommandTest, SendsNothingWhenTheCameraIsAsAskedAlready)
{
    EXPECT_EQ(set({"--dhcp", "--user-id", "Name"}), ExitStatus::Done);
    EXPECT_THAT(err.str(), HasSubstr("reports all of this already; nothing was sent to it\n"));
    EXPECT_THAT(out.str(), HasSubstr("after   Free    Name       DHCP       192.0.2.21"));
    EXPECT_THAT(forced(), IsEmpty());
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
    ownerAnswer.owner = cli::AddressOwner{"AA:00:00:00:00:09", false, {}};
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
    EXPECT_EQ(set({"--user-id", "New"}), ExitStatus::Interrupted);
    EXPECT_EQ(sdk.livingHandles(), 0u);
    EXPECT_EQ(out.str(), "");
    EXPECT_THAT(err.str(), AllOf(HasSubstr("Interrupted; giving the camera back ...\n"),
                                 HasSubstr("may have the old ones, the new ones or some of each")));
}

TEST_F(SetCommandTest, StopsWaitingWhenItIsInterrupted)
{
    restart = [this] {
        sdk.enumDevices = [](RZ_CC_DEVICE_INFO_LIST& list) {
            list.nDeviceCount = 0;
            ::kill(::getpid(), SIGTERM);
            return RZ_OK;
        };
    };
    EXPECT_EQ(set({"--lla"}), ExitStatus::Interrupted);
    EXPECT_EQ(out.str(), "");
    EXPECT_THAT(err.str(), HasSubstr("interrupted while it restarts"));
}
