// SPDX-License-Identifier: Apache-2.0
#include "sdk/camera/ControlChannel.h"

#include "gvcp/Memory.h"
#include "gvcp/PendingAck.h"
#include "gvcp/Registers.h"
#include "sdk/network/CameraError.h"

#include <algorithm>
#include <cstdio>

namespace sdk {

namespace {

using namespace std::chrono_literals;

/// Cameras answer within 30 ms.
constexpr auto TimeOfOneTry = 200ms;
/// No command of this tool keeps a camera busy longer, whatever its PENDING_ACKs announce.
constexpr auto MaxTime = 10s;
/// How often a command is given again that the camera refuses for being busy.
constexpr int MaxBusy = 5;

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
    std::size_t answerSize; ///< 0: whatever the camera says in its acknowledge.
    int tries = Tries;

    std::string name() const
    {
        const bool isWrite = command == gvcp::Command::WriteRegister || command == gvcp::Command::WriteMemory;
        return (isWrite ? "writing " : "reading ") + hex(address, 8);
    }

    /// The acknowledge's data, if there is enough: some cameras send more than they were asked for. And some
    /// leave READMEM's address out.
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
    base::Bytes answer;
    int busy = 0;
    bool wasMisaligned = false;
    for (;;) {
        const auto status = exchange(request, answer);
        m_isSilent = !status;
        if (!status)
            throw CameraError(RZ_ERROR_NO_ANSWER,
                              request.name() + ": " + m_camera.toText() + " does not answer");
        if (*status == gvcp::Status::Success)
            return answer;
        if (*status == gvcp::Status::Busy && ++busy < MaxBusy) {
            pause();
            continue;
        }
        // A camera exists that says so once for nothing.
        if (*status == gvcp::Status::BadAlignment && !wasMisaligned) {
            wasMisaligned = true;
            continue;
        }
        throw CameraError(*status, request.name() + ": " + m_camera.toText() + " answers " +
                                       meaning(*status) + " (" + hex(static_cast<std::uint32_t>(*status), 4) +
                                       ")");
    }
}

/// The status of the camera's answer, and its data if it is a success; nothing when the camera stays silent.
std::optional<gvcp::Status> ControlChannel::exchange(const Request& request, base::Bytes& answer)
{
    const std::uint16_t id = m_ids.next();
    const auto packet = gvcp::encodeCommand(request.command, gvcp::FlagAcknowledge, id, request.payload);
    const auto source = m_network->adapters().front().addressTowards(m_camera);
    const auto end = m_network->now() + MaxTime;

    for (int i = 0; i < request.tries && m_network->now() < end; ++i) {
        if (!m_network->send(0, source, m_camera, packet))
            throw CameraError(RZ_ERROR_NETWORK,
                              request.name() + ": the host cannot send to " + m_camera.toText());
        const auto status = listen(request, id, end, answer);
        // A camera that was silent at first and then knows nothing of our control has reset meanwhile,
        // perhaps on this very command: that is no answer to it, unless the command is about control itself.
        const bool isAboutControl = request.address == gvcp::reg::ControlChannelPrivilege;
        if (status == gvcp::Status::AccessDenied && i > 0 && !isAboutControl)
            return std::nullopt;
        if (status)
            return status;
    }
    return std::nullopt;
}

/// One try's time, or more if the camera asks for it. Everything but the one answer is dropped on the way.
std::optional<gvcp::Status> ControlChannel::listen(const Request& request, std::uint16_t id,
                                                   Clock::time_point end, base::Bytes& answer)
{
    auto deadline = std::min(end, m_network->now() + TimeOfOneTry);
    // What arrives after the deadline is not looked at: a flood of foreign packets prolongs nothing.
    while (m_network->now() < deadline) {
        const auto datagram = m_network->receive(deadline);
        const auto acknowledge = datagram && datagram->source == m_camera
                                     ? gvcp::parseAcknowledge(datagram->payload)
                                     : std::nullopt;
        if (!acknowledge || acknowledge->id != id)
            continue;
        if (acknowledge->command == gvcp::PendingCommand) {
            if (const auto more = gvcp::parsePendingAck(acknowledge->payload))
                deadline = std::min(end, std::max(deadline, m_network->now() + *more + TimeOfOneTry));
            continue;
        }
        if (acknowledge->command != request.command)
            continue;
        if (acknowledge->status != gvcp::Status::Success)
            return acknowledge->status;
        if (const auto data = request.dataOf(acknowledge->payload)) {
            answer.assign(data->begin(), data->end());
            return gvcp::Status::Success;
        }
    }
    return std::nullopt;
}

/// Lets the time of one try pass.
void ControlChannel::pause()
{
    const auto until = m_network->now() + TimeOfOneTry;
    while (m_network->now() < until)
        m_network->receive(until);
}

} // namespace sdk
