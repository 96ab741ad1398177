// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>
#include <sys/types.h>
#include <vector>

/// Private networks for tests: network namespaces without names, joined by veth pairs and a bridge.
/// Everything is gone with its objects, and with the process however it ends. Failures throw
/// std::runtime_error with the command and what it printed; a host that allows no namespaces makes the test
/// fail that way.
namespace lab {

/// A child process and what it starts; killed and reaped by the destructor. It ends with this process too,
/// unless it changes its user (tcpdump does: give it -Z root).
class Process
{
public:
    Process(const Process&) = delete;
    Process(Process&& other) noexcept;
    Process& operator=(const Process&) = delete;
    ~Process();

    pid_t id() const { return m_pid; }
    /// The next line of its standard output, without the newline; throws when none comes within 20 s.
    std::string readLine();
    /// Waits for its end (at most 60 s, then throws) and gives its exit status, or 128 + the signal's number.
    int wait();

private:
    friend class Namespace;
    Process(pid_t pid, int outputFd);
    /// Takes in what it has printed; false when that was the end of it.
    bool readSome();

    pid_t m_pid;  ///< 0 when it has been reaped.
    int m_output; ///< -1 when it has been read to its end.
    std::string m_unread;
};

/// What a finished command left.
struct Output
{
    int status = 0;
    std::string standardOutput;
    std::string standardError;
};

class Namespace
{
public:
    /// A new network namespace with its loopback interface up.
    Namespace();
    Namespace(const Namespace&) = delete;
    Namespace& operator=(const Namespace&) = delete;
    ~Namespace();

    int fd() const { return m_fd; }
    /// A path that names it to `ip link set ... netns`, valid for children of this process too.
    std::string path() const;

    /// Runs a shell command in it and gives what it printed; throws when its exit status is not 0.
    std::string run(const std::string& command) const;
    /// Runs a program in it to its end (at most 60 s, then throws), whatever its exit status.
    Output execute(const std::vector<std::string>& arguments) const;
    /// Starts a program in it; its standard output is read through the Process, its standard error is the
    /// test's own.
    Process start(const std::vector<std::string>& arguments) const;

private:
    int m_fd;
};

/// The calling thread (and the threads it starts) is in the namespace as long as this lives.
class Visit
{
public:
    explicit Visit(const Namespace& where);
    Visit(const Visit&) = delete;
    Visit& operator=(const Visit&) = delete;
    ~Visit();

private:
    int m_home;
};

/// Joins two namespaces by a veth pair, both ends up, without addresses.
void connect(const Namespace& a, const std::string& interfaceA, const Namespace& b,
             const std::string& interfaceB);

/// An Ethernet switch (a bridge in a namespace of its own).
class Switch
{
public:
    Switch();

    /// Gives `host` an interface on this switch, up; with an address when one is given ("192.168.1.5/24").
    void attach(const Namespace& host, const std::string& interface, const std::string& address = {});
    /// From now on each frame that crosses the switch is lost with this probability.
    void loseFrames(int percent);

    const Namespace& space() const { return m_space; }

private:
    Namespace m_space;
    int m_ports = 0;
};

/// A camera farm on a switch, in a namespace of its own.
class Farm
{
public:
    /// `json` as camera-farm reads it; returns when its cameras are on the network.
    Farm(Switch& network, const std::string& json);
    Farm(const Farm&) = delete;
    Farm& operator=(const Farm&) = delete;
    ~Farm();

    /// Sends a command to the control socket; throws when the farm refuses it.
    std::string control(const std::string& command) const;

    const Namespace& space() const { return m_space; }

private:
    Namespace m_space;
    std::string m_directory; ///< Holds its configuration and its control socket.
    std::optional<Process> m_process;
};

} // namespace lab
