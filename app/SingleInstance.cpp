// SPDX-License-Identifier: Apache-2.0
#include "app/SingleInstance.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

namespace {

/// False when another process has locked the file. A file system that knows no locks keeps nobody from
/// starting.
bool lockWhole(int fd)
{
    struct flock lock = {};
    lock.l_type = F_WRLCK;
    lock.l_whence = SEEK_SET;
    lock.l_start = 0;
    lock.l_len = 0; // To the end, wherever that is.
    return fcntl(fd, F_SETLK, &lock) == 0 || (errno != EAGAIN && errno != EACCES);
}

/// False, and errno says why, when it cannot be written.
bool writeProcessId(int fd)
{
    std::array<char, 16> digits = {};
    std::snprintf(digits.data(), digits.size(), "%d", getpid());
    // If this fails, as on a device, the number is still written over the beginning.
    [[maybe_unused]] const int truncated = ftruncate(fd, 0);
    return write(fd, digits.data(), std::strlen(digits.data())) >= 0;
}

} // namespace

bool runSingleInstance()
{
    const std::string name = currentExeName();
    if (name.empty())
        std::exit(1);

    const std::string path = "/var/run/" + name + ".pid";
    const int fd = open(path.c_str(), O_RDWR | O_CREAT, 0666);
    if (fd < 0) {
        std::printf("Open file failed, error : %s", std::strerror(errno));
        std::exit(1);
    }
    if (!lockWhole(fd)) {
        std::printf("%s already locked, error: %s\n", path.c_str(), std::strerror(errno));
        close(fd);
        return false;
    }
    if (!writeProcessId(fd)) {
        std::printf("Write file failed, file: %s, error: %s\n", path.c_str(), std::strerror(errno));
        close(fd);
        std::exit(1);
    }
    return true; // The descriptor stays open: the lock goes when it is closed.
}

std::string currentExeName()
{
    std::array<char, 4096> path = {};
    const auto length = static_cast<size_t>(readlink("/proc/self/exe", path.data(), path.size()));
    if (length >= path.size()) // Cut off; or -1 for a failure, which is a large number here.
        return {};
    const std::string text(path.data(), length);
    const size_t slash = text.rfind('/');
    return slash == std::string::npos ? std::string() : text.substr(slash + 1);
}
