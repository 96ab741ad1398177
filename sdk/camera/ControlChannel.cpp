// SPDX-License-Identifier: Apache-2.0
#include "sdk/camera/ControlChannel.h"

#include "sdk/camera/CameraCommand.h"

#include <algorithm>

namespace sdk {

ControlChannel::ControlChannel(std::unique_ptr<Network> network, base::Ipv4 camera)
    : m_camera(camera),
      m_network(std::move(network))
{
    if (m_network->adapters().empty())
        throw CameraError(RZ_ERROR_NETWORK, "the adapter that heard the camera is gone");
}

std::uint32_t ControlChannel::readRegister(std::uint32_t address, int tries)
{
    return base::readU32(execute(CameraCommand::readRegister(address), tries), 0);
}

std::optional<std::uint32_t> ControlChannel::findRegister(std::uint32_t address)
{
    try {
        return readRegister(address);
    } catch (const CameraError& error) {
        if (error.status() == gvcp::Status::Success)
            throw;
        return std::nullopt;
    }
}

void ControlChannel::writeRegister(std::uint32_t address, std::uint32_t value, int tries)
{
    execute(CameraCommand::writeRegister(address, value), tries);
}

void ControlChannel::readMemory(std::uint32_t address, std::span<std::uint8_t> out, int tries)
{
    const auto answer =
        execute(CameraCommand::readMemory(address, static_cast<std::uint16_t>(out.size())), tries);
    std::copy(answer.begin(), answer.end(), out.begin());
}

void ControlChannel::writeMemory(std::uint32_t address, base::ByteView data)
{
    execute(CameraCommand::writeMemory(address, data), Tries);
}

int ControlChannel::triesForFarewell() const
{
    return m_isSilent ? 1 : FewTries;
}

std::unique_ptr<Network> ControlChannel::close(const std::optional<CameraError>& reason)
{
    const std::lock_guard lock(m_mutex);
    if (m_network && reason)
        m_closed = *reason;
    m_isOpen = false;
    return std::move(m_network);
}

void ControlChannel::requireOpen() const
{
    if (m_isOpen)
        return;
    const std::lock_guard lock(m_mutex);
    throw m_closed;
}

base::Bytes ControlChannel::execute(const CameraCommand& command, int tries)
{
    const std::lock_guard lock(m_mutex);
    if (!m_network)
        throw CameraError(m_closed.code(), command.name() + ": " + m_closed.what());
    Exchange exchange(*m_network, m_ids, command.plan(*m_network, 0, m_camera, tries));
    exchange.run();
    try {
        base::Bytes result = command.resultOf(exchange, m_camera);
        m_isSilent = false;
        return result;
    } catch (const CameraError& error) {
        m_isSilent = error.code() == RZ_ERROR_NO_ANSWER;
        throw;
    }
}

} // namespace sdk
