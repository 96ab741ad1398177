// SPDX-License-Identifier: Apache-2.0
#include "sdk/camera/CameraCommand.h"

#include "gvcp/Memory.h"
#include "gvcp/Registers.h"

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

CameraCommand CameraCommand::readRegister(std::uint32_t address)
{
    return {gvcp::Command::ReadRegister, address, gvcp::encodeWords({address}), 4};
}

CameraCommand CameraCommand::writeRegister(std::uint32_t address, std::uint32_t value)
{
    return {gvcp::Command::WriteRegister, address, gvcp::encodeRegisterValues({{address, value}}), 0};
}

CameraCommand CameraCommand::readMemory(std::uint32_t address, std::uint16_t size)
{
    return {gvcp::Command::ReadMemory, address, gvcp::encodeMemoryRange({address, size}), size};
}

CameraCommand CameraCommand::writeMemory(std::uint32_t address, base::ByteView data)
{
    return {gvcp::Command::WriteMemory, address, gvcp::encodeMemoryBlock({address, data}), 0};
}

std::string CameraCommand::name() const
{
    const bool isWrite = m_command == gvcp::Command::WriteRegister || m_command == gvcp::Command::WriteMemory;
    return (isWrite ? "writing " : "reading ") + hex(m_address, 8);
}

/// The acknowledge's data, if there is enough of it: some cameras send more than they were asked for, and
/// some leave READMEM's address out.
std::optional<base::ByteView> CameraCommand::dataOf(base::ByteView acknowledge) const
{
    if (m_command == gvcp::Command::ReadMemory && acknowledge.size() != m_answerSize) {
        const bool hasAddress =
            acknowledge.size() >= m_answerSize + 4 && base::readU32(acknowledge, 0) == m_address;
        return hasAddress ? std::optional(acknowledge.subspan(4, m_answerSize)) : std::nullopt;
    }
    return acknowledge.size() >= m_answerSize ? std::optional(acknowledge.first(m_answerSize)) : std::nullopt;
}

Exchange::Plan CameraCommand::plan(Network& network, std::size_t adapter, base::Ipv4 camera, int tries) const
{
    const auto source = network.adapters()[adapter].addressTowards(camera);
    const auto send = [=, this, &network](base::ByteView packet) {
        if (!network.send(adapter, source, camera, packet))
            throw CameraError(RZ_ERROR_NETWORK, name() + ": the host cannot send to " + camera.toText());
    };
    const auto isBelieved = [=, this](const Datagram& datagram, const gvcp::AcknowledgePacket& acknowledge) {
        const bool bringsData =
            acknowledge.command == m_command && acknowledge.status == gvcp::Status::Success;
        return datagram.source == camera && (!bringsData || dataOf(acknowledge.payload));
    };
    return {.command = m_command,
            .payload = m_payload,
            .tries = tries,
            .wait = TimeOfOneTry,
            .areRefusedTriesFree = true,
            .mostTime = MaxTime,
            .send = send,
            .isBelieved = isBelieved};
}

base::Bytes CameraCommand::resultOf(const Exchange& exchange, base::Ipv4 camera) const
{
    const auto& answer = exchange.answer();
    // A camera that was silent at first and then denies access has reset meanwhile, perhaps because of this
    // very command, and knows nothing of our control any more. That is no answer to the command, unless it
    // is about control itself.
    const bool hasReset = answer && answer->status == gvcp::Status::AccessDenied &&
                          exchange.wasSilentAtFirst() && m_address != gvcp::reg::ControlChannelPrivilege;
    if (!answer || hasReset)
        throw CameraError(RZ_ERROR_NO_ANSWER, name() + ": " + camera.toText() + " does not answer");
    if (answer->status != gvcp::Status::Success)
        throw CameraError(answer->status, name() + ": " + camera.toText() + " answers " +
                                              meaning(answer->status) + " (" +
                                              hex(static_cast<std::uint32_t>(answer->status), 4) + ")");
    const auto data = dataOf(answer->payload).value();
    return {data.begin(), data.end()};
}

} // namespace sdk
