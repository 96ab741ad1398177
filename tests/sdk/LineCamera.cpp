// SPDX-License-Identifier: Apache-2.0
#include "tests/sdk/LineCamera.h"

#include "gvcp/ForceIp.h"
#include "gvcp/Memory.h"

#include <algorithm>

using namespace std::chrono_literals;
using gvcp::Command;
using gvcp::Status;
namespace reg = gvcp::reg;

namespace {

constexpr auto AnswerTime = 2ms;
constexpr auto HeartbeatTimeout = 3s;
constexpr auto TimeOfReboot = 2s;
constexpr auto TimeOfRestart = 500ms;
constexpr std::uint32_t OptionalBits = 0x80000000; ///< Some of the register that are nobody's business.

} // namespace

LineCamera::LineCamera(FakeNetwork& where, std::uint8_t number)
    : network(where),
      camera(cameraAt(number, base::Ipv4(("192.168.1.20"_ip).number() + number))),
      stored(camera.ip),
      leased{base::Ipv4(("192.168.1.120"_ip).number() + number), "255.255.255.0"_ip, "192.168.1.1"_ip},
      linkLocal{base::Ipv4(("169.254.7.0"_ip).number() + number), "255.255.0.0"_ip, {}}
{
    camera.ipConfigOptions = 7;
    camera.ipConfigCurrent = 5 | OptionalBits;
    camera.userDefinedName = "before";
}

void LineCamera::obtainAddress(sdk::Clock::duration away)
{
    backAt = network.now() + away;
    privilege = 0;
    isHeldByOther = false;
    if ((camera.ipConfigCurrent & 1) != 0)
        camera.ip = stored;
    else if ((camera.ipConfigCurrent & 2) != 0 && !leased.address.isUnspecified())
        camera.ip = leased;
    else
        camera.ip = linkLocal;
}

void LineCamera::take(const FakeNetwork::Sent& sent)
{
    const auto command = sent.command();
    const bool isForAll =
        sent.destination == base::LimitedBroadcast || sent.destination == "192.168.1.255"_ip;
    if (!isThere() || (!isForAll && sent.destination != camera.ip.address))
        return;
    if (privilege != 0 && !isHeldByOther && network.now() - m_silentSince > HeartbeatTimeout)
        privilege = 0;
    const bool isHit = ++packets == eventAt;
    m_losesAnswer = isHit && event == Event::AnswerLost;
    if (isHit && event == Event::Unplugged)
        isPlugged = false;
    if (isHit && event == Event::Rebooted)
        obtainAddress(TimeOfReboot);
    if (isHit && event == Event::Held) {
        privilege = gvcp::Privilege::Exclusive;
        isHeldByOther = true;
    }
    if (!isThere() || (isHit && event == Event::CommandLost) || isLost())
        return;
    m_silentSince = network.now();
    obey(command);
}

void LineCamera::answer(const gvcp::CommandPacket& command, Status status, const base::Bytes& payload)
{
    if (!m_losesAnswer && !isLost())
        network.deliver(AnswerTime, 0, camera.ip.address,
                        gvcp::encodeAcknowledge(command.command, status, command.id, payload));
}

std::optional<std::uint32_t> LineCamera::word(std::uint32_t address) const
{
    const base::Bytes map = gvcp::encodeDiscoveryAck(camera);
    if (address + 4 <= map.size())
        return base::readU32(map, address);
    switch (address) {
    case reg::InterfaceCount:
        return 1;
    case reg::PersistentIp:
        return stored.address.number();
    case reg::PersistentSubnetMask:
        return stored.mask.number();
    case reg::PersistentGateway:
        return stored.gateway.number();
    case reg::ControlChannelPrivilege:
        return privilege;
    default:
        return std::nullopt;
    }
}

Status LineCamera::write(std::uint32_t address, std::uint32_t value)
{
    if (address == reg::ControlChannelPrivilege) {
        privilege = value;
        return Status::Success;
    }
    if (address == writeProtected)
        return Status::WriteProtect;
    ++writes;
    const auto textAt = reg::UserDefinedName.address;
    if (address >= textAt && address < textAt + reg::UserDefinedName.size) {
        camera.userDefinedName.resize(reg::UserDefinedName.size);
        for (unsigned i = 0; i < 4; ++i)
            camera.userDefinedName[address - textAt + i] = static_cast<char>(value >> (24 - 8 * i));
        if (address + 4 == textAt + reg::UserDefinedName.size)
            camera.userDefinedName.resize(std::min(camera.userDefinedName.find('\0'), std::size_t{15}));
        return Status::Success;
    }
    switch (address) {
    case reg::CurrentIpConfig:
        camera.ipConfigCurrent = value;
        return Status::Success;
    case reg::PersistentIp:
        stored.address = base::Ipv4(value);
        return Status::Success;
    case reg::PersistentSubnetMask:
        stored.mask = base::Ipv4(value);
        return Status::Success;
    case reg::PersistentGateway:
        stored.gateway = base::Ipv4(value);
        return Status::Success;
    default:
        return Status::InvalidAddress;
    }
}

void LineCamera::obey(const gvcp::CommandPacket& command)
{
    const auto at = command.payload.size() >= 4 ? base::readU32(command.payload, 0) : 0;
    if (command.command == Command::Discovery) {
        answer(command, Status::Success, gvcp::encodeDiscoveryAck(camera));
        return;
    }
    if (command.command == Command::ForceIp) {
        const auto force = gvcp::parseForceIp(command.payload).value();
        if (force.mac != camera.mac || privilege != 0)
            return;
        const bool isRestart = force.ip.address.isUnspecified();
        answer(command, Status::Success);
        if (isRestart && !ignoresRestarts)
            obtainAddress(TimeOfRestart);
        else if (!isRestart)
            camera.ip = force.ip;
        return;
    }
    if (isHeldByOther) {
        answer(command, Status::AccessDenied);
        return;
    }
    const bool isWrite = command.command == Command::WriteRegister || command.command == Command::WriteMemory;
    if (isWrite && privilege == 0 && at != reg::ControlChannelPrivilege) {
        answer(command, Status::AccessDenied);
        return;
    }
    switch (command.command) {
    case Command::ReadRegister: {
        const auto value = word(at);
        answer(command, value ? Status::Success : Status::InvalidAddress,
               value ? gvcp::encodeWords({*value}) : base::Bytes());
        break;
    }
    case Command::ReadMemory: {
        const auto range = gvcp::parseMemoryRange(command.payload).value();
        base::Bytes data(range.count);
        for (std::uint32_t i = 0; i < range.count; i += 4)
            base::writeU32(data, i, word(range.address + i).value());
        answer(command, Status::Success, gvcp::encodeMemoryBlock({range.address, data}));
        break;
    }
    case Command::WriteRegister:
        answer(command, write(at, base::readU32(command.payload, 4)), gvcp::encodeWriteResult(1));
        break;
    default: {
        const auto block = gvcp::parseMemoryBlock(command.payload).value();
        Status status = canWriteMemory ? Status::Success : Status::NotImplemented;
        for (std::uint32_t i = 0; status == Status::Success && i < block.data.size(); i += 4)
            status = write(block.address + i, base::readU32(block.data, i));
        answer(command, status, gvcp::encodeWriteResult(1));
    }
    }
}
