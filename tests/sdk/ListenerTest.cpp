// SPDX-License-Identifier: Apache-2.0
#include "sdk/network/Listener.h"

#include "sdk/network/ListenerPath.h"
#include "tests/support/NoMoreDescriptors.h"

#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <fcntl.h>
#include <fstream>
#include <gtest/gtest.h>
#include <poll.h>
#include <string>
#include <sys/stat.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>
#include <vector>

namespace {

std::array<char, 4096> path{};

} // namespace

/// Instead of the library's own.
const char* const sdk::ListenerPath = path.data();

namespace {

constexpr std::uint16_t Port = 40000;

/// What the double does, by its first argument.
enum Behaviour : unsigned
{
    Works = 1,
    MayNot,
    Fails,
    HasNothingToHear,
    IsSilent,
    DiesInMidPacket,
    Floods,
    SpeaksTooEarly,
    TellsWhatItInherited,
    DoesNotEnd,
    IsKilledAtOnce,
};

class Listener : public testing::Test
{
protected:
    Listener() { setPath(LISTENER_DOUBLE); }
    ~Listener() override
    {
        EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1) << "one has not been reaped";
        EXPECT_EQ(errno, ECHILD);
    }

    static void setPath(const std::string& file)
    {
        std::snprintf(path.data(), path.size(), "%s", file.c_str());
    }

    /// Reads as soon as there is something; false when it is over.
    static bool readMore(sdk::Listener& listener)
    {
        pollfd polled{listener.descriptor(), POLLIN, 0};
        if (polled.fd < 0 || poll(&polled, 1, 10'000) <= 0)
            return false;
        listener.read();
        return true;
    }

    static void awaitStart(sdk::Listener& listener)
    {
        while (listener.isStarting() && readMore(listener)) {
        }
    }

    static std::string frame(sdk::Listener& listener)
    {
        for (;;) {
            if (const auto bytes = listener.nextFrame())
                return {bytes->begin(), bytes->end()};
            if (!readMore(listener))
                return "none";
        }
    }

    /// The state in which it ends up without having been told to end.
    static RZ_LISTENER stateOf(Behaviour behaviour)
    {
        sdk::Listener listener(behaviour, Port);
        awaitStart(listener);
        return listener.state();
    }
};

/// A file of the test's own.
class OwnFile
{
public:
    explicit OwnFile(mode_t mode)
    {
        std::ofstream(m_path) << "not a program";
        EXPECT_EQ(chmod(m_path.c_str(), mode), 0);
    }
    OwnFile(const OwnFile&) = delete;
    OwnFile& operator=(const OwnFile&) = delete;
    ~OwnFile() { std::remove(m_path.c_str()); }

    const std::string& path() const { return m_path; }

private:
    std::string m_path = testing::TempDir() + "listener-" + std::to_string(getpid());
};

} // namespace

TEST_F(Listener, HearsWhatIsSentToThePortOnceItListens)
{
    sdk::Listener listener(Works, Port);
    EXPECT_TRUE(listener.isStarting());
    EXPECT_EQ(frame(listener), "frame of port 40000");
    EXPECT_FALSE(listener.isStarting());
    EXPECT_EQ(listener.state(), RZ_LISTENER_HEARS);
}

TEST_F(Listener, TellsWhyItDoesNotListen)
{
    EXPECT_EQ(stateOf(MayNot), RZ_LISTENER_UNPRIVILEGED);
    EXPECT_EQ(stateOf(Fails), RZ_LISTENER_FAILED);
    EXPECT_EQ(stateOf(HasNothingToHear), RZ_LISTENER_HEARS);
    EXPECT_EQ(stateOf(SpeaksTooEarly), RZ_LISTENER_FAILED);
}

TEST_F(Listener, ThatSpeaksTooEarlyIsNotBelieved)
{
    sdk::Listener listener(SpeaksTooEarly, Port);
    EXPECT_EQ(frame(listener), "none");
}

TEST_F(Listener, TellsThatItsProgramIsNotThereOrIsNone)
{
    setPath("/nowhere/hear");
    EXPECT_EQ(stateOf(Works), RZ_LISTENER_MISSING);
    {
        const OwnFile notExecutable(0644);
        setPath(notExecutable.path());
        EXPECT_EQ(stateOf(Works), RZ_LISTENER_FORBIDDEN);
        setPath(notExecutable.path() + "/hear");
        EXPECT_EQ(stateOf(Works), RZ_LISTENER_MISSING);
    }
    const OwnFile noProgram(0755);
    setPath(noProgram.path());
    EXPECT_EQ(stateOf(Works), RZ_LISTENER_FAILED);
}

TEST_F(Listener, ThatIsSilentIsStillStarting)
{
    sdk::Listener listener(IsSilent, Port);
    listener.read();
    EXPECT_TRUE(listener.isStarting());
    EXPECT_FALSE(listener.nextFrame());
    EXPECT_EQ(listener.state(), RZ_LISTENER_FAILED);
}

TEST_F(Listener, ThatDiesInMidPacketIsStartedAgainThreeTimes)
{
    sdk::Listener listener(DiesInMidPacket, Port);
    for (int i = 0; i < 4; ++i)
        EXPECT_EQ(frame(listener), "frame") << "start " << i;
    EXPECT_EQ(frame(listener), "none");
    EXPECT_EQ(listener.state(), RZ_LISTENER_FAILED);
    EXPECT_LT(listener.descriptor(), 0);
}

TEST_F(Listener, ThatIsKilledBeforeItListensIsStartedAgainToo)
{
    sdk::Listener listener(IsKilledAtOnce, Port);
    for (int i = 0; i < 4; ++i) {
        EXPECT_TRUE(listener.isStarting()) << "start " << i;
        EXPECT_TRUE(readMore(listener));
    }
    EXPECT_FALSE(listener.isStarting());
    EXPECT_EQ(listener.state(), RZ_LISTENER_FAILED);
}

TEST_F(Listener, ThatFloodsIsReadInPiecesAndEnded)
{
    sdk::Listener listener(Floods, Port);
    for (int i = 0; i < 100; ++i)
        EXPECT_EQ(frame(listener), std::string(60000, 'x'));
}

TEST_F(Listener, ThatDoesNotEndIsKilled)
{
    sdk::Listener listener(DoesNotEnd, Port);
    awaitStart(listener);
    EXPECT_EQ(listener.state(), RZ_LISTENER_HEARS);
}

TEST_F(Listener, InheritsNothing)
{
    ASSERT_EQ(setenv("QT_PLUGIN_PATH", "/tmp", 1), 0);
    const int inheritable = dup(STDIN_FILENO);
    ASSERT_GE(inheritable, 3);
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGTERM);
    sigset_t before;
    pthread_sigmask(SIG_BLOCK, &signals, &before);
    const auto pipe = std::signal(SIGPIPE, SIG_IGN);
    {
        sdk::Listener listener(TellsWhatItInherited, Port);
        EXPECT_EQ(frame(listener), "3 0 012 own plain");
    }
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
    std::signal(SIGPIPE, pipe);
    close(inheritable);
    unsetenv("QT_PLUGIN_PATH");
}

TEST_F(Listener, IsNotStartedByHalfWhenTheProcessMayOpenNoMore)
{
#ifdef __SANITIZE_ADDRESS__
    GTEST_SKIP() << "the undefined-behaviour sanitizer beside it needs a pipe to look at an exception";
#endif
    int error = 0;
    {
        const NoMoreDescriptors limit;
        try {
            sdk::Listener(Works, Port);
        } catch (const std::system_error& thrown) {
            error = thrown.code().value();
        }
    }
    EXPECT_EQ(error, EMFILE);
}

TEST_F(Listener, MayBeStartedBySomebodyWhoseChildrenAreReapedByTheKernel)
{
    const auto before = std::signal(SIGCHLD, SIG_IGN);
    {
        sdk::Listener listener(Works, Port);
        EXPECT_EQ(frame(listener), "frame of port 40000");
    }
    std::signal(SIGCHLD, before);
}
