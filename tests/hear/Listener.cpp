// SPDX-License-Identifier: Apache-2.0
#include "tests/hear/Listener.h"

#include "tests/support/ChildLauncher.h"

#include <cerrno>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <fstream>
#include <net/if.h>
#include <netpacket/packet.h>
#include <poll.h>
#include <stdexcept>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

namespace {

constexpr int PatienceInMilliseconds = 20000;

[[noreturn]] void throwErrno(const std::string& what)
{
    throw std::runtime_error(what + ": " + std::strerror(errno));
}

struct Pipe
{
    Pipe()
    {
        int ends[2]{};
        if (::pipe2(ends, O_CLOEXEC) != 0)
            throwErrno("pipe");
        out = base::FileDescriptor(ends[0]);
        in = base::FileDescriptor(ends[1]);
    }

    base::FileDescriptor out;
    base::FileDescriptor in;
};

/// Waits until there is something, or the end, to read.
void awaitReadable(int fd)
{
    pollfd one{fd, POLLIN, 0};
    if (::poll(&one, 1, PatienceInMilliseconds) != 1)
        throw std::runtime_error("the listener took too long");
}

/// A socket that sends whole frames on the namespace's eth0, and gets none.
base::FileDescriptor openEnd(const lab::Namespace& where)
{
    const lab::Visit visit(where);
    base::FileDescriptor fd(::socket(AF_PACKET, SOCK_RAW | SOCK_CLOEXEC, 0));
    sockaddr_ll address{};
    address.sll_family = AF_PACKET;
    address.sll_ifindex = static_cast<int>(::if_nametoindex("eth0"));
    if (::bind(fd.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0)
        throwErrno("cannot open an end of the cable");
    return fd;
}

void sendFrame(const base::FileDescriptor& end, const base::Bytes& frame)
{
    if (::send(end.get(), frame.data(), frame.size(), 0) != static_cast<ssize_t>(frame.size()))
        throwErrno("cannot send a frame");
}

} // namespace

Cable::Cable()
{
    lab::connect(m_host, "eth0", m_other, "eth0");
    m_host.run("ip link set eth0 address 02:00:00:00:00:05");
    m_otherEnd = openEnd(m_other);
    m_hostEnd = openEnd(m_host);
}

std::string Cable::index(const std::string& adapter) const
{
    const lab::Visit visit(m_host);
    return std::to_string(::if_nametoindex(adapter.c_str()));
}

void Cable::allowLongFrames() const
{
    for (const lab::Namespace* const each : {&m_host, &m_other})
        each->run("ip link set eth0 mtu 65535");
}

bool Cable::addVlan() const
{
    const lab::Output added =
        m_host.execute({"ip", "link", "add", "link", "eth0", "name", "eth0.7", "type", "vlan", "id", "7"});
    if (added.standardError.find("Unknown device type") != std::string::npos)
        return false;
    m_host.run("ip link set eth0.7 up");
    return true;
}

void Cable::send(const base::Bytes& frame) const
{
    sendFrame(m_otherEnd, frame);
}

void Cable::sendFromHost(const base::Bytes& frame) const
{
    sendFrame(m_hostEnd, frame);
}

Listener::Listener(const lab::Namespace& host, const std::vector<std::string>& command)
{
    Pipe input;
    Pipe output;
    Pipe errors;
    std::vector<char*> arguments;
    for (const std::string& each : command)
        arguments.push_back(const_cast<char*>(each.c_str()));
    arguments.push_back(nullptr);

    const pid_t parent = ::getpid();
    const lab::Visit visit(host);
    m_pid = ::fork();
    if (m_pid < 0)
        throwErrno("fork");
    if (m_pid == 0) {
        ::prctl(PR_SET_PDEATHSIG, SIGKILL);
        if (::getppid() == parent && ::dup2(input.out.get(), STDIN_FILENO) >= 0 &&
            ::dup2(output.in.get(), STDOUT_FILENO) >= 0 && ::dup2(errors.in.get(), STDERR_FILENO) >= 0)
            ::execvp(arguments[0], arguments.data());
        ::_exit(127);
    }
    m_input = std::move(input.in);
    m_output = std::move(output.out);
    m_errors = std::move(errors.out);
}

Listener Listener::started(const lab::Namespace& host, std::vector<std::string> arguments)
{
    arguments.insert(arguments.begin(), LISTENER);
    return Listener(host, arguments);
}

Listener Listener::listening(const Cable& cable, const std::string& what, const std::string& adapter)
{
    Listener listener = started(cable.host(), {cable.index(adapter), what});
    if (!listener.read().empty())
        throw std::runtime_error("the listener relays before it says that it listens");
    return listener;
}

Listener::Listener(Listener&& other) noexcept
    : m_input(std::move(other.m_input)),
      m_output(std::move(other.m_output)),
      m_errors(std::move(other.m_errors)),
      m_pid(std::exchange(other.m_pid, 0))
{}

Listener::~Listener()
{
    if (m_pid > 0) {
        ::kill(m_pid, SIGKILL);
        ::waitpid(m_pid, nullptr, 0);
    }
}

base::Bytes Listener::read()
{
    std::uint8_t size[2];
    take(size, sizeof size);
    base::Bytes packet(base::readU16(size, 0));
    take(packet.data(), packet.size());
    return packet;
}

void Listener::take(std::uint8_t* to, std::size_t size)
{
    while (size > 0) {
        awaitReadable(m_output.get());
        const ssize_t count = ::read(m_output.get(), to, size);
        if (count <= 0)
            throw std::runtime_error("the listener ended its output: " + complaints());
        to += count;
        size -= static_cast<std::size_t>(count);
    }
}

std::string Listener::readToEnd(const base::FileDescriptor& from)
{
    std::string text;
    for (;;) {
        awaitReadable(from.get());
        char chunk[4096];
        const ssize_t count = ::read(from.get(), chunk, sizeof chunk);
        if (count <= 0)
            return text;
        text.append(chunk, static_cast<std::size_t>(count));
    }
}

void Listener::write(const std::string& text)
{
    if (::write(m_input.get(), text.data(), text.size()) != static_cast<ssize_t>(text.size()))
        throwErrno("cannot write to the listener");
}

int Listener::wait()
{
    const base::FileDescriptor handle(lab::openProcess(m_pid));
    awaitReadable(handle.get());
    int raw = 0;
    ::waitpid(std::exchange(m_pid, 0), &raw, 0);
    return WIFEXITED(raw) ? WEXITSTATUS(raw) : 128 + WTERMSIG(raw);
}

std::string Listener::status(const std::string& name) const
{
    std::ifstream file("/proc/" + std::to_string(m_pid) + "/status");
    for (std::string line; std::getline(file, line);)
        if (line.starts_with(name + ":\t"))
            return line.substr(name.size() + 2);
    throw std::runtime_error("the listener's state has no " + name);
}
