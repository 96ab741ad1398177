// SPDX-License-Identifier: Apache-2.0
// Stands in for the listener, and behaves as its first argument says. Whatever is asked of it, it ends within
// ten seconds.
#include <csignal>
#include <dirent.h>
#include <fcntl.h>
#include <string>
#include <unistd.h>

extern char** environ;

namespace {

void say(const std::string& packet)
{
    const std::string length{static_cast<char>(packet.size() >> 8), static_cast<char>(packet.size())};
    const std::string bytes = length + packet;
    if (write(STDOUT_FILENO, bytes.data(), bytes.size()) < 0)
        _exit(1);
}

void sayHalfAPacket()
{
    if (write(STDOUT_FILENO, "\0\5ab", 4) < 0)
        _exit(1);
}

void awaitEndOfInput()
{
    for (char each = 0; read(STDIN_FILENO, &each, 1) > 0;) {
    }
}

/// What it has of its parent's: "arguments environment descriptors group signals".
std::string inheritance(int argc)
{
    int variables = 0;
    while (environ[variables])
        ++variables;
    std::string descriptors;
    DIR* const folder = opendir("/proc/self/fd");
    for (int fd = 0; fd < 1024; ++fd)
        if (fd != dirfd(folder) && fcntl(fd, F_GETFD) >= 0)
            descriptors += std::to_string(fd);
    closedir(folder);
    sigset_t blocked;
    sigprocmask(SIG_SETMASK, nullptr, &blocked);
    struct sigaction pipe
    {};
    sigaction(SIGPIPE, nullptr, &pipe);
    return std::to_string(argc) + ' ' + std::to_string(variables) + ' ' + descriptors + ' ' +
           (getpgrp() == getpid() ? "own" : "parent's") + ' ' +
           (sigismember(&blocked, SIGTERM) != 0 || pipe.sa_handler == SIG_IGN ? "changed" : "plain");
}

} // namespace

int main(int argc, char** argv)
{
    alarm(10);
    const std::string behaviour = argv[1];
    if (behaviour == "1") { // Does its work.
        say("");
        say("frame of port " + std::string(argv[2]));
        awaitEndOfInput();
    } else if (behaviour == "2") { // May not listen.
        return 3;
    } else if (behaviour == "3") { // Fails.
        return 1;
    } else if (behaviour == "4") { // Has nothing to hear.
        return 0;
    } else if (behaviour == "5") { // Silent.
        awaitEndOfInput();
    } else if (behaviour == "6") { // Dies in mid-packet, each time.
        say("");
        say("frame");
        sayHalfAPacket();
    } else if (behaviour == "7") { // Floods for ever.
        say("");
        for (;;)
            say(std::string(60000, 'x'));
    } else if (behaviour == "8") { // Speaks before it listens.
        say("frame");
        say("frame");
        awaitEndOfInput();
    } else if (behaviour == "9") {
        say("");
        say(inheritance(argc));
        awaitEndOfInput();
    } else if (behaviour == "10") { // Does not end when it is told to.
        say("");
        for (;;)
            pause();
    } else if (behaviour == "11") { // Is killed before it listens, each time.
        raise(SIGKILL);
    }
    return 0;
}
