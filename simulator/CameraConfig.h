// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "simulator/IpSettings.h"
#include "simulator/Request.h"

#include <chrono>
#include <cstdint>
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
    /// What goes out along with each genuine DISCOVERY answer.
    enum class NoiseKind
    {
        Truncated,
        Oversized,
        Foreign,
        Duplicate,
        Random,
        WrongId
    };

    /// An application elsewhere that controls the camera.
    struct Holder
    {
        gvcp::Ipv4 address = 0;
        std::uint32_t privilege = 0; ///< gvcp::Privilege::Exclusive or Control.
    };

    /// The next `times` such requests are ignored; all of them without a number.
    struct Fault
    {
        Request request = Request::Discovery;
        std::optional<unsigned> times;
    };

    gvcp::MacAddress mac;
    std::string manufacturer = "Farm Cameras";
    std::string model = "FC-1200M";
    std::string version = "1.0.0";
    std::string info = "Simulated camera";
    std::string serial;
    std::string userName;
    IpSettings ip; ///< At the start, and after a reset unless another one is stored.
    IpMethod ipMethod = IpMethod::Dhcp;
    IpSettings persistent;
    std::chrono::milliseconds answerDelay{0}; ///< Before a DISCOVERY answer.
    std::chrono::milliseconds rebootTime{500};
    AnswerBy answerBy = AnswerBy::Unicast;
    ForceIpAcknowledge forceIpAcknowledge = ForceIpAcknowledge::FromOldAddress;
    std::optional<Holder> heldBy;
    std::vector<Fault> faults;
    double loss = 0; ///< Probability of each frame to it or from it.
    std::vector<NoiseKind> noise;
    unsigned forgedAnswers =
        0; ///< More answers to each DISCOVERY, each in the name of another, invented camera.
};

} // namespace simulator
