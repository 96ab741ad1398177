// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "base/Bytes.h"
#include "base/IpSettings.h"
#include "gvcp/Registers.h"
#include "simulator/faults/FalseAnswers.h"
#include "simulator/faults/FaultPlan.h"

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace simulator {

using base::operator""_ip;

/// A camera as its configuration file describes it: what it is, and how it misbehaves.
struct CameraConfig
{
    enum class IpMethod
    {
        Persistent,
        Dhcp,
        LinkLocal
    };
    /// How it answers an asker outside its subnet, or (Broadcast) anyone.
    enum class AnswerBy
    {
        Unicast,
        Arp,
        Broadcast
    };
    enum class ForceIpAcknowledge
    {
        FromOldAddress,
        FromNewAddress,
        Broadcast,
        Never
    };
    enum class UserNameAccess
    {
        ReadWrite,
        ReadOnly,
        None
    };

    /// An application elsewhere that controls the camera; unless told, one at an address that is nobody's.
    struct Holder
    {
        base::Ipv4 address = "192.0.2.1"_ip;
        std::uint32_t privilege = gvcp::Privilege::Exclusive; ///< Or Control.
    };

    /// A register that the standard knows nothing of, of 4 bytes. What it holds outlives a reset.
    struct MakersRegister
    {
        enum class Access
        {
            ReadWrite,
            ReadOnly,
            WriteOnly ///< An application that reads it gets AccessDenied.
        };
        std::uint32_t address = 0;
        std::uint32_t value = 0; ///< At first.
        Access access = Access::ReadWrite;
    };

    /// What the camera tells of its features, in its memory at DescriptionAddress.
    struct Description
    {
        std::shared_ptr<const base::Bytes> file; ///< Null for a camera without one; of whole registers.
        std::string url;
        std::string secondUrl;
    };

    static constexpr std::uint32_t DescriptionAddress = 0xC0A00000;
    static constexpr std::size_t MaxDescriptionSize = 16 << 20;

    base::MacAddress mac;
    unsigned interface = 0;                      ///< Which of its network interfaces is on this network.
    std::vector<base::MacAddress> interfaceMacs; ///< By their numbers; empty for a camera with one only.
    std::string manufacturer = "Farm Cameras";
    std::string model = "FC-1200M";
    std::string version = "1.0.0";
    std::string info = "Simulated camera";
    std::string serial;
    std::string userName; ///< Bytes, in whatever encoding.
    UserNameAccess userNameAccess = UserNameAccess::ReadWrite;
    /// At the start, and taken for what a DHCP server would lease it later, unless it is a link-local one.
    /// Without an address the camera boots when the farm starts, and asks on the network.
    base::IpSettings ip;
    IpMethod ipMethod = IpMethod::Dhcp;
    base::IpSettings persistent;
    bool hasPersistentIp = true;
    Description description;
    std::uint32_t resetRegister = 0x00010000; ///< A write of any bit of the mask reboots the camera.
    std::uint32_t resetMask = 0xFFFFFFFF;     ///< Bits that fall back to 0 then; the others stay.
    std::vector<MakersRegister> registers;    ///< The reset register too, where it is not RW and 0 at first.
    std::chrono::milliseconds rebootTime{1000};
    std::chrono::milliseconds dhcpTimeout{4000};
    std::chrono::milliseconds probeInterval{100}; ///< Between the probes of a link-local address.
    std::chrono::milliseconds heartbeatTimeout{3000};
    std::chrono::milliseconds answerDelay{0};     ///< Before a DISCOVERY answer.
    std::chrono::milliseconds arpLifetime{60000}; ///< For which it remembers another's MAC.
    std::chrono::milliseconds forceIpOffTime{0};  ///< Which a FORCEIP takes it off the network.
    bool rebootsWithoutAcknowledge = false;
    bool writesMemory = true;
    bool hasPendingAck = true;
    bool pendingAckOn = false; ///< Before any application has switched it on.
    bool readMemoryOmitsAddress = false;
    AnswerBy answerBy = AnswerBy::Unicast;
    ForceIpAcknowledge forceIpAcknowledge = ForceIpAcknowledge::FromOldAddress;
    std::optional<Holder> heldBy;
    std::vector<Fault> faults;
    double loss = 0; ///< Probability of each frame to it or from it.
    std::vector<NoiseKind> noise;
    unsigned forgedAnswers =
        0; ///< More answers to each DISCOVERY, each in the name of another, invented camera.
    unsigned acknowledgeExtra = 0; ///< Bytes at the end of each acknowledge but DISCOVERY's.

    unsigned interfaceCount() const
    {
        return interfaceMacs.empty() ? 1 : static_cast<unsigned>(interfaceMacs.size());
    }
};

} // namespace simulator
