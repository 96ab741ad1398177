// SPDX-License-Identifier: Apache-2.0
#include "simulator/Camera.h"

#include "gvcp/ForceIp.h"
#include "gvcp/Registers.h"

#include <array>

namespace simulator {

using gvcp::Command;
using gvcp::Status;
namespace reg = gvcp::reg;

Camera::Camera(const CameraConfig& config)
    : m_mac(config.mac),
      m_registers(config),
      m_startIp(config.ip),
      m_answerBy(config.answerBy),
      m_forceIpAcknowledge(config.forceIpAcknowledge)
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
        return force && force->mac == m_mac;
    }
    return command.command == Command::Discovery || !sentByBroadcast;
}

std::optional<Camera::Answer> Camera::handle(const gvcp::CommandPacket& command, const Asker& asker)
{
    if (command.command == Command::ForceIp)
        return forceIp(command);

    const Outcome outcome = execute(command, asker);
    if (!(command.flags & gvcp::FlagAcknowledge))
        return std::nullopt;
    Answer answer{gvcp::encodeAcknowledge(command.command, outcome.status, command.id, outcome.payload),
                  ip()};
    if (command.command == Command::Discovery) {
        answer.onlyByBroadcast = m_answerBy == CameraConfig::AnswerBy::Broadcast;
        answer.broadcastAllowed = command.flags & gvcp::FlagBroadcastAcknowledge;
    }
    return answer;
}

std::optional<Camera::Answer> Camera::forceIp(const gvcp::CommandPacket& command)
{
    using Acknowledge = CameraConfig::ForceIpAcknowledge;

    const auto force = gvcp::parseForceIp(command.payload);
    if (!force || isHeld())
        return std::nullopt;
    const IpSettings before = ip();
    if (force->ip == 0)
        runStoredIpConfiguration();
    else
        m_registers.setCurrentIp({force->ip, force->subnetMask, force->gateway});

    if (!(command.flags & gvcp::FlagAcknowledge) || m_forceIpAcknowledge == Acknowledge::Never)
        return std::nullopt;
    Answer answer;
    answer.packet = gvcp::encodeAcknowledge(Command::ForceIp, Status::Success, command.id);
    answer.from = m_forceIpAcknowledge == Acknowledge::FromOldAddress ? before : ip();
    answer.onlyByBroadcast =
        m_answerBy == CameraConfig::AnswerBy::Broadcast || m_forceIpAcknowledge == Acknowledge::Broadcast;
    answer.broadcastAllowed = command.flags & gvcp::FlagBroadcastAcknowledge;
    return answer;
}

Camera::Outcome Camera::execute(const gvcp::CommandPacket& command, const Asker& asker)
{
    if (command.payload.size() > gvcp::MaxPayload)
        return {Status::InvalidParameter, {}};
    switch (command.command) {
    case Command::Discovery:
        return {Status::Success, m_registers.discoveryBlock()};
    case Command::ReadRegister:
        return readRegisters(command.payload, asker);
    case Command::WriteRegister:
        return writeRegisters(command.payload, asker);
    case Command::ReadMemory:
        return readMemory(command.payload, asker);
    case Command::WriteMemory:
        return writeMemory(command.payload, asker);
    case Command::ForceIp:
        break;
    }
    return {Status::NotImplemented, {}};
}

Camera::Outcome Camera::readRegisters(gvcp::ByteView payload, const Asker& asker) const
{
    const auto addresses = gvcp::parseWords(payload);
    if (!addresses)
        return {Status::InvalidParameter, {}};
    if (!mayRead(asker))
        return {Status::AccessDenied, {}};
    std::vector<std::uint32_t> values;
    for (const std::uint32_t address : *addresses) {
        std::array<std::uint8_t, 4> bytes{};
        const Status status = m_registers.read(address, bytes);
        if (status != Status::Success)
            return {status, {}};
        values.push_back(gvcp::readU32(bytes, 0));
    }
    return {Status::Success, gvcp::encodeWords(values)};
}

Camera::Outcome Camera::writeRegisters(gvcp::ByteView payload, const Asker& asker)
{
    const auto values = gvcp::parseRegisterValues(payload);
    if (!values)
        return {Status::InvalidParameter, {}};
    // One after the other: those before the one that fails are written, and the answer says how many.
    std::uint16_t written = 0;
    for (const gvcp::RegisterValue& each : *values) {
        const Status status = writeRegister(each, asker);
        if (status != Status::Success)
            return {status, gvcp::encodeWriteResult(written)};
        ++written;
    }
    return {Status::Success, gvcp::encodeWriteResult(written)};
}

Status Camera::writeRegister(const gvcp::RegisterValue& each, const Asker& asker)
{
    if (each.address == reg::ControlChannelPrivilege)
        return writePrivilege(each.value, asker);
    if (!controls(asker))
        return Status::AccessDenied;
    std::array<std::uint8_t, 4> bytes{};
    gvcp::writeU32(bytes, 0, each.value);
    return m_registers.write(each.address, bytes);
}

Status Camera::writePrivilege(std::uint32_t value, const Asker& asker)
{
    if (m_controller && !controls(asker))
        return Status::AccessDenied;
    // Exclusive wins where both are asked for; the other bits belong to features that this camera has not.
    const std::uint32_t privilege =
        value & gvcp::Privilege::Exclusive ? gvcp::Privilege::Exclusive : value & gvcp::Privilege::Control;
    if (privilege == gvcp::Privilege::Open) {
        release();
    } else {
        m_controller = asker;
        m_registers.setController(privilege, asker.address, asker.port);
    }
    return Status::Success;
}

Camera::Outcome Camera::readMemory(gvcp::ByteView payload, const Asker& asker) const
{
    const auto range = gvcp::parseMemoryRange(payload);
    if (!range || range->count == 0 || range->count > gvcp::MaxMemoryBlock)
        return {Status::InvalidParameter, {}};
    if (!mayRead(asker))
        return {Status::AccessDenied, {}};
    gvcp::Bytes data(range->count);
    const Status status = m_registers.read(range->address, data);
    if (status != Status::Success)
        return {status, {}};
    return {Status::Success, gvcp::encodeMemoryBlock({range->address, data})};
}

Camera::Outcome Camera::writeMemory(gvcp::ByteView payload, const Asker& asker)
{
    const auto block = gvcp::parseMemoryBlock(payload);
    if (!block)
        return {Status::InvalidParameter, {}};
    const Status status =
        controls(asker) ? m_registers.write(block->address, block->data) : Status::AccessDenied;
    const bool written = status == Status::Success;
    return {status, gvcp::encodeWriteResult(written ? static_cast<std::uint16_t>(block->data.size()) : 0)};
}

bool Camera::mayRead(const Asker& asker) const
{
    return m_registers.word(reg::ControlChannelPrivilege) != gvcp::Privilege::Exclusive || controls(asker);
}

void Camera::hold(const CameraConfig::Holder& holder)
{
    // No command ever comes from port 0, so nobody is taken for this application.
    m_controller = Asker{holder.address, 0};
    m_registers.setController(holder.privilege, holder.address, 0);
}

void Camera::release()
{
    m_controller.reset();
    m_registers.setController(gvcp::Privilege::Open, 0, 0);
}

void Camera::restart()
{
    release();
    runStoredIpConfiguration();
}

void Camera::runStoredIpConfiguration()
{
    const IpSettings stored = m_registers.persistentIp();
    const bool persistent = m_registers.word(reg::CurrentIpConfig) & gvcp::IpConfig::Persistent;
    m_registers.setCurrentIp(persistent && stored.address != 0 ? stored : m_startIp);
}

} // namespace simulator
