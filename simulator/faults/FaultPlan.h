// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "gvcp/Packet.h"

#include <array>
#include <chrono>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace simulator {

/// What a camera can be asked on the wire, as counters and faults tell it apart.
enum class Request
{
    Discovery,
    ForceIp,
    ReadRegister,
    WriteRegister,
    ReadMemory,
    WriteMemory,
    Arp,
    Ping
};

/// What configuration files and commands call them, in the enumerators' order.
inline constexpr std::array<std::string_view, 8> RequestNames{"DISCOVERY", "FORCEIP",  "READREG", "WRITEREG",
                                                              "READMEM",   "WRITEMEM", "ARP",     "PING"};

/// Nothing for a command that no camera of this farm implements.
constexpr std::optional<Request> requestOf(gvcp::Command command)
{
    switch (command) {
    case gvcp::Command::Discovery:
        return Request::Discovery;
    case gvcp::Command::ForceIp:
        return Request::ForceIp;
    case gvcp::Command::ReadRegister:
        return Request::ReadRegister;
    case gvcp::Command::WriteRegister:
        return Request::WriteRegister;
    case gvcp::Command::ReadMemory:
        return Request::ReadMemory;
    case gvcp::Command::WriteMemory:
        return Request::WriteMemory;
    }
    return std::nullopt;
}

/// What becomes of a request that a fault meets.
enum class FaultAction
{
    Drop,         ///< It is ignored.
    Mute,         ///< It is carried out and not acknowledged.
    Delay,        ///< It is carried out after the fault's time.
    Pending,      ///< Likewise, and PENDING_ACK says so at once, where it is switched on.
    Busy,         ///< It is refused with this status.
    BadAlignment, ///< Likewise.
    Twice,        ///< It is carried out, and acknowledged twice.
    Seize,        ///< It is carried out, and then an application elsewhere takes control.
    Hold,         ///< Such an application takes control, and then it is carried out as that allows.
    Reset,        ///< It is ignored, and the camera is switched off and on.
    Vanish        ///< It is ignored, and the camera has lost its cable.
};

/// What configuration files and commands call them, in the enumerators' order.
inline constexpr std::array<std::string_view, 11> FaultActionNames{
    "drop", "mute", "delay", "pending", "busy", "badAlignment", "twice", "seize", "hold", "reset", "vanish"};

/// The longest time that a PENDING_ACK can announce.
inline constexpr std::chrono::milliseconds MaxFaultTime{65535};

/// Which requests go wrong, and how.
struct Fault
{
    std::optional<Request> request{}; ///< Nothing stands for every command of the control protocol.
    /// Only without a request: every one but DISCOVERY, from the first on that is to change the camera.
    bool isOfChange = false;
    FaultAction action = FaultAction::Drop;
    std::optional<unsigned> times{};   ///< Until further notice without a number; Hold, Reset, Vanish once.
    unsigned after = 0;                ///< So many of the requests that it concerns pass unharmed;
    unsigned every = 1;                ///< of those that follow 1 hits all, 2 every second.
    std::chrono::milliseconds time{0}; ///< For Delay and Pending.
};

/// Each way to say which requests a fault concerns: what configuration files and commands call it, and a
/// fault that concerns these and is else as by default.
const std::vector<std::pair<const char*, Fault>>& faultsByName();

/// Why there can be no such fault; nothing when there can.
std::optional<std::string> whyImpossible(const Fault& fault);

/// Which requests to a camera are going to go wrong.
class FaultPlan
{
public:
    /// Of several that hit the same request the earlier one counts.
    void add(Fault fault);
    void clear() { m_entries.clear(); }
    /// The fault that hits the request which has just come in; uses it up.
    std::optional<Fault> hit(Request request);

private:
    struct Entry
    {
        Fault fault;
        unsigned seen = 0; ///< Requests that it concerns.
    };

    static bool concerns(const Entry& entry, Request request);
    static bool isDue(const Entry& entry);

    std::vector<Entry> m_entries;
};

} // namespace simulator
