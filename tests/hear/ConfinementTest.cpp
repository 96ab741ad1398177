// SPDX-License-Identifier: Apache-2.0
#include "hear/Confinement.h"
#include "base/FileDescriptor.h"
#include "tests/hear/Frames.h"
#include "tests/hear/Listener.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <functional>
#include <netinet/in.h>
#include <netpacket/packet.h>
#include <poll.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr int Done = 42;

/// What becomes of a process that is confined to a socket and then does this: Done, or 128 + the signal that
/// ends it. Its standard input has something to read, its standard output leads nowhere. It runs what the C
/// library gives it, not what a sanitizer would put in its place: `act` makes its calls itself.
int confined(const std::function<void(int socket)>& act)
{
    int pair[2]{};
    EXPECT_EQ(::socketpair(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0, pair), 0);
    const base::FileDescriptor socket(pair[0]);
    const base::FileDescriptor peer(pair[1]);
    EXPECT_EQ(::send(peer.get(), "x", 1, 0), 1);
    const pid_t pid = ::fork();
    if (pid == 0) {
        ::alarm(20);
        ::dup2(::open("/dev/zero", O_RDONLY), STDIN_FILENO);
        ::dup2(::open("/dev/null", O_WRONLY), STDOUT_FILENO);
        if (!hear::confineTo(socket.get()))
            act(socket.get());
        ::syscall(SYS_exit_group, Done);
    }
    int raw = 0;
    ::waitpid(pid, &raw, 0);
    return WIFEXITED(raw) ? WEXITSTATUS(raw) : 128 + WTERMSIG(raw);
}

void exitIf(bool unexpected)
{
    if (unexpected)
        ::syscall(SYS_exit_group, 1);
}

} // namespace

TEST(Confinement, LeavesWhatRelaysFromTheSocket)
{
    EXPECT_EQ(confined([](int socket) {
                  char byte = 0;
                  pollfd one{socket, POLLIN, 0};
                  exitIf(::syscall(SYS_ppoll, &one, 1, nullptr, nullptr, 8) != 1);
                  exitIf(::syscall(SYS_recvfrom, socket, &byte, 1, MSG_DONTWAIT, nullptr, nullptr) != 1);
                  exitIf(byte != 'x');
                  exitIf(::syscall(SYS_read, STDIN_FILENO, &byte, 1) != 1);
                  exitIf(::syscall(SYS_write, STDOUT_FILENO, &byte, 1) != 1);
              }),
              Done);
}

TEST(Confinement, EndsWhoeverMakesAnyOtherCall)
{
    static char byte = 0;
    static const char* const nothing[] = {nullptr};
    const struct
    {
        const char* what;
        std::function<void(int)> call;
    } forbidden[] = {
        {"writing to the socket", [](int socket) { ::syscall(SYS_write, socket, &byte, 1); }},
        {"sending", [](int socket) { ::syscall(SYS_sendto, socket, &byte, 1, 0, nullptr, 0); }},
        {"sending messages", [](int socket) { ::syscall(SYS_sendmsg, socket, nullptr, 0); }},
        {"writing in parts", [](int) { ::syscall(SYS_writev, STDOUT_FILENO, nullptr, 0); }},
        {"complaining", [](int) { ::syscall(SYS_write, STDERR_FILENO, &byte, 1); }},
        {"writing to the input", [](int) { ::syscall(SYS_write, STDIN_FILENO, &byte, 1); }},
        {"reading the output", [](int) { ::syscall(SYS_read, STDOUT_FILENO, &byte, 1); }},
        {"reading from the socket", [](int socket) { ::syscall(SYS_read, socket, &byte, 1); }},
        {"receiving from the input",
         [](int) { ::syscall(SYS_recvfrom, STDIN_FILENO, &byte, 1, 0, nullptr, nullptr); }},
        {"receiving from another socket",
         [](int socket) { ::syscall(SYS_recvfrom, socket + 1, &byte, 1, MSG_DONTWAIT, nullptr, nullptr); }},
        {"opening a file", [](int) { ::syscall(SYS_openat, AT_FDCWD, "/dev/null", O_RDONLY); }},
        {"another socket", [](int) { ::syscall(SYS_socket, AF_INET, SOCK_DGRAM, 0); }},
        {"binding anew", [](int socket) { ::syscall(SYS_bind, socket, nullptr, 0); }},
        {"another filter", [](int socket) { ::syscall(SYS_setsockopt, socket, SOL_SOCKET, 0, nullptr, 0); }},
        {"connecting", [](int socket) { ::syscall(SYS_connect, socket, nullptr, 0); }},
        {"a control of the socket", [](int socket) { ::syscall(SYS_ioctl, socket, 0, nullptr); }},
        {"moving the socket to the output",
         [](int socket) { ::syscall(SYS_dup3, socket, STDOUT_FILENO, 0); }},
        {"closing the output", [](int) { ::syscall(SYS_close, STDOUT_FILENO); }},
        {"another program", [](int) { ::syscall(SYS_execve, "/bin/true", nothing, nothing); }},
        {"another process", [](int) { ::syscall(SYS_clone, SIGCHLD, nullptr, nullptr, nullptr, nullptr); }},
        {"a signal", [](int) { ::syscall(SYS_kill, 0, 0); }},
        {"new code", [](int) { ::syscall(SYS_mmap, nullptr, 4096, PROT_EXEC, MAP_PRIVATE, -1, 0); }},
        {"a look at itself", [](int) { ::syscall(SYS_getpid); }},
        {"a setting of the process", [](int) { ::syscall(SYS_prctl, PR_SET_DUMPABLE, 1, 0, 0, 0); }},
#if defined(__x86_64__)
        {"the same with 32 bits, by its number",
         [](int) { ::syscall(0x40000000 | SYS_write, STDOUT_FILENO, &byte, 1); }},
#endif
    };
    for (const auto& each : forbidden)
        EXPECT_EQ(confined(each.call), 128 + SIGSYS) << each.what;
}

#if defined(__x86_64__)

namespace {

/// The number that is write's here is exit's there; so is the status what else is the descriptor.
void exitByTheOldWay()
{
    asm volatile("int $0x80" : : "a"(1), "b"(STDOUT_FILENO) : "memory");
}

} // namespace

TEST(Confinement, EndsWhoeverMakesCallsOfAnotherArchitecture)
{
    const pid_t pid = ::fork();
    if (pid == 0) {
        exitByTheOldWay();
        ::_exit(Done);
    }
    int raw = 0;
    ::waitpid(pid, &raw, 0);
    if (!WIFEXITED(raw) || WEXITSTATUS(raw) != STDOUT_FILENO)
        GTEST_SKIP() << "this kernel has no calls of 32 bits";
    EXPECT_EQ(confined([](int) { exitByTheOldWay(); }), 128 + SIGSYS);
}

#endif

TEST(Confinement, OfWhatIsHeardDoesNotRelyOnTheProtocolThatTheSocketIsBoundTo)
{
    const Cable cable;
    const int index = std::stoi(cable.index());
    const lab::Visit visit(cable.host());
    const base::FileDescriptor socket(::socket(AF_PACKET, SOCK_RAW | SOCK_CLOEXEC, 0));
    ASSERT_EQ(hear::hearOnly(socket.get(), index, 40000), nullptr);
    sockaddr_ll address{};
    address.sll_family = AF_PACKET;
    address.sll_protocol = htons(0x0003); // All of them.
    address.sll_ifindex = index;
    ASSERT_EQ(::bind(socket.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    for (const frames::Named& each : frames::unlikeAnswers()) {
        SCOPED_TRACE(each.what);
        cable.send(each.frame);
        cable.send(frames::Answer);
        base::Bytes heard(100);
        pollfd one{socket.get(), POLLIN, 0};
        ASSERT_EQ(::poll(&one, 1, 20000), 1);
        heard.resize(static_cast<std::size_t>(::recv(socket.get(), heard.data(), heard.size(), 0)));
        ASSERT_EQ(heard, frames::Answer);
    }
}

TEST(Confinement, OfWhatIsHeardCannotBeLoosened)
{
    const Cable cable;
    const lab::Visit visit(cable.host());
    const base::FileDescriptor socket(::socket(AF_PACKET, SOCK_RAW | SOCK_CLOEXEC, 0));
    ASSERT_EQ(hear::hearOnly(socket.get(), 1, 40000), nullptr);
    EXPECT_STREQ(hear::hearOnly(socket.get(), 1, 40001), "SO_ATTACH_FILTER");
    EXPECT_EQ(errno, EPERM);
}
