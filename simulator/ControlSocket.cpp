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

class Socket
{
public:
    explicit Socket(Blocking blocking)
        : m_fd(::socket(AF_UNIX,
                        SOCK_SEQPACKET | SOCK_CLOEXEC | (blocking == Blocking::No ? SOCK_NONBLOCK : 0), 0))
    {
        if (m_fd < 0)
            throwErrno("cannot make a control socket");
    }
    Socket(const Socket&) = delete;
    Socket& operator=(const Socket&) = delete;
    ~Socket()
    {
        if (m_fd >= 0)
            ::close(m_fd);
    }

    int fd() const { return m_fd; }
    int release() { return std::exchange(m_fd, -1); }
    bool connectTo(const sockaddr_un& address) const
    {
        return ::connect(m_fd, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
    }

private:
    int m_fd;
};

/// The folder that a socket lies in, held against other farms: none of them looks for a stale socket there,
/// removes one or makes its own meanwhile.
class HeldFolder
{
public:
    explicit HeldFolder(const std::string& path)
        : m_fd(::open(std::filesystem::path(path).parent_path().append(".").c_str(),
                      O_RDONLY | O_DIRECTORY | O_CLOEXEC))
    {
        if (m_fd < 0)
            throwErrno("cannot listen on " + path);
        while (::flock(m_fd, LOCK_EX) != 0) {
            if (errno != EINTR)
                throwErrno("cannot lock the folder of " + path);
        }
    }
    HeldFolder(const HeldFolder&) = delete;
    HeldFolder& operator=(const HeldFolder&) = delete;
    ~HeldFolder() { ::close(m_fd); }

private:
    int m_fd;
};

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
    const Socket probe(Blocking::No);
    // A queue that is full is somebody's too.
    if (probe.connectTo(address) || errno == EAGAIN)
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
    const HeldFolder folder(m_path);
    removeStaleSocket(m_path, address);
    Socket listener(Blocking::No);
    if (::bind(listener.fd(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0 ||
        ::listen(listener.fd(), SOMAXCONN) != 0)
        throwErrno("cannot listen on " + m_path);
    if (const auto made = lookAt(m_path))
        m_file = {made->st_dev, made->st_ino};
    m_listener = listener.release();
}

ControlSocket::~ControlSocket()
{
    for (const int client : m_clients)
        ::close(client);
    // Somebody else's file may lie there by now. Ours keeps its number for as long as the listener is open.
    struct stat found = {};
    if (::lstat(m_path.c_str(), &found) == 0 && std::pair(found.st_dev, found.st_ino) == m_file)
        ::unlink(m_path.c_str());
    ::close(m_listener);
}

std::vector<int> ControlSocket::descriptors() const
{
    std::vector<int> all = m_clients;
    all.push_back(m_listener);
    return all;
}

void ControlSocket::serve()
{
    for (int client = 0; client >= 0;) {
        client = ::accept4(m_listener, nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK);
        if (client >= 0)
            m_clients.push_back(client);
    }
    std::erase_if(m_clients, [this](int client) {
        const bool isDone = !serveClient(client);
        if (isDone)
            ::close(client);
        return isDone;
    });
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
    const Socket socket(Blocking::Yes);
    if (!socket.connectTo(addressOf(path)))
        throwErrno("no farm can be reached at " + path);
    const timeval patience{10, 0};
    ::setsockopt(socket.fd(), SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof patience);
    if (::send(socket.fd(), command.data(), command.size(), MSG_NOSIGNAL) < 0)
        throwErrno("cannot send to the farm");
    std::string message(MaxMessage, '\0');
    const ssize_t size = ::recv(socket.fd(), message.data(), message.size(), 0);
    if (size < 0)
        throwErrno("no answer from the farm");
    if (size == 0)
        throw std::runtime_error("the farm ended without an answer");
    return {message[0] == Accepted, message.substr(1, static_cast<std::size_t>(size) - 1)};
}

} // namespace simulator
