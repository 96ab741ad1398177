// SPDX-License-Identifier: Apache-2.0
#include "sdk/network/Listener.h"

#include "sdk/network/ListenerPath.h"

#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <string>
#include <sys/socket.h>
#include <sys/wait.h>
#include <system_error>
#include <utility>

namespace sdk {

namespace {

/// What the listener ends with when it may not have a packet socket.
constexpr int ExitUnprivileged = 3;

constexpr int MaxStarts = 4;

/// It ends at once when its input does, unless somebody has stopped it.
constexpr std::chrono::milliseconds TimeToEnd(1000);

bool isLackOfRoom(int error)
{
    return error == EMFILE || error == ENFILE || error == ENOMEM || error == ENOBUFS || error == EAGAIN;
}

void require(int error)
{
    if (error != 0)
        throw std::system_error(error, std::generic_category(), "listener");
}

/// How the program is started: with `link` as its standard input and output and nothing else that is open, no
/// environment, and the signals as a shell leaves them. In a process group of its own, so that a Ctrl-C after
/// which this program still has to finish something does not take its ears away.
struct SpawnPlan
{
    SpawnPlan()
    {
        posix_spawn_file_actions_init(&actions);
        posix_spawnattr_init(&attributes);
    }
    SpawnPlan(const SpawnPlan&) = delete;
    SpawnPlan& operator=(const SpawnPlan&) = delete;
    ~SpawnPlan()
    {
        posix_spawn_file_actions_destroy(&actions);
        posix_spawnattr_destroy(&attributes);
    }

    void make(int link)
    {
        require(posix_spawn_file_actions_adddup2(&actions, link, STDIN_FILENO));
        require(posix_spawn_file_actions_adddup2(&actions, link, STDOUT_FILENO));
        require(posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0));
        require(posix_spawn_file_actions_addclosefrom_np(&actions, STDERR_FILENO + 1));
        sigset_t signals;
        sigemptyset(&signals);
        require(posix_spawnattr_setsigmask(&attributes, &signals));
        sigfillset(&signals);
        require(posix_spawnattr_setsigdefault(&attributes, &signals));
        require(posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF |
                                                          POSIX_SPAWN_SETPGROUP));
    }

    posix_spawn_file_actions_t actions{};
    posix_spawnattr_t attributes{};
};

RZ_LISTENER stateAfterFailedStart(int error)
{
    switch (error) {
    case ENOENT:
    case ENOTDIR:
        return RZ_LISTENER_MISSING;
    case EACCES:
        return RZ_LISTENER_FORBIDDEN;
    case EPERM: // The file has a capability that nobody may have here.
        return RZ_LISTENER_UNPRIVILEGED;
    default:
        return RZ_LISTENER_FAILED;
    }
}

/// Of one that ended without having said that it listens.
RZ_LISTENER stateAfterEarlyEnd(int status)
{
    if (WIFEXITED(status) && WEXITSTATUS(status) == 0)
        return RZ_LISTENER_HEARS; // All there is: the adapter has no frames of the kind that cameras send.
    return WIFEXITED(status) && WEXITSTATUS(status) == ExitUnprivileged ? RZ_LISTENER_UNPRIVILEGED
                                                                        : RZ_LISTENER_FAILED;
}

} // namespace

Listener::Listener(unsigned adapterIndex, std::string what)
    : m_adapterIndex(adapterIndex),
      m_what(std::move(what))
{
    start();
}

Listener::~Listener()
{
    finish();
}

void Listener::start()
{
    std::array<int, 2> ends{};
    if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()) != 0)
        require(errno);
    base::FileDescriptor own(ends[0]);
    const base::FileDescriptor others(ends[1]);
    SpawnPlan plan;
    plan.make(others.get());

    std::string program = ListenerPath;
    std::string adapter = std::to_string(m_adapterIndex);
    std::string what = m_what;
    const std::array<char*, 4> arguments{program.data(), adapter.data(), what.data(), nullptr};
    const std::array<char*, 1> environment{nullptr};
    ++m_starts;
    m_state = RZ_LISTENER_FAILED;
    const int error = posix_spawn(&m_process, ListenerPath, &plan.actions, &plan.attributes, arguments.data(),
                                  environment.data());
    if (error == 0) {
        m_link = std::move(own);
        m_packets = RelayedPackets();
        return;
    }
    m_process = -1;
    if (isLackOfRoom(error))
        require(error);
    m_state = stateAfterFailedStart(error);
}

void Listener::end()
{
    if (m_link)
        shutdown(m_link.get(), SHUT_WR);
}

/// Waits until it has ended, and sees to it that it does. Whether it did so of itself, instead of listening.
bool Listener::finish()
{
    if (m_process < 0)
        return false;
    end();
    // When it ends, so does the link. What it still writes is dropped.
    std::array<std::uint8_t, 4096> dropped;
    const auto limit = std::chrono::steady_clock::now() + TimeToEnd;
    bool hasEnded = false;
    while (!hasEnded && std::chrono::steady_clock::now() < limit) {
        pollfd link{m_link.get(), POLLIN, 0};
        if (poll(&link, 1, static_cast<int>(TimeToEnd.count())) > 0)
            hasEnded = recv(m_link.get(), dropped.data(), dropped.size(), MSG_DONTWAIT) == 0;
    }
    if (!hasEnded)
        kill(m_process, SIGKILL);

    int status = 0;
    pid_t reaped = -1;
    do
        reaped = waitpid(m_process, &status, 0);
    while (reaped < 0 && errno == EINTR);
    const bool hasItsOwnReason = reaped > 0 && isStarting() && !WIFSIGNALED(status);
    if (hasItsOwnReason)
        m_state = stateAfterEarlyEnd(status);
    m_process = -1;
    m_link = base::FileDescriptor();
    return hasItsOwnReason;
}

void Listener::read()
{
    std::array<std::uint8_t, 65536> bytes;
    const ssize_t length = recv(m_link.get(), bytes.data(), bytes.size(), MSG_DONTWAIT);
    if (length > 0) {
        m_packets.add({bytes.data(), static_cast<std::size_t>(length)});
        if (isStarting())
            takeFirst();
        return;
    }
    if (length < 0 && (errno == EAGAIN || errno == EINTR))
        return;
    if (finish())
        return;
    m_state = RZ_LISTENER_FAILED;
    try {
        if (m_starts < MaxStarts)
            start();
    } catch (const std::system_error&) { // Then the ordinary socket has to do.
    }
}

/// An empty packet, if it is the listener that writes.
void Listener::takeFirst()
{
    const auto first = m_packets.next();
    if (!first)
        return;
    if (first->empty()) {
        m_state = RZ_LISTENER_HEARS;
        return;
    }
    finish();
    m_state = RZ_LISTENER_FAILED;
    m_packets = RelayedPackets();
}

std::optional<base::ByteView> Listener::nextFrame()
{
    return m_packets.next();
}

} // namespace sdk
