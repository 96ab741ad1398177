// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "base/Bytes.h"
#include "base/IpSettings.h"
#include "gvcp/Registers.h"
#include "simulator/config/Endpoint.h"
#include "simulator/faults/FalseAnswers.h"
#include "simulator/faults/FaultPlan.h"

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace simulator {

/// A camera as its configuration file describes it: what it is, and how it misbehaves.
struct CameraConfig
{
    enum class IpMethod
    {
        Persistent,
        Dhcp,
        LinkLocal
    };
    /// How its answers go to an asker outside its subnet; by broadcast they go to anyone.
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

    /// An application elsewhere that controls the camera, by default at an address that no machine has. It is
    /// never heard, and keeps control all the same.
    struct Holder
    {
        base::Ipv4 address = *base::Ipv4::parse("192.0.2.1");
        std::uint32_t privilege = gvcp::Privilege::Exclusive; ///< Or Control.
        /// No command ever comes from port 0: nobody is taken for this application unless it has another one.
        std::uint16_t port = 0;
        bool heartbeatOff = false;        ///< It has switched the heartbeat off, where the camera lets it.
        std::optional<Endpoint> stream{}; ///< Where it has the first stream's images sent.
    };

    /// A register of 4 bytes that the standard does not know. What it holds outlives a reset.
    struct MakersRegister
    {
        enum class Access
        {
            ReadWrite,
            ReadOnly,
            WriteOnly ///< An application that reads it gets AccessDenied.
        };
        std::uint32_t address = 0;
        std::uint32_t value = 0; ///< As the factory left it.
        Access access = Access::ReadWrite;
    };

    /// What the camera tells of its features, in its memory at DescriptionAddress.
    struct Description
    {
        std::shared_ptr<const base::Bytes> file; ///< A multiple of 4 bytes; null for none.
        std::string url;
        std::string secondUrl;
    };

    static constexpr std::uint32_t DescriptionAddress = 0xC0A00000;
    static constexpr unsigned MaxStreams = 8; ///< Of a camera of this farm; the standard has more.
    static constexpr std::size_t MaxDescriptionSize = 16 << 20;

    // What it is.
    base::MacAddress mac;
    unsigned interface = 0; ///< Which of its network interfaces is on this network.
    /// Of all its interfaces, in their order; empty for a camera that has only one.
    std::vector<base::MacAddress> interfaceMacs;
    std::string manufacturer = "Farm Cameras";
    std::string model = "FC-1200M";
    std::string version = "1.0.0";
    std::string info = "Simulated camera";
    std::string serial;
    std::string userName; ///< Bytes, in whatever encoding.
    UserNameAccess userNameAccess = UserNameAccess::ReadWrite;
    Description description;

    // How it comes by its address.
    bool isPlugged = true; ///< At the start.
    /// The one that it has at the start. A camera by DHCP has it again after each reset, as if a server
    /// leased it the same one every time, unless it is a link-local one. A camera without one boots when the
    /// farm starts, and asks on the network.
    base::IpSettings ip;
    IpMethod ipMethod = IpMethod::Dhcp;
    base::IpSettings persistent;
    bool hasPersistentIp = true;
    std::chrono::milliseconds dhcpTimeout{4000};
    std::chrono::milliseconds probeInterval{100}; ///< Between the probes of a link-local address.
    std::chrono::milliseconds arpLifetime{60000}; ///< How long it remembers another's MAC.

    // Its registers, and who may use them.
    std::uint32_t resetRegister = 0x00010000; ///< A write of any bit of the mask reboots the camera.
    std::uint32_t resetMask = 0xFFFFFFFF; ///< These bits are 0 again when it has rebooted; the others stay.
    /// The reset register is one of them only where it is not the usual one: RW, and 0 at first.
    std::vector<MakersRegister> registers;
    std::chrono::milliseconds rebootTime{1000};
    std::chrono::milliseconds heartbeatTimeout{3000};
    std::optional<Holder> heldBy;
    unsigned streams = 1; ///< How many it could send.
    bool writesMemory = true;
    bool hasPendingAck = true;
    bool pendingAckOn = false; ///< From the start, before any application switches it on.
    bool tellsHolder = true;   ///< Who is in control, by address and port.
    bool hasHeartbeatOff = true;
    std::optional<std::uint32_t> linkSpeed = 1000; ///< Mbit/s; nothing when it does not say.

    // How it answers.
    AnswerBy answerBy = AnswerBy::Unicast;
    ForceIpAcknowledge forceIpAcknowledge = ForceIpAcknowledge::FromOldAddress;
    std::chrono::milliseconds forceIpOffTime{0}; ///< How long a FORCEIP takes it off the network.
    std::chrono::milliseconds answerDelay{0};    ///< Before a DISCOVERY answer.
    bool rebootsWithoutAcknowledge = false;
    bool readMemoryOmitsAddress = false;
    unsigned acknowledgeExtra = 0; ///< Bytes at the end of each acknowledge but DISCOVERY's.

    // What goes wrong.
    std::vector<Fault> faults;
    double loss = 0; ///< Probability that a frame to it, or from it, is lost.
    std::vector<NoiseKind> noise;
    /// How many more answers each DISCOVERY gets, each in the name of another, invented camera.
    unsigned forgedAnswers = 0;

    unsigned interfaceCount() const
    {
        return interfaceMacs.empty() ? 1 : static_cast<unsigned>(interfaceMacs.size());
    }
};

} // namespace simulator
