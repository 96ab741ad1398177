// SPDX-License-Identifier: Apache-2.0
#include "tests/hear/Frames.h"
#include "tests/hear/Listener.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <regex>

namespace {

/// A file that is gone with it, for the calls of a program.
class Trace
{
public:
    Trace() : m_directory(std::filesystem::temp_directory_path() / "hear-XXXXXX")
    {
        if (!::mkdtemp(m_directory.data()))
            throw std::runtime_error("cannot make the directory " + m_directory);
    }
    Trace(const Trace&) = delete;
    Trace& operator=(const Trace&) = delete;
    ~Trace()
    {
        std::error_code ignored;
        std::filesystem::remove_all(m_directory, ignored);
    }

    std::string path() const { return m_directory + "/calls"; }

    /// Each call from that of socket() on, with its first argument and the name of an option or protocol.
    std::vector<std::string> calls() const
    {
        static const std::regex call(
            R"(^(\w+\()([^,)]*)(?:, [A-Z_|]+(, (?:SO_\w+|htons\(\w+)))?.* = (\S+).*$)");
        std::vector<std::string> calls;
        std::string socket;
        std::ifstream file(path());
        for (std::string line; std::getline(file, line);) {
            std::smatch parts;
            if (!std::regex_match(line, parts, call))
                throw std::runtime_error("not understood: " + line);
            if (parts[1] == "socket(")
                socket = parts[4];
            if (!socket.empty())
                calls.push_back(parts[1].str() + (parts[2] == socket ? "socket" : parts[2].str()) +
                                parts[3].str());
        }
        return calls;
    }

private:
    std::string m_directory;
};

} // namespace

TEST(SystemCalls, ConfineItInThisOrderBeforeItSaysThatItListensAndThenRelayOnly)
{
    const Trace trace;
    const Cable cable;
    Listener listener(cable.host(), {"strace", "-qq", "-e", "signal=none", "-o", trace.path(), LISTENER,
                                     cable.index(), "40000"});
    EXPECT_EQ(listener.read(), base::Bytes());
    cable.send(frames::Answer);
    EXPECT_EQ(listener.read(), frames::Answer);
    listener.write("ignored");
    listener.endInput();
    EXPECT_EQ(listener.wait(), 0);

    std::vector<std::string> calls = trace.calls();
    std::erase(calls, "prctl(PR_CAPBSET_READ");
    std::erase(calls, "prctl(PR_CAPBSET_DROP");
    const std::vector<std::string> beginning{
        "socket(AF_PACKET, htons(0",
        "setsockopt(socket, SO_ATTACH_FILTER",
        "setsockopt(socket, SO_LOCK_FILTER",
        "setsockopt(socket, SO_RCVBUFFORCE",
        "bind(socket",
        "getsockname(socket",
        "capget({version=_LINUX_CAPABILITY_VERSION_3",
        "prctl(PR_CAP_AMBIENT",
        "getegid(",
        "getgid(",
        "geteuid(",
        "getuid(",
        "capset({version=_LINUX_CAPABILITY_VERSION_3",
        "capget({version=_LINUX_CAPABILITY_VERSION_3",
        "prctl(PR_SET_NO_NEW_PRIVS",
        "prctl(PR_SET_DUMPABLE",
        "prctl(PR_SET_SECCOMP",
        "ppoll([{fd=0",
        "write(1",
    };
    ASSERT_GT(calls.size(), beginning.size());
    const auto rest = calls.begin() + static_cast<std::ptrdiff_t>(beginning.size());
    EXPECT_EQ(std::vector<std::string>(calls.begin(), rest), beginning);
    EXPECT_THAT(std::vector<std::string>(rest, calls.end()),
                testing::Each(
                    testing::AnyOf("ppoll([{fd=0", "recvfrom(socket", "write(1", "read(0", "exit_group(0")));
    EXPECT_EQ(std::count(calls.begin(), calls.end(), "write(1"), 2) << "a frame is written at once";
}
