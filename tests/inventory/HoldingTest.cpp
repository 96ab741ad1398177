// SPDX-License-Identifier: Apache-2.0
#include "inventory/Holding.h"

#include "inventory/LocalSockets.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using inventory::Camera;
using inventory::Endpoint;
using inventory::Holding;
using inventory::OwnedSocket;
using inventory::Privilege;
using inventory::Process;
using inventory::Registers;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;
using namespace base::literals;

namespace {

const Process Viewer{100, "viewer", "alice", "viewer --all"};
const Process Recorder{200, "recorder", "bob", "recorder"};

/// A computer with two adapters and some sockets, and a camera in reach of the first.
class HoldingTest : public testing::Test
{
protected:
    HoldingTest()
    {
        camera.mac = *base::MacAddress::parse("00:1A:2B:3C:4D:5E");
        camera.ip = {"192.168.1.20"_ip, "255.255.255.0"_ip, {}};
        camera.adapterIndex = 2;
        camera.adapterAddress = "192.168.1.5"_ip;
        camera.status = inventory::Status::InUse;
        camera.registers = Registers::Told;
        camera.privilege = Privilege::Control;
        adapters.resize(2);
        adapters[0].index = 2;
        adapters[0].addresses = {{"192.168.1.5"_ip, 24}};
        adapters[1].index = 3;
        adapters[1].addresses = {{"10.0.0.5"_ip, 8}};
    }

    void addSocket(base::Ipv4 address, std::uint16_t port, const std::vector<Process>& processes,
                   Endpoint remote = {}, const std::string& user = "carol")
    {
        local.sockets.push_back({{{address, port}, remote, 1000, local.sockets.size()}, user, processes});
    }

    Holding holding() const { return whoHolds(camera, adapters, local); }
    int pid() const
    {
        const auto process = holding().process;
        return process ? process->pid : 0;
    }
    std::string reason() const { return base::english(holding().reason); }

    Camera camera;
    std::vector<inventory::Adapter> adapters;
    inventory::LocalSockets local;
};

constexpr std::uint16_t CameraPort = 3956;

} // namespace

TEST_F(HoldingTest, OfAFreeCameraIsNobodys)
{
    camera.privilege = Privilege::None;
    addSocket("192.168.1.5"_ip, 40000, {Viewer}, {camera.ip.address, CameraPort});
    EXPECT_EQ(pid(), 0);
    EXPECT_EQ(reason(), "No application controls the camera.");
}

TEST_F(HoldingTest, IsProvenByTheSocketThatTheCameraNames)
{
    camera.holder = Endpoint{"192.168.1.5"_ip, 40000};
    addSocket("192.168.1.5"_ip, 40001, {Recorder});
    addSocket("10.0.0.5"_ip, 40000, {Recorder});
    addSocket("192.168.1.5"_ip, 40000, {Viewer});
    EXPECT_EQ(pid(), Viewer.pid);
    EXPECT_FALSE(holding().isGuess);
    EXPECT_THAT(reason(), AllOf(HasSubstr("192.168.1.5, port 40000"),
                                HasSubstr("viewer (process 100, of alice)"), Not(HasSubstr("guess"))));
}

TEST_F(HoldingTest, IsProvenByASocketOnAllAddressesUnlessOneIsOnTheCamerasOwn)
{
    camera.holder = Endpoint{"192.168.1.5"_ip, 40000};
    addSocket({}, 40000, {Recorder});
    EXPECT_EQ(pid(), Recorder.pid);
    addSocket("192.168.1.5"_ip, 40000, {Viewer});
    EXPECT_EQ(pid(), Viewer.pid);
}

TEST_F(HoldingTest, IsNotThatOfASocketConnectedToAnotherMachine)
{
    camera.holder = Endpoint{"192.168.1.5"_ip, 40000};
    addSocket("192.168.1.5"_ip, 40000, {Recorder}, {"192.168.1.21"_ip, CameraPort});
    EXPECT_EQ(pid(), 0);
    addSocket("192.168.1.5"_ip, 40000, {Viewer}, {camera.ip.address, CameraPort});
    EXPECT_EQ(pid(), Viewer.pid);
}

TEST_F(HoldingTest, OnTheAddressOfAnotherAdapterIsThisComputersToo)
{
    camera.holder = Endpoint{"10.0.0.5"_ip, 40000};
    addSocket("10.0.0.5"_ip, 40000, {Viewer});
    EXPECT_EQ(pid(), Viewer.pid);
}

TEST_F(HoldingTest, IsProvenByAConnectionWhenTheCameraDoesNotTell)
{
    for (const Privilege privilege : {Privilege::Control, Privilege::Exclusive}) {
        camera.privilege = privilege;
        local.sockets.clear();
        addSocket("192.168.1.5"_ip, 40002, {Recorder});
        addSocket({}, 40000, {Viewer}, {camera.ip.address, CameraPort});
        EXPECT_EQ(pid(), Viewer.pid);
        EXPECT_FALSE(holding().isGuess);
        EXPECT_THAT(reason(), HasSubstr("connected to the camera: viewer"));
    }
}

TEST_F(HoldingTest, IsNotProvenByAConnectionToAnotherCameraOrPort)
{
    addSocket("192.168.1.5"_ip, 40000, {Viewer}, {"192.168.1.21"_ip, CameraPort});
    addSocket("192.168.1.5"_ip, 40001, {Viewer}, {camera.ip.address, 3957});
    EXPECT_EQ(pid(), 0);
}

TEST_F(HoldingTest, IsGuessedFromTheOneSocketOnTheAdaptersAddress)
{
    camera.privilege = Privilege::Exclusive;
    addSocket("192.168.1.5"_ip, 40000, {Viewer});
    addSocket("192.168.1.5"_ip, 40001, {Viewer});
    addSocket({}, 40000, {Recorder});
    addSocket("10.0.0.5"_ip, 40000, {Recorder});
    addSocket("192.168.1.5"_ip, 123, {Recorder});
    EXPECT_EQ(pid(), Viewer.pid);
    EXPECT_TRUE(holding().isGuess);
    EXPECT_THAT(reason(), AllOf(HasSubstr("held exclusively"), HasSubstr("A guess: it may be viewer"),
                                HasSubstr("another computer")));
}

TEST_F(HoldingTest, IsElseGuessedFromTheOneSocketOnAllAddresses)
{
    addSocket({}, 40000, {Viewer});
    addSocket({}, 68, {Recorder});
    addSocket({}, 61000, {Recorder});
    EXPECT_EQ(pid(), Viewer.pid);
    EXPECT_TRUE(holding().isGuess);
    local.lastGivenPort = 61000;
    EXPECT_EQ(pid(), 0) << "two";
    local.lastGivenPort = 39999;
    EXPECT_EQ(pid(), 0) << "none";
    EXPECT_THAT(reason(), HasSubstr("No program of this computer has a socket"));
}

TEST_F(HoldingTest, IsNotGuessedAmongSeveral)
{
    addSocket("192.168.1.5"_ip, 40000, {Viewer});
    addSocket("192.168.1.5"_ip, 40001, {Recorder});
    EXPECT_EQ(pid(), 0);
    EXPECT_FALSE(holding().isGuess);
    EXPECT_THAT(reason(), HasSubstr("viewer (process 100, of alice), recorder (process 200, of bob)"));
}

TEST_F(HoldingTest, OfAnotherUserNamesTheUserAtLeast)
{
    camera.holder = Endpoint{"192.168.1.5"_ip, 40000};
    addSocket("192.168.1.5"_ip, 40000, {});
    EXPECT_EQ(pid(), 0);
    EXPECT_THAT(reason(), AllOf(HasSubstr("a program of carol"), HasSubstr("only root may see")));

    camera.holder.reset();
    EXPECT_EQ(pid(), 0);
    EXPECT_THAT(reason(), AllOf(HasSubstr("a program of carol"), HasSubstr("only root may see")));
    addSocket("192.168.1.5"_ip, 40001, {Viewer});
    EXPECT_EQ(pid(), 0) << "it may as well be the one that is not seen";
}

TEST_F(HoldingTest, ElsewhereIsToldWithTheMacThatTheKernelKnows)
{
    camera.holder = Endpoint{"192.168.1.77"_ip, 40000};
    addSocket("192.168.1.5"_ip, 40000, {Viewer});
    EXPECT_EQ(pid(), 0);
    EXPECT_THAT(reason(),
                AllOf(HasSubstr("another computer, 192.168.1.77, port 40000"), Not(HasSubstr("MAC"))));
    const auto mac = *base::MacAddress::parse("00:11:22:33:44:55");
    local.neighbours = {{3, "192.168.1.77"_ip, mac}, {2, "192.168.1.78"_ip, mac}};
    EXPECT_THAT(reason(), Not(HasSubstr("MAC"))) << "of another adapter, and another machine";
    local.neighbours.push_back({2, "192.168.1.77"_ip, mac});
    EXPECT_THAT(reason(), HasSubstr("192.168.1.77 (MAC address 00:11:22:33:44:55), port 40000"));
}

TEST_F(HoldingTest, OfAProgramThatHasEndedIsToldWithTheTimeUntilTheCameraLetsGo)
{
    camera.holder = Endpoint{"192.168.1.5"_ip, 40000};
    camera.heartbeatTimeout = std::chrono::milliseconds(3000);
    addSocket("192.168.1.5"_ip, 40001, {Viewer});
    EXPECT_EQ(pid(), 0) << "nothing speaks for that one";
    EXPECT_THAT(reason(), AllOf(HasSubstr("no program has that socket"), HasSubstr("lets go 3000 ms")));
    camera.isHeartbeatOff = true;
    EXPECT_THAT(reason(), AllOf(HasSubstr("held for ever"), HasSubstr("cut the camera's power"),
                                Not(HasSubstr("lets go"))));
}

TEST_F(HoldingTest, OfACameraThatDoesNotTellWhetherItIsHeldIsNoMoreThanAConnection)
{
    camera.privilege.reset();
    const std::pair<Registers, const char*> reasons[] = {{Registers::NotAsked, "outside the subnet"},
                                                         {Registers::Silent, "did not tell"},
                                                         {Registers::Told, "did not tell"}};
    for (const auto& [registers, text] : reasons) {
        camera.registers = registers;
        local.sockets.clear();
        addSocket("192.168.1.5"_ip, 40000, {Recorder});
        EXPECT_EQ(pid(), 0);
        EXPECT_THAT(reason(), HasSubstr(text));
        addSocket("192.168.1.5"_ip, 40001, {Viewer}, {camera.ip.address, CameraPort});
        EXPECT_EQ(pid(), Viewer.pid);
        EXPECT_TRUE(holding().isGuess);
        EXPECT_THAT(reason(), HasSubstr("proves that somebody talks with it and not that it is held"));
    }
    camera.registers = Registers::OthersTold;
    EXPECT_EQ(pid(), 0) << "whoever that is connected to";
    EXPECT_THAT(reason(), HasSubstr("another camera answers at its address"));
}
