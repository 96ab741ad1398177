// SPDX-License-Identifier: Apache-2.0
#include "tests/support/NetworkLab.h"

#include "tests/support/ChildLauncher.h"
#include "tests/support/WaitUntil.h"

#include <arpa/inet.h>
#include <cerrno>
#include <csignal>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <optional>
#include <poll.h>
#include <stdexcept>
#include <sys/socket.h>
#include <thread>
#include <unistd.h>

namespace {

using lab::Namespace;
using lab::Process;
using testing::HasSubstr;

bool exists(pid_t pid)
{
    return ::kill(pid, 0) == 0 || errno != ESRCH;
}

/// Sends `count` small broadcasts from one host to the other and gives how many arrived. No answers are
/// involved, so each crosses the switch once.
int arrivals(lab::Switch& network, int count)
{
    Namespace sender;
    Namespace receiver;
    network.attach(sender, "eth0", "10.1.1.1/24");
    network.attach(receiver, "eth0", "10.1.1.2/24");
    receiver.run("nft 'add table inet lab; add counter inet lab arrived; "
                 "add chain inet lab input { type filter hook input priority 0; }; "
                 "add rule inet lab input udp dport 7 counter name arrived'");
    lab::Visit visit(sender);
    const int fd = ::socket(AF_INET, SOCK_DGRAM, 0);
    const int on = 1;
    ::setsockopt(fd, SOL_SOCKET, SO_BROADCAST, &on, sizeof on);
    sockaddr_in to{};
    to.sin_family = AF_INET;
    to.sin_port = htons(7);
    to.sin_addr.s_addr = htonl(0x0A0101FF);
    for (int i = 0; i < count; ++i)
        EXPECT_EQ(::sendto(fd, "x", 1, 0, reinterpret_cast<const sockaddr*>(&to), sizeof to), 1);
    ::close(fd);
    // A frame has crossed the veth pairs and the bridge by the time that the sending call returns.
    const std::string counter = receiver.run("nft list counter inet lab arrived");
    return std::stoi(counter.substr(counter.find("packets ") + 8));
}

TEST(NetworkLab, GivesWhatACommandPrintsOnBothStreamsAndItsStatus)
{
    const Namespace space;
    const lab::Output output = space.execute({"sh", "-c", "echo good; echo bad >&2; exit 3"});
    EXPECT_EQ(output.standardOutput, "good\n");
    EXPECT_EQ(output.standardError, "bad\n");
    EXPECT_EQ(output.status, 3);
}

TEST(NetworkLab, PassesArgumentsOnAsTheyAre)
{
    const Namespace space;
    EXPECT_EQ(space.execute({"printf", "%s|", "a b", "$HOME", "'\"", ""}).standardOutput, "a b|$HOME|'\"||");
}

TEST(NetworkLab, TakesInMoreOutputThanAPipeHolds)
{
    const Namespace space;
    EXPECT_EQ(space.run("head -c 300000 /dev/zero").size(), 300000u);
}

TEST(NetworkLab, ThrowsWithTheCommandAndItsErrorsWhenItFails)
{
    const Namespace space;
    try {
        space.run("ip link show missing0");
        FAIL() << "no exception";
    } catch (const std::runtime_error& error) {
        EXPECT_THAT(error.what(), HasSubstr("ip link show missing0"));
        EXPECT_THAT(error.what(), HasSubstr("does not exist"));
    }
}

TEST(NetworkLab, ThrowsForAProgramThatEndsWithoutTheLineThatIsWaitedFor)
{
    const Namespace space;
    Process process = space.start({"this-program-does-not-exist"});
    EXPECT_THROW(process.readLine(), std::runtime_error);
    EXPECT_EQ(process.wait(), 127);
}

TEST(NetworkLab, ReadsLineAfterLineWhileTheProgramRuns)
{
    const Namespace space;
    Process process = space.start({"sh", "-c", "echo one; echo two; exec sleep 1000"});
    EXPECT_EQ(process.readLine(), "one");
    EXPECT_EQ(process.readLine(), "two");
    ::kill(process.id(), SIGTERM);
    EXPECT_EQ(process.wait(), 128 + SIGTERM);
}

TEST(NetworkLab, KillsAProcessAndWhatItStartedWithItsObject)
{
    const Namespace space;
    std::optional<Process> process(space.start({"sh", "-c", "sleep 1000 & echo $!; wait"}));
    const pid_t shell = process->id();
    const pid_t child = std::stoi(process->readLine());
    const int childHandle = lab::openProcess(child);
    process.reset();
    EXPECT_FALSE(exists(shell));
    pollfd ended{childHandle, POLLIN, 0};
    EXPECT_EQ(::poll(&ended, 1, 20000), 1) << "the grandchild is still running";
    ::close(childHandle);
}

TEST(NetworkLab, AProcessOutlivesTheThreadThatStartedIt)
{
    const Namespace space;
    std::optional<Process> process;
    pid_t thread = 0;
    std::thread([&] {
        thread = ::gettid();
        process.emplace(space.start(
            {"sh", "-c", "trap 'echo here' USR1; echo ready; while :; do sleep 1000 & wait; done"}));
        EXPECT_EQ(process->readLine(), "ready");
    }).join();
    // Who is to end with a thread has been told so when the thread is listed no more.
    const auto listed = "/proc/self/task/" + std::to_string(thread);
    ASSERT_TRUE(waitUntil([&] { return !std::filesystem::exists(listed); }));
    ::kill(process->id(), SIGUSR1);
    EXPECT_EQ(process->readLine(), "here") << "it ended with the thread";
}

TEST(NetworkLab, ANewNamespaceHasOnlyItsLoopbackAndNoReversePathFilter)
{
    const Namespace space;
    EXPECT_EQ(space.run("ls /proc/sys/net/ipv4/conf"), "all\ndefault\nlo\n");
    EXPECT_EQ(space.run("cat /proc/sys/net/ipv4/conf/*/rp_filter"), "0\n0\n0\n");
    EXPECT_THAT(space.run("ip -brief address"), HasSubstr("127.0.0.1/8"));
}

TEST(NetworkLab, AVisitEndsWhereItBegan)
{
    const auto here = std::filesystem::read_symlink("/proc/thread-self/ns/net");
    const Namespace space;
    {
        lab::Visit visit(space);
        EXPECT_NE(std::filesystem::read_symlink("/proc/thread-self/ns/net"), here);
    }
    EXPECT_EQ(std::filesystem::read_symlink("/proc/thread-self/ns/net"), here);
}

TEST(NetworkLab, HostsOnASwitchReachEachOther)
{
    lab::Switch network;
    Namespace one;
    Namespace two;
    network.attach(one, "eth0", "10.1.1.1/24");
    network.attach(two, "eth0", "10.1.1.2/24");
    EXPECT_EQ(one.execute({"ping", "-c1", "-W10", "10.1.1.2"}).status, 0);
}

TEST(NetworkLab, ASwitchLosesAboutTheShareItIsTold)
{
    lab::Switch network;
    EXPECT_EQ(arrivals(network, 1000), 1000);
    network.loseFrames(90);
    network.loseFrames(30); // replaces the first
    // 700 expected; 15 is a standard deviation.
    EXPECT_THAT(arrivals(network, 1000), testing::AllOf(testing::Gt(600), testing::Lt(800)));
}

} // namespace
