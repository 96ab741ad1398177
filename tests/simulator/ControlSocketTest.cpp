// SPDX-License-Identifier: Apache-2.0
#include "simulator/ControlSocket.h"

#include <algorithm>
#include <atomic>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <sys/file.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <sys/un.h>
#include <system_error>
#include <thread>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;
using simulator::ControlSocket;
using testing::HasSubstr;

class ControlSocketPath : public testing::Test
{
protected:
    ControlSocketPath() { fs::create_directory(directory); }
    ~ControlSocketPath() override { fs::remove_all(directory); }

    static ControlSocket::Answer noCommands(const std::string&) { return {}; }

    /// What is said when a farm cannot have the path; nothing when it can.
    static std::string refusal(const std::string& path)
    {
        try {
            ControlSocket socket(path, noCommands);
            return {};
        } catch (const std::exception& error) {
            return error.what();
        }
    }

    static void write(const std::string& path) { std::ofstream(path) << "precious"; }
    static std::string read(const std::string& path)
    {
        std::string text;
        std::ifstream(path) >> text;
        return text;
    }

    static ino_t numberOf(const std::string& path)
    {
        struct stat found = {};
        return ::lstat(path.c_str(), &found) == 0 ? found.st_ino : 0;
    }
    /// Whether somebody waits for a lock on the folder, as the kernel tells.
    static bool isWaitedFor(const std::string& folder)
    {
        std::ifstream locks("/proc/locks");
        for (std::string line; std::getline(locks, line);) {
            if (line.find("-> FLOCK") != std::string::npos &&
                line.find(":" + std::to_string(numberOf(folder)) + " ") != std::string::npos)
                return true;
        }
        return false;
    }

    /// A socket as a program leaves it that is killed; or, as long as the result is open, one that is in use.
    static int bindSocket(const std::string& path, int type)
    {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        std::copy(path.begin(), path.end(), address.sun_path);
        const int fd = ::socket(AF_UNIX, type, 0);
        if (::bind(fd, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0)
            throw std::system_error(errno, std::generic_category(), path);
        return fd;
    }
    static void leaveStaleSocket(const std::string& path) { ::close(bindSocket(path, SOCK_SEQPACKET)); }

    const std::string directory = testing::TempDir() + "control-socket-" + std::to_string(::getpid());
    const std::string path = directory + "/control";
};

TEST_F(ControlSocketPath, LeavesAFileThatIsNotASocketAlone)
{
    write(path);
    EXPECT_THAT(refusal(path), HasSubstr(path + ": it is there and is not a socket"));
    EXPECT_EQ(read(path), "precious");

    const std::string folder = directory + "/folder";
    fs::create_directory(folder);
    EXPECT_THAT(refusal(folder), HasSubstr("is not a socket"));
    EXPECT_TRUE(fs::is_directory(folder));

    const std::string pipe = directory + "/pipe";
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    EXPECT_THAT(refusal(pipe), HasSubstr("is not a socket"));
    EXPECT_TRUE(fs::is_fifo(pipe));

    const std::string device = directory + "/device";
    ASSERT_EQ(::mknod(device.c_str(), S_IFCHR | 0600, makedev(1, 3)), 0);
    EXPECT_THAT(refusal(device), HasSubstr("is not a socket"));
    EXPECT_TRUE(fs::is_character_file(device));
}

TEST_F(ControlSocketPath, LeavesALinkAloneWhateverItLeadsTo)
{
    const std::string file = directory + "/file";
    const std::string stale = directory + "/stale";
    write(file);
    leaveStaleSocket(stale);
    for (const std::string& target : {file, stale, directory + "/nothing"}) {
        fs::create_symlink(target, path);
        EXPECT_THAT(refusal(path), HasSubstr("is not a socket")) << target;
        EXPECT_EQ(fs::read_symlink(path), target);
        fs::remove(path);
    }
    EXPECT_EQ(read(file), "precious");
    EXPECT_TRUE(fs::is_socket(stale));
    EXPECT_FALSE(fs::exists(directory + "/nothing"));
}

TEST_F(ControlSocketPath, LeavesTheSocketOfAnotherProgramAlone)
{
    const int other = bindSocket(path, SOCK_DGRAM);
    EXPECT_EQ(refusal(path), "another program is listening on " + path);
    EXPECT_TRUE(fs::is_socket(path));
    ::close(other);
}

TEST_F(ControlSocketPath, IsRemovedAtTheEndUnlessSomethingElseHasTakenIt)
{
    auto socket = std::make_unique<ControlSocket>(path, noCommands);
    EXPECT_TRUE(fs::is_socket(path));
    socket.reset();
    EXPECT_FALSE(fs::exists(path));

    socket = std::make_unique<ControlSocket>(path, noCommands);
    fs::remove(path);
    write(path);
    socket.reset();
    EXPECT_EQ(read(path), "precious");

    fs::remove(path);
    socket = std::make_unique<ControlSocket>(path, noCommands);
    fs::remove(path);
    const ControlSocket next(path, noCommands);
    socket.reset();
    EXPECT_TRUE(fs::is_socket(path)) << "it is the next farm's";
}

TEST_F(ControlSocketPath, IsNotTouchedWhileAnotherFarmTakesItOver)
{
    const int unheard = bindSocket(path, SOCK_SEQPACKET); // Open, so that its number is not given away again.
    const ino_t stale = numberOf(path);
    const int folder = ::open(directory.c_str(), O_RDONLY | O_DIRECTORY);
    ASSERT_EQ(::flock(folder, LOCK_EX), 0);

    std::unique_ptr<ControlSocket> socket;
    std::atomic<bool> isMade = false;
    std::thread farm([&] {
        socket = std::make_unique<ControlSocket>(path, noCommands);
        isMade = true;
    });
    while (!isMade && !isWaitedFor(directory))
        std::this_thread::yield();
    EXPECT_EQ(numberOf(path), stale);
    ::close(folder);
    farm.join();
    ::close(unheard);
    EXPECT_NE(refusal(path), "") << "the farm has its socket";
}

} // namespace
