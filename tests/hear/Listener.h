// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "base/Bytes.h"
#include "base/FileDescriptor.h"
#include "tests/support/NetworkLab.h"

#include <string>
#include <vector>

/// A host with an adapter "eth0", 02:00:00:00:00:05, whose cable leads to another machine's adapter of that
/// name.
class Cable
{
public:
    Cable();

    const lab::Namespace& host() const { return m_host; }
    /// The number of one of the host's adapters.
    std::string index(const std::string& adapter = "eth0") const;
    /// Has it carry IP packets of 65535 bytes.
    void allowLongFrames() const;
    /// Gives the host's adapter one more, eth0.7 of VLAN 7; false where the kernel has no VLANs.
    bool addVlan() const;
    /// Puts a frame on the cable, from the other machine; from the host itself.
    void send(const base::Bytes& frame) const;
    void sendFromHost(const base::Bytes& frame) const;

private:
    lab::Namespace m_host;
    lab::Namespace m_other;
    base::FileDescriptor m_otherEnd;
    base::FileDescriptor m_hostEnd;
};

/// The listener's process, or what starts it; the test has the other ends of its three pipes. It is killed
/// with its object. What takes longer than 20 s throws.
class Listener
{
public:
    Listener(const lab::Namespace& host, const std::vector<std::string>& command);
    /// The program itself with these arguments.
    static Listener started(const lab::Namespace& host, std::vector<std::string> arguments);
    /// The same, when it has said that it listens.
    static Listener listening(const Cable& cable, const std::string& what = "40000",
                              const std::string& adapter = "eth0");
    Listener(const Listener&) = delete;
    Listener(Listener&& other) noexcept;
    Listener& operator=(const Listener&) = delete;
    ~Listener();

    pid_t id() const { return m_pid; }
    /// The next packet that it writes; throws at the end of its output.
    base::Bytes read();
    /// What else is in its output, up to the end; and in what it complains in.
    std::string rest() { return readToEnd(m_output); }
    std::string complaints() { return readToEnd(m_errors); }

    void endInput() { m_input = base::FileDescriptor(); }
    void write(const std::string& text);
    void leaveOutput() { m_output = base::FileDescriptor(); }
    /// Waits for its end and gives its exit status, or 128 + the signal's number.
    int wait();

    /// A line of /proc/PID/status, without its name.
    std::string status(const std::string& name) const;
    /// Whether it waits for something to happen; one that does not stop working never does.
    bool sleeps() const { return status("State").starts_with("S"); }

private:
    void take(std::uint8_t* to, std::size_t size);
    static std::string readToEnd(const base::FileDescriptor& from);

    base::FileDescriptor m_input;
    base::FileDescriptor m_output;
    base::FileDescriptor m_errors;
    pid_t m_pid = 0; ///< 0 when it has been reaped.
};
