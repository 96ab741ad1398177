// SPDX-License-Identifier: Apache-2.0
#include "sdk/camera/ControlChannel.h"

#include "gvcp/Memory.h"
#include "gvcp/Registers.h"
#include "sdk/network/CameraError.h"
#include "sdk/network/Exchange.h"

#include <algorithm>
#include <cstdio>

namespace sdk {

namespace {

using namespace std::chrono_literals;

/// Cameras answer within 30 ms.
constexpr auto TimeOfOneTry = 200ms;
/// No command of this tool keeps a camera busy longer, whatever its PENDING_ACKs announce.
constexpr auto MaxTime = 10s;

std::string hex(std::uint32_t value, int digits)
{
    char text[16];
    std::snprintf(text, sizeof text, "0x%0*X", digits, value);
    return text;
}

std::string meaning(gvcp::Status status)
{
    switch (status) {
    case gvcp::Status::NotImplemented:
        return "not implemented";
    case gvcp::Status::InvalidParameter:
        return "invalid parameter";
    case gvcp::Status::InvalidAddress:
        return "invalid address";
    case gvcp::Status::WriteProtect:
        return "write protected";
    case gvcp::Status::BadAlignment:
        return "bad alignment";
    case gvcp::Status::AccessDenied:
        return "access denied";
    case gvcp::Status::Busy:
        return "busy";
    default:
        return "error";
    }
}

} // namespace

struct ControlChannel::Request
{
    gvcp::Command command;
    std::uint32_t address;
    base::Bytes payload;
    std::size_t answerSize; ///< Bytes of data; 0: any, since the command asks for none.
    int tries = Tries;

    std::string name() const
    {
        const bool isWrite = command == gvcp::Command::WriteRegister || command == gvcp::Command::WriteMemory;
        return (isWrite ? "writing " : "reading ") + hex(address, 8);
    }

    /// The acknowledge's data, if there is enough of it: some cameras send more than they were asked for, and
    /// some leave READMEM's address out.
    std::optional<base::ByteView> dataOf(base::ByteView acknowledge) const
    {
        if (command == gvcp::Command::ReadMemory && acknowledge.size() != answerSize) {
            const bool hasAddress =
                acknowledge.size() >= answerSize + 4 && base::readU32(acknowledge, 0) == address;
            return hasAddress ? std::optional(acknowledge.subspan(4, answerSize)) : std::nullopt;
        }
        return acknowledge.size() >= answerSize ? std::optional(acknowledge.first(answerSize)) : std::nullopt;
    }
};

ControlChannel::ControlChannel(std::unique_ptr<Network> network, base::Ipv4 camera)
    : m_camera(camera),
      m_network(std::move(network))
{
    if (m_network->adapters().empty())
        throw CameraError(RZ_ERROR_NETWORK, "the adapter that heard the camera is gone");
}

std::uint32_t ControlChannel::readRegister(std::uint32_t address, int tries)
{
    const auto answer =
        execute({gvcp::Command::ReadRegister, address, gvcp::encodeWords({address}), 4, tries});
    return base::readU32(answer, 0);
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
    execute(
        {gvcp::Command::WriteRegister, address, gvcp::encodeRegisterValues({{address, value}}), 0, tries});
}

void ControlChannel::readMemory(std::uint32_t address, std::span<std::uint8_t> out, int tries)
{
    const gvcp::MemoryRange range{address, static_cast<std::uint16_t>(out.size())};
    const auto answer =
        execute({gvcp::Command::ReadMemory, address, gvcp::encodeMemoryRange(range), out.size(), tries});
    std::copy(answer.begin(), answer.end(), out.begin());
}

void ControlChannel::writeMemory(std::uint32_t address, base::ByteView data)
{
    execute({gvcp::Command::WriteMemory, address, gvcp::encodeMemoryBlock({address, data}), 0});
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

base::Bytes ControlChannel::execute(const Request& request)
{
    const std::lock_guard lock(m_mutex);
    if (!m_network)
        throw CameraError(m_closed.code(), request.name() + ": " + m_closed.what());
    const auto source = m_network->adapters().front().addressTowards(m_camera);
    const auto send = [&](base::ByteView packet) {
        if (!m_network->send(0, source, m_camera, packet))
            throw CameraError(RZ_ERROR_NETWORK,
                              request.name() + ": the host cannot send to " + m_camera.toText());
    };
    const auto isBelieved = [&](const Datagram& datagram, const gvcp::AcknowledgePacket& acknowledge) {
        const bool bringsData =
            acknowledge.command == request.command && acknowledge.status == gvcp::Status::Success;
        return datagram.source == m_camera && (!bringsData || request.dataOf(acknowledge.payload));
    };
    Exchange exchange(*m_network, m_ids,
                      {.command = request.command,
                       .payload = request.payload,
                       .tries = request.tries,
                       .wait = TimeOfOneTry,
                       .areRefusedTriesFree = true,
                       .mostTime = MaxTime,
                       .send = send,
                       .isBelieved = isBelieved});
    const auto& answer = exchange.run();

    // A camera that was silent at first and then denies access has reset meanwhile, perhaps because of this
    // very command, and knows nothing of our control any more. That is no answer to the command, unless it
    // is about control itself.
    const bool hasReset = answer && answer->status == gvcp::Status::AccessDenied &&
                          exchange.wasSilentAtFirst() &&
                          request.address != gvcp::reg::ControlChannelPrivilege;
    m_isSilent = !answer || hasReset;
    if (m_isSilent)
        throw CameraError(RZ_ERROR_NO_ANSWER, request.name() + ": " + m_camera.toText() + " does not answer");
    if (answer->status != gvcp::Status::Success)
        throw CameraError(answer->status, request.name() + ": " + m_camera.toText() + " answers " +
                                              meaning(answer->status) + " (" +
                                              hex(static_cast<std::uint32_t>(answer->status), 4) + ")");
    const auto data = request.dataOf(answer->payload).value();
    return {data.begin(), data.end()};
}

} // namespace sdk
