// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "base/IpSettings.h"
#include "base/MacAddress.h"

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

struct RZ_CC_DEVICE_INFO;

namespace inventory {

enum class Status
{
    Free,
    InUse,      ///< By another application; or the camera does not say.
    Unreachable ///< Outside the subnet of the adapter that heard it.
};

/// As the user chooses it: the first of them that is switched on.
enum class IpMethod
{
    Static,
    Dhcp,
    LinkLocal
};

/// How an application holds a camera.
enum class Privilege
{
    None,
    Control,  ///< Others may read.
    Exclusive ///< Others may not even read.
};

struct Endpoint
{
    base::Ipv4 address;
    std::uint16_t port = 0;

    bool operator==(const Endpoint&) const = default;
};

/// How one camera was heard on one adapter, during one look.
struct Hearing
{
    bool bySocket = false;    ///< As any program hears.
    bool byListener = false;  ///< Below the kernel's filters.
    bool byUnicast = false;   ///< It sent answers to this computer,
    bool byBroadcast = false; ///< or to all.
    unsigned searches = 0;    ///< How often cameras were asked to say who they are.
    unsigned answers = 0;     ///< To how many of those it answered.
    /// To it alone, of one datagram each: where Look::Plan::countsLosses, and it is in reach.
    unsigned questions = 0;
    unsigned replies = 0; ///< How many of them it answered.
};

/// What became of the questions for a camera's registers.
enum class Registers
{
    NotAsked, ///< It is out of reach.
    Silent,
    Refused, ///< An application holds it exclusively: it tells nothing else.
    Told,
    OthersTold ///< Another camera answers at its address.
};

/// Who else has a camera's address.
struct Conflict
{
    enum class With
    {
        Camera,
        Machine,
        ThisComputer
    };
    With with = With::Camera;
    base::MacAddress mac; ///< Of the other one; unspecified for this computer.

    bool operator==(const Conflict&) const = default;
};

/// A camera as one adapter heard it. What an optional register would say is given when the camera says that
/// it has that register; the texts are UTF-8, and hostile.
struct Camera
{
    /// The SDK's, valid as long as the process runs. What else stands here is newer, maybe.
    RZ_CC_DEVICE_INFO* record = nullptr;

    base::MacAddress mac;
    std::string vendor;
    std::string model;
    std::string version;
    std::string serial;
    std::string userName;
    base::IpSettings ip;
    IpMethod method = IpMethod::LinkLocal;
    unsigned adapterIndex = 0;
    std::string adapterName;
    base::Ipv4 adapterAddress; ///< The adapter's in the camera's subnet, else its first; 0.0.0.0 for none.

    Status status = Status::Unreachable;
    Hearing hearing;
    Registers registers = Registers::NotAsked;
    std::optional<Privilege> privilege;
    std::optional<Endpoint> holder; ///< The application in control; when the camera is free, none.
    std::optional<std::chrono::milliseconds> heartbeatTimeout;
    std::optional<bool> isHeartbeatOff;     ///< Then a holder that dies keeps the camera until power is cut.
    std::optional<unsigned> linkSpeed;      ///< Mbit/s.
    std::optional<base::IpSettings> stored; ///< What it starts with next time, if it is static.
    bool canBeStatic = true; ///< It can store an address; so it is taken when it does not say what it can.
    bool canUseDhcp = true;
    std::optional<Endpoint> stream;  ///< Where its images go; 0.0.0.0 for nowhere.
    std::vector<Conflict> conflicts; ///< Each only once.
};

} // namespace inventory
