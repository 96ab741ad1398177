// SPDX-License-Identifier: Apache-2.0
#include "simulator/camera/Camera.h"

#include "gvcp/ForceIp.h"
#include "gvcp/PendingAck.h"
#include "gvcp/Registers.h"

#include <array>

namespace simulator {

using gvcp::Command;
using gvcp::Status;
namespace reg = gvcp::reg;

namespace {

constexpr std::uint8_t ExtraByte = 0xEE; // CameraConfig::acknowledgeExtra counts these.

} // namespace

Camera::Camera(const CameraConfig& config) : m_config(config), m_registers(config)
{
    if (config.heldBy)
        hold(*config.heldBy);
}

bool Camera::concerns(const gvcp::CommandPacket& command, bool sentByBroadcast) const
{
    // 0 is no legal request id.
    if (command.id == 0)
        return false;
    if (command.command == Command::ForceIp) {
        const auto force = gvcp::parseForceIp(command.payload);
        return force && force->mac == m_config.mac;
    }
    return command.command == Command::Discovery || !sentByBroadcast;
}

Camera::Reaction Camera::handle(const gvcp::CommandPacket& command, const Asker& asker, Clock::time_point now)
{
    passTime(now);
    m_control.heard(asker, now);
    if (command.command == Command::ForceIp)
        return forceIp(command);
    Reaction reaction;
    reaction.answer = acknowledge(command, execute(command, asker, now));
    if (m_registers.takeResetRequest()) {
        reaction.effect = Effect::Reset;
        if (m_config.rebootsWithoutAcknowledge)
            reaction.answer.reset();
    }
    return reaction;
}

std::optional<Camera::Answer> Camera::refuse(const gvcp::CommandPacket& command, Status status) const
{
    return acknowledge(command, {status, {}});
}

std::optional<Camera::Answer> Camera::announceDelay(const gvcp::CommandPacket& command,
                                                    std::chrono::milliseconds time) const
{
    if (!isPendingAckOn())
        return std::nullopt;
    gvcp::CommandPacket pending = command;
    pending.command = gvcp::PendingCommand;
    return acknowledge(pending, {Status::Success, gvcp::encodePendingAck(time)});
}

bool Camera::isPendingAckOn() const
{
    return m_registers.word(reg::GvcpConfiguration) & gvcp::Configuration::PendingAck;
}

bool Camera::isHeartbeatOff() const
{
    return m_registers.word(reg::GvcpConfiguration) & gvcp::Configuration::HeartbeatOff;
}

std::optional<Camera::Answer> Camera::acknowledge(const gvcp::CommandPacket& command,
                                                  const Outcome& outcome) const
{
    if (!(command.flags & gvcp::FlagAcknowledge))
        return std::nullopt;
    base::Bytes payload = outcome.payload;
    if (command.command != Command::Discovery)
        payload.insert(payload.end(), m_config.acknowledgeExtra, ExtraByte);
    Answer answer{gvcp::encodeAcknowledge(command.command, outcome.status, command.id, payload), ip()};
    if (command.command == Command::Discovery || command.command == Command::ForceIp) {
        answer.onlyByBroadcast = m_config.answerBy == CameraConfig::AnswerBy::Broadcast;
        answer.broadcastAllowed = command.flags & gvcp::FlagBroadcastAcknowledge;
    }
    return answer;
}

Camera::Reaction Camera::forceIp(const gvcp::CommandPacket& command)
{
    using Way = CameraConfig::ForceIpAcknowledge;

    const auto force = gvcp::parseForceIp(command.payload);
    if (!force || m_control.application())
        return {};
    Reaction reaction{acknowledge(command, {}), Effect::Forced};
    if (force->ip.address.isUnspecified())
        reaction.effect = Effect::IpRestart; // The new address is not known yet: the old one answers.
    else
        setIp(force->ip);

    const Way way = m_config.forceIpAcknowledge;
    if (way == Way::Never)
        reaction.answer.reset();
    if (reaction.answer && way == Way::FromNewAddress)
        reaction.answer->from = ip();
    if (reaction.answer && way == Way::Broadcast) {
        reaction.answer->from = ip();
        reaction.answer->onlyByBroadcast = true;
    }
    return reaction;
}

Camera::Outcome Camera::execute(const gvcp::CommandPacket& command, const Asker& asker, Clock::time_point now)
{
    if (command.payload.size() > gvcp::MaxPayload)
        return {Status::InvalidParameter, {}};
    switch (command.command) {
    case Command::Discovery:
        return {Status::Success, m_registers.discoveryBlock()};
    case Command::ReadRegister:
        return readRegisters(command.payload, asker);
    case Command::WriteRegister:
        return writeRegisters(command.payload, asker, now);
    case Command::ReadMemory:
        return readMemory(command.payload, asker);
    case Command::WriteMemory:
        if (m_config.writesMemory)
            return writeMemory(command.payload, asker);
        break;
    case Command::ForceIp:
        break;
    }
    return {Status::NotImplemented, {}};
}

Camera::Outcome Camera::readRegisters(base::ByteView payload, const Asker& asker) const
{
    const auto addresses = gvcp::parseWords(payload);
    if (!addresses)
        return {Status::InvalidParameter, {}};
    if (!m_control.mayRead(asker))
        return {Status::AccessDenied, {}};
    std::vector<std::uint32_t> values;
    for (const std::uint32_t address : *addresses) {
        std::array<std::uint8_t, 4> bytes{};
        const Status status = m_registers.read(address, bytes);
        if (status != Status::Success)
            return {status, {}};
        values.push_back(base::readU32(bytes, 0));
    }
    return {Status::Success, gvcp::encodeWords(values)};
}

Camera::Outcome Camera::writeRegisters(base::ByteView payload, const Asker& asker, Clock::time_point now)
{
    const auto values = gvcp::parseRegisterValues(payload);
    if (!values)
        return {Status::InvalidParameter, {}};
    // One after the other: those before the one that fails are written, and the answer says how many.
    std::uint16_t written = 0;
    for (const gvcp::RegisterValue& each : *values) {
        const Status status = writeRegister(each, asker, now);
        if (status != Status::Success)
            return {status, gvcp::encodeWriteResult(written)};
        ++written;
    }
    return {Status::Success, gvcp::encodeWriteResult(written)};
}

Status Camera::writeRegister(const gvcp::RegisterValue& each, const Asker& asker, Clock::time_point now)
{
    if (each.address == reg::ControlChannelPrivilege) {
        if (!m_control.request(each.value, asker, now))
            return Status::AccessDenied;
        showControl();
        return Status::Success;
    }
    if (!m_control.mayWrite(asker))
        return Status::AccessDenied;
    return write(each.address, each.value);
}

Status Camera::write(std::uint32_t address, std::uint32_t value)
{
    std::array<std::uint8_t, 4> bytes{};
    base::writeU32(bytes, 0, value);
    return m_registers.write(address, bytes);
}

Camera::Outcome Camera::readMemory(base::ByteView payload, const Asker& asker) const
{
    const auto range = gvcp::parseMemoryRange(payload);
    if (!range || range->count == 0 || range->count > gvcp::MaxMemoryBlock)
        return {Status::InvalidParameter, {}};
    if (!m_control.mayRead(asker))
        return {Status::AccessDenied, {}};
    base::Bytes data(range->count);
    const Status status = m_registers.read(range->address, data);
    if (status != Status::Success)
        return {status, {}};
    return {Status::Success,
            m_config.readMemoryOmitsAddress ? data : gvcp::encodeMemoryBlock({range->address, data})};
}

Camera::Outcome Camera::writeMemory(base::ByteView payload, const Asker& asker)
{
    const auto block = gvcp::parseMemoryBlock(payload);
    if (!block)
        return {Status::InvalidParameter, {}};
    const Status status =
        m_control.mayWrite(asker) ? m_registers.write(block->address, block->data) : Status::AccessDenied;
    const bool written = status == Status::Success;
    return {status, gvcp::encodeWriteResult(written ? static_cast<std::uint16_t>(block->data.size()) : 0)};
}

void Camera::passTime(Clock::time_point now)
{
    if (!isHeartbeatOff())
        m_control.expire(now, std::chrono::milliseconds{m_registers.word(reg::HeartbeatTimeout)});
    showControl();
}

void Camera::hold(const CameraConfig::Holder& holder)
{
    release();
    m_control.seize({holder.address, holder.port}, holder.privilege);
    showControl();
    if (holder.heartbeatOff)
        write(reg::GvcpConfiguration,
              m_registers.word(reg::GvcpConfiguration) | gvcp::Configuration::HeartbeatOff);
    if (holder.stream)
        m_registers.openStream(*holder.stream);
}

void Camera::release()
{
    m_control.release();
    showControl();
}

void Camera::restart()
{
    m_registers = RegisterMap(m_config, m_registers.stored());
    release();
}

void Camera::showControl()
{
    const Asker application = m_control.application().value_or(Asker{});
    m_registers.setController(m_control.privilege(), application.address, application.port);
    if (m_control.privilege() == gvcp::Privilege::Open)
        m_registers.closeStreams();
}

} // namespace simulator
