// SPDX-License-Identifier: Apache-2.0
#include "tests/support/NetworkLab.h"

#include "simulator/ControlSocket.h"
#include "tests/support/ChildLauncher.h"

#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstring>
#include <exception>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <poll.h>
#include <sched.h>
#include <stdexcept>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace lab {

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::seconds LinePatience{20};
constexpr std::chrono::seconds EndPatience{60};

std::string joined(const std::vector<std::string>& words)
{
    std::string text;
    for (const std::string& word : words)
        text += text.empty() ? word : ' ' + word;
    return text;
}

[[noreturn]] void throwErrno(const std::string& what)
{
    throw std::runtime_error(what + ": " + std::strerror(errno));
}

int openOwnNamespace()
{
    const int fd = ::open("/proc/thread-self/ns/net", O_RDONLY | O_CLOEXEC);
    if (fd < 0)
        throwErrno("cannot open the thread's network namespace");
    return fd;
}

int waitStatus(int raw)
{
    return WIFEXITED(raw) ? WEXITSTATUS(raw) : 128 + WTERMSIG(raw);
}

/// Waits until one of the descriptors (-1 for none) has something, or its end, to read; throws after the
/// deadline.
void pollUntil(std::vector<pollfd>& fds, Clock::time_point deadline, const char* what)
{
    for (pollfd& each : fds)
        each.events = POLLIN;
    for (;;) {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now());
        if (left.count() <= 0)
            throw std::runtime_error(std::string(what) + " took too long");
        const int ready = ::poll(fds.data(), fds.size(), static_cast<int>(left.count()));
        if (ready > 0)
            return;
        if (ready < 0 && errno != EINTR)
            throwErrno("poll");
    }
}

/// Appends what can be read now; false at the end of the stream.
bool append(int fd, std::string& text)
{
    char chunk[16384];
    const ssize_t size = ::read(fd, chunk, sizeof chunk);
    if (size <= 0)
        return size < 0 && errno == EINTR;
    text.append(chunk, static_cast<std::size_t>(size));
    return true;
}

std::string makeDirectory()
{
    std::string path = std::filesystem::temp_directory_path() / "camera-farm-XXXXXX";
    if (!::mkdtemp(path.data()))
        throwErrno("cannot make the directory " + path);
    return path;
}

} // namespace

Process::Process(pid_t pid, int outputFd) : m_pid(pid), m_output(outputFd) {}

Process::Process(Process&& other) noexcept
    : m_pid(std::exchange(other.m_pid, 0)),
      m_output(std::exchange(other.m_output, -1)),
      m_unread(std::move(other.m_unread))
{}

Process::~Process()
{
    if (m_pid > 0) {
        ::kill(-m_pid, SIGKILL);
        ::waitpid(m_pid, nullptr, 0);
    }
    if (m_output >= 0)
        ::close(m_output);
}

bool Process::readSome()
{
    if (append(m_output, m_unread))
        return true;
    ::close(std::exchange(m_output, -1));
    return false;
}

std::string Process::readLine()
{
    const auto deadline = Clock::now() + LinePatience;
    std::size_t end = 0;
    while ((end = m_unread.find('\n')) == std::string::npos) {
        std::vector<pollfd> fds{{m_output, 0, 0}};
        if (m_output >= 0)
            pollUntil(fds, deadline, "a line of output");
        if (m_output < 0 || !readSome())
            throw std::runtime_error("the program ended its output without another line: " + m_unread);
    }
    std::string line = m_unread.substr(0, end);
    m_unread.erase(0, end + 1);
    return line;
}

int Process::wait()
{
    if (m_pid <= 0)
        throw std::runtime_error("the program's end was already waited for");
    const int handle = openProcess(m_pid);
    const auto deadline = Clock::now() + EndPatience;
    // Its output is taken in meanwhile: a program whose pipe is full does not end.
    for (bool ended = false; !ended;) {
        std::vector<pollfd> fds{{handle, 0, 0}, {m_output, 0, 0}};
        try {
            pollUntil(fds, deadline, "a program's end");
        } catch (...) {
            ::close(handle);
            throw;
        }
        ended = fds[0].revents != 0;
        if (fds[1].revents != 0)
            readSome();
    }
    ::close(handle);
    int raw = 0;
    ::waitpid(std::exchange(m_pid, 0), &raw, 0);
    return waitStatus(raw);
}

Namespace::Namespace()
{
    const int home = openOwnNamespace();
    if (::unshare(CLONE_NEWNET) != 0) {
        ::close(home);
        throwErrno("cannot make a network namespace");
    }
    m_fd = ::open("/proc/thread-self/ns/net", O_RDONLY | O_CLOEXEC);
    const bool back = ::setns(home, CLONE_NEWNET) == 0;
    ::close(home);
    if (m_fd < 0 || !back)
        throwErrno("cannot hold the new network namespace");
    // A new namespace copies settings of the machine's own; tests begin with none. IPv6 would only add noise.
    run("ip link set lo up\n"
        "cd /proc/sys/net\n"
        "for each in all default; do\n"
        "    echo 0 > ipv4/conf/$each/rp_filter\n"
        "    if [ -e ipv6/conf/$each ]; then echo 1 > ipv6/conf/$each/disable_ipv6; fi\n"
        "done");
}

Namespace::~Namespace()
{
    ::close(m_fd);
}

std::string Namespace::path() const
{
    return "/proc/" + std::to_string(::getpid()) + "/fd/" + std::to_string(m_fd);
}

std::string Namespace::run(const std::string& command) const
{
    Output output = execute({"sh", "-ec", command});
    if (output.status != 0)
        throw std::runtime_error(command + "\nfailed with status " + std::to_string(output.status) + ":\n" +
                                 output.standardOutput + output.standardError);
    return output.standardOutput;
}

Output Namespace::execute(const std::vector<std::string>& arguments) const
{
    const Child child = launchChild(m_fd, arguments, CaptureErrors::Yes);
    // The process object kills what is left of it when something below throws.
    Process process(child.pid, child.output);
    Output result;
    std::string* const texts[] = {&result.standardOutput, &result.standardError};
    std::vector<pollfd> fds{{::dup(child.output), 0, 0}, {child.errors, 0, 0}};
    const auto closeAll = [&fds] {
        for (pollfd& each : fds)
            if (each.fd >= 0)
                ::close(std::exchange(each.fd, -1));
    };
    const auto deadline = Clock::now() + EndPatience;
    try {
        while (fds[0].fd >= 0 || fds[1].fd >= 0) {
            pollUntil(fds, deadline, joined(arguments).c_str());
            for (std::size_t i = 0; i < std::size(texts); ++i)
                if (fds[i].fd >= 0 && fds[i].revents != 0 && !append(fds[i].fd, *texts[i]))
                    ::close(std::exchange(fds[i].fd, -1));
        }
        result.status = process.wait();
    } catch (...) {
        closeAll();
        throw;
    }
    return result;
}

Process Namespace::start(const std::vector<std::string>& arguments) const
{
    const Child child = launchChild(m_fd, arguments, CaptureErrors::No);
    return Process(child.pid, child.output);
}

Visit::Visit(const Namespace& where) : m_home(openOwnNamespace())
{
    if (::setns(where.fd(), CLONE_NEWNET) != 0) {
        ::close(m_home);
        throwErrno("cannot enter a network namespace");
    }
}

Visit::~Visit()
{
    // A thread that stayed away would do its further work in the wrong network.
    if (::setns(m_home, CLONE_NEWNET) != 0)
        std::terminate();
    ::close(m_home);
}

void connect(const Namespace& a, const std::string& interfaceA, const Namespace& b,
             const std::string& interfaceB)
{
    a.run("ip link add name " + interfaceA + " type veth peer name " + interfaceB + " netns " + b.path() +
          "\n" + "ip link set " + interfaceA + " up");
    b.run("ip link set " + interfaceB + " up");
}

Switch::Switch()
{
    m_space.run("ip link add name switch type bridge stp_state 0 forward_delay 0 mcast_snooping 0\n"
                "ip link set switch up");
}

void Switch::attach(const Namespace& host, const std::string& interface, const std::string& address)
{
    const std::string port = "port" + std::to_string(m_ports++);
    connect(m_space, port, host, interface);
    m_space.run("ip link set " + port + " master switch");
    if (!address.empty())
        host.run("ip address add " + address + " brd + dev " + interface);
}

void Switch::loseFrames(int percent)
{
    // Adding the table first makes deleting it succeed, so that a second call replaces the first one's rule.
    m_space.run("nft 'add table bridge lab\n"
                "delete table bridge lab\n"
                "add table bridge lab\n"
                "add chain bridge lab crossing { type filter hook forward priority 0; }\n"
                "add rule bridge lab crossing numgen random mod 100 < " +
                std::to_string(percent) + " drop'");
}

Farm::Farm(Switch& network, const std::string& json) : m_directory(makeDirectory())
{
    try {
        network.attach(m_space, "farm0");
        std::ofstream(m_directory + "/farm.json") << json;
        m_process.emplace(m_space.start({CAMERA_FARM, "--interface", "farm0", "--config",
                                         m_directory + "/farm.json", "--control", m_directory + "/control"}));
        m_process->readLine();
    } catch (...) {
        std::error_code ignored;
        std::filesystem::remove_all(m_directory, ignored);
        throw;
    }
}

Farm::~Farm()
{
    m_process.reset();
    std::error_code ignored;
    std::filesystem::remove_all(m_directory, ignored);
}

std::string Farm::control(const std::string& command) const
{
    // In this process: a program for each of a test's hundreds of commands would take longer than its cameras
    // do.
    const auto answer = simulator::ControlSocket::request(m_directory + "/control", command);
    if (!answer.accepted)
        throw std::runtime_error(command + ": " + answer.text);
    return answer.text;
}

} // namespace lab
