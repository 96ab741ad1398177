// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "gvcp/Memory.h"
#include "simulator/camera/ControlChannel.h"
#include "simulator/camera/RegisterMap.h"
#include "simulator/config/CameraConfig.h"

#include <optional>

namespace simulator {

/// The camera's side of GVCP: who may do what with its registers, and what it answers. It knows its addresses
/// but no network and no clock: commands come in and answers go out as bytes, the time is told it.
class Camera
{
public:
    using Asker = ControlChannel::Application;
    using Clock = ControlChannel::Clock;

    struct Answer
    {
        base::Bytes packet;
        base::IpSettings from; ///< What it is sent with, though FORCEIP has changed them since.
        bool onlyByBroadcast = false;
        bool broadcastAllowed = false; ///< The command's flag for it, where it has one.
    };

    /// What is left to do when a command has been answered.
    enum class Effect
    {
        None,
        Forced,    ///< It has taken a forced address, perhaps the one that it had.
        IpRestart, ///< The stored IP configuration is to be run again.
        Reset
    };

    struct Reaction
    {
        std::optional<Answer> answer; ///< Nothing when it stays silent.
        Effect effect = Effect::None;
    };

    explicit Camera(const CameraConfig& config);

    /// Whether it would consider such a command at all, however it was sent.
    bool concerns(const gvcp::CommandPacket& command, bool sentByBroadcast) const;
    /// Carries out a command that concerns it.
    Reaction handle(const gvcp::CommandPacket& command, const Asker& asker, Clock::time_point now);
    /// Answers such a command with this status and does nothing.
    std::optional<Answer> refuse(const gvcp::CommandPacket& command, gvcp::Status status) const;
    /// Says that the answer will take that long, if an application has switched that on.
    std::optional<Answer> announceDelay(const gvcp::CommandPacket& command,
                                        std::chrono::milliseconds time) const;
    bool isPendingAckOn() const;
    /// Whether who is in control stays so without being heard.
    bool isHeartbeatOff() const;
    void excuse(const Asker& asker, Clock::time_point until) { m_control.heard(asker, until); }
    /// Ends control whose heartbeat has stopped.
    void passTime(Clock::time_point now);

    const CameraConfig& config() const { return m_config; }
    const RegisterMap& registers() const { return m_registers; }
    const ControlChannel& control() const { return m_control; }
    base::IpSettings ip() const { return m_registers.currentIp(); }
    void setIp(const base::IpSettings& ip) { m_registers.setCurrentIp(ip); }

    /// Puts an application elsewhere in control, whoever was it before.
    void hold(const CameraConfig::Holder& holder);
    void release();
    /// As after a reset: nobody is in control, it has no address yet, and only the stored settings are left.
    void restart();

private:
    struct Outcome
    {
        gvcp::Status status = gvcp::Status::Success;
        base::Bytes payload;
    };

    Reaction forceIp(const gvcp::CommandPacket& command);
    Outcome execute(const gvcp::CommandPacket& command, const Asker& asker, Clock::time_point now);
    Outcome readRegisters(base::ByteView payload, const Asker& asker) const;
    Outcome writeRegisters(base::ByteView payload, const Asker& asker, Clock::time_point now);
    gvcp::Status writeRegister(const gvcp::RegisterValue& each, const Asker& asker, Clock::time_point now);
    gvcp::Status write(std::uint32_t address, std::uint32_t value);
    Outcome readMemory(base::ByteView payload, const Asker& asker) const;
    Outcome writeMemory(base::ByteView payload, const Asker& asker);
    /// What is sent for it, if the command wants to be acknowledged.
    std::optional<Answer> acknowledge(const gvcp::CommandPacket& command, const Outcome& outcome) const;
    /// Lets the registers say who is in control; the streams are whose that is.
    void showControl();

    CameraConfig m_config;
    RegisterMap m_registers;
    ControlChannel m_control;
};

} // namespace simulator
