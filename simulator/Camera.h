// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "gvcp/Memory.h"
#include "simulator/CameraConfig.h"
#include "simulator/RegisterMap.h"

#include <optional>

namespace simulator {

/// The camera's side of GVCP: who may do what with its registers, and what it answers. It knows its addresses
/// but no network: commands come in and answers go out as bytes.
class Camera
{
public:
    /// Where a command came from; an application is known by both.
    struct Asker
    {
        gvcp::Ipv4 address = 0;
        std::uint16_t port = 0;

        bool operator==(const Asker&) const = default;
    };

    struct Answer
    {
        gvcp::Bytes packet;
        IpSettings from; ///< What it is sent with: FORCEIP changes it under way.
        bool onlyByBroadcast = false;
        bool broadcastAllowed = false; ///< The command's flag for it, where it has one.
    };

    explicit Camera(const CameraConfig& config);

    /// Whether it would consider such a command at all, however it was sent.
    bool concerns(const gvcp::CommandPacket& command, bool sentByBroadcast) const;
    /// Carries out a command that concerns it. Nothing when it stays silent.
    std::optional<Answer> handle(const gvcp::CommandPacket& command, const Asker& asker);

    const RegisterMap& registers() const { return m_registers; }
    IpSettings ip() const { return m_registers.currentIp(); }
    bool isHeld() const { return m_controller.has_value(); }

    /// Puts an application elsewhere in control, whoever was it before.
    void hold(const CameraConfig::Holder& holder);
    void release();
    /// As after a reset: nobody is in control, and the stored IP configuration is in force.
    void restart();

private:
    struct Outcome
    {
        gvcp::Status status = gvcp::Status::Success;
        gvcp::Bytes payload;
    };

    std::optional<Answer> forceIp(const gvcp::CommandPacket& command);
    Outcome execute(const gvcp::CommandPacket& command, const Asker& asker);
    Outcome readRegisters(gvcp::ByteView payload, const Asker& asker) const;
    Outcome writeRegisters(gvcp::ByteView payload, const Asker& asker);
    Outcome readMemory(gvcp::ByteView payload, const Asker& asker) const;
    Outcome writeMemory(gvcp::ByteView payload, const Asker& asker);
    gvcp::Status writePrivilege(std::uint32_t value, const Asker& asker);
    gvcp::Status writeRegister(const gvcp::RegisterValue& each, const Asker& asker);
    bool mayRead(const Asker& asker) const;
    bool controls(const Asker& asker) const { return m_controller == asker; }
    void runStoredIpConfiguration();

    gvcp::MacAddress m_mac;
    RegisterMap m_registers;
    IpSettings m_startIp;
    CameraConfig::AnswerBy m_answerBy;
    CameraConfig::ForceIpAcknowledge m_forceIpAcknowledge;
    std::optional<Asker> m_controller;
};

} // namespace simulator
