// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "gvcp/Packet.h"

#include <array>
#include <optional>
#include <string_view>

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

/// In the enumerators' order; also the spelling in configuration files and commands.
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

} // namespace simulator
