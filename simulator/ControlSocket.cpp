// SPDX-License-Identifier: Apache-2.0
#include "simulator/ControlSocket.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <optional>
#include <stdexcept>
#include <sys/file.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace simulator {

namespace {

constexpr std::size_t MaxMessage = 64 << 10;
// An answer's first character says how the command went.
constexpr char Accepted = '+';
constexpr char Refused = '-';

[[noreturn]] void throwErrno(const std::string& what)
{
    throw std::system_error(errno, std::generic_category(), what);
}

sockaddr_un addressOf(const std::string& path)
{
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (path.empty() || path.size() >= sizeof address.sun_path)
        throw std::runtime_error("the control socket's path must have 1 to " +
                                 std::to_string(sizeof address.sun_path - 1) + " bytes: " + path);
    std::copy(path.begin(), path.end(), address.sun_path);
    return address;
}

enum class Blocking
{
    No,
    Yes
};

base::FileDescriptor makeSocket(Blocking blocking)
{
    base::FileDescriptor fd(
        ::socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC | (blocking == Blocking::No ? SOCK_NONBLOCK : 0), 0));
    if (!fd)
        throwErrno("cannot make a control socket");
    return fd;
}

bool connectTo(const sockaddr_un& address, const base::FileDescriptor& socket)
{
    return ::connect(socket.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
}

/// The folder that a socket lies in, held against other farms for as long as it is open: none of them looks
/// for a stale socket there, removes one or makes its own meanwhile.
base::FileDescriptor holdFolderOf(const std::string& path)
{
    const std::filesystem::path folder = std::filesystem::path(path).parent_path().append(".");
    base::FileDescriptor fd(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!fd)
        throwErrno("cannot listen on " + path);
    while (::flock(fd.get(), LOCK_EX) != 0) {
        if (errno != EINTR)
            throwErrno("cannot lock the folder of " + path);
    }
    return fd;
}

/// What lies at the path itself, a link being a link; nothing when nothing does.
std::optional<struct stat> lookAt(const std::string& path)
{
    struct stat found = {};
    if (::lstat(path.c_str(), &found) == 0)
        return found;
    if (errno != ENOENT)
        throwErrno("cannot listen on " + path);
    return std::nullopt;
}

/// Removes a socket that nobody listens on, and nothing else.
void removeStaleSocket(const std::string& path, const sockaddr_un& address)
{
    const auto found = lookAt(path);
    if (!found)
        return;
    if (!S_ISSOCK(found->st_mode))
        throw std::runtime_error("cannot listen on " + path +
                                 ": it is there and is not a socket; name another file, or remove it");
    const base::FileDescriptor probe = makeSocket(Blocking::No);
    // Where the queue of those who wait is full, somebody listens too.
    if (connectTo(address, probe) || errno == EAGAIN)
        throw std::runtime_error("another farm is listening on " + path);
    if (errno == EPROTOTYPE)
        throw std::runtime_error("another program is listening on " + path);
    if (errno != ECONNREFUSED || ::unlink(path.c_str()) != 0)
        throwErrno("cannot listen on " + path);
}

} // namespace

ControlSocket::ControlSocket(std::string path, Handler handler)
    : m_path(std::move(path)),
      m_handler(std::move(handler))
{
    const sockaddr_un address = addressOf(m_path);
    const base::FileDescriptor folder = holdFolderOf(m_path);
    removeStaleSocket(m_path, address);
    m_listener = makeSocket(Blocking::No);
    if (::bind(m_listener.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0 ||
        ::listen(m_listener.get(), SOMAXCONN) != 0)
        throwErrno("cannot listen on " + m_path);
    if (const auto made = lookAt(m_path))
        m_file = {made->st_dev, made->st_ino};
}

ControlSocket::~ControlSocket()
{
    // Somebody else's file may lie there by now. Ours keeps its number for as long as the listener is open.
    struct stat found = {};
    if (::lstat(m_path.c_str(), &found) == 0 && std::pair(found.st_dev, found.st_ino) == m_file)
        ::unlink(m_path.c_str());
}

std::vector<int> ControlSocket::descriptors() const
{
    std::vector<int> all{m_listener.get()};
    for (const base::FileDescriptor& client : m_clients)
        all.push_back(client.get());
    return all;
}

void ControlSocket::serve()
{
    const auto accept = [this] {
        return base::FileDescriptor(
            ::accept4(m_listener.get(), nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK));
    };
    for (base::FileDescriptor client = accept(); client; client = accept())
        m_clients.push_back(std::move(client));
    std::erase_if(m_clients,
                  [this](const base::FileDescriptor& client) { return !serveClient(client.get()); });
}

bool ControlSocket::serveClient(int client) const
{
    std::string command(MaxMessage, '\0');
    const ssize_t size = ::recv(client, command.data(), command.size(), 0);
    if (size < 0 && (errno == EAGAIN || errno == EINTR))
        return true;
    if (size > 0) {
        command.resize(static_cast<std::size_t>(size));
        const Answer answer = m_handler(command);
        const std::string message = (answer.accepted ? Accepted : Refused) + answer.text;
        // A client that has gone does not get it.
        [[maybe_unused]] const ssize_t sent = ::send(client, message.data(), message.size(), MSG_NOSIGNAL);
    }
    return false;
}

ControlSocket::Answer ControlSocket::request(const std::string& path, const std::string& command)
{
    const base::FileDescriptor socket = makeSocket(Blocking::Yes);
    if (!connectTo(addressOf(path), socket))
        throwErrno("no farm can be reached at " + path);
    const timeval patience{10, 0};
    ::setsockopt(socket.get(), SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof patience);
    if (::send(socket.get(), command.data(), command.size(), MSG_NOSIGNAL) < 0)
        throwErrno("cannot send to the farm");
    std::string message(MaxMessage, '\0');
    const ssize_t size = ::recv(socket.get(), message.data(), message.size(), 0);
    if (size < 0)
        throwErrno("no answer from the farm");
    if (size == 0)
        throw std::runtime_error("the farm ended without an answer");
    return {message[0] == Accepted, message.substr(1, static_cast<std::size_t>(size) - 1)};
}

} // namespace simulator
