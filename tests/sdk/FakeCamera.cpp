// SPDX-License-Identifier: Apache-2.0
#include "tests/sdk/FakeCamera.h"

#include "gvcp/ForceIp.h"
#include "gvcp/Memory.h"

#include <cstdio>

using namespace std::chrono_literals;
using gvcp::Command;
using gvcp::Status;
namespace reg = gvcp::reg;

namespace {

/// Owned by the code under test in place of the test's network, which outlives it.
class Connection : public sdk::Network
{
public:
    explicit Connection(FakeNetwork& network) : m_network(network) {}

    const std::vector<sdk::Adapter>& adapters() const override { return m_network.adapters(); }
    sdk::Clock::time_point now() const override { return m_network.now(); }
    bool send(std::size_t adapter, base::Ipv4 source, base::Ipv4 destination,
              base::ByteView datagram) override
    {
        return m_network.send(adapter, source, destination, datagram);
    }
    std::optional<sdk::Datagram> receive(sdk::Clock::time_point until) override
    {
        return m_network.receive(until);
    }

private:
    FakeNetwork& m_network;
};

std::string describe(const gvcp::CommandPacket& command)
{
    const base::ByteView payload = command.payload;
    char text[80] = "?";
    switch (command.command) {
    case Command::ReadRegister:
        std::snprintf(text, sizeof text, "READREG %08X", base::readU32(payload, 0));
        break;
    case Command::WriteRegister:
        std::snprintf(text, sizeof text, "WRITEREG %08X=%08X", base::readU32(payload, 0),
                      base::readU32(payload, 4));
        break;
    case Command::ReadMemory:
        std::snprintf(text, sizeof text, "READMEM %08X+%u", base::readU32(payload, 0),
                      base::readU16(payload, 6));
        break;
    case Command::WriteMemory:
        std::snprintf(text, sizeof text, "WRITEMEM %08X+%zu", base::readU32(payload, 0), payload.size() - 4);
        break;
    case Command::ForceIp:
        return "FORCEIP " + gvcp::parseForceIp(payload).value().ip.address.toText();
    case Command::Discovery:
        return "DISCOVERY";
    }
    return text;
}

} // namespace

FakeCamera::FakeCamera()
{
    words = {{reg::MacHigh, 0x0200},
             {reg::MacLow, 0x00000001},
             {reg::ControlChannelPrivilege, 0},
             {reg::HeartbeatTimeout, 3000},
             {reg::GvcpCapability, gvcp::Capability::UserDefinedName | gvcp::Capability::WriteMemory}};
    network.onSend = [this](const FakeNetwork::Sent& sent) {
        const auto command = sent.command();
        if (sent.destination != Ip && command.command != Command::ForceIp)
            return;
        if (!onCommand(command))
            obey(command);
    };
}

std::unique_ptr<sdk::Network> FakeCamera::connect()
{
    return std::make_unique<Connection>(network);
}

void FakeCamera::becomeAnother()
{
    words[reg::MacLow] = 0x00000002;
    words[reg::ControlChannelPrivilege] = 0;
}

void FakeCamera::setBytes(std::uint32_t address, const std::string& bytes)
{
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        const auto at = static_cast<std::uint32_t>(address + i);
        const unsigned shift = 8 * (3 - at % 4);
        std::uint32_t& word = words[at / 4 * 4];
        word = (word & ~(0xFFu << shift)) | static_cast<std::uint8_t>(bytes[i]) * (1u << shift);
    }
}

std::string FakeCamera::bytes(std::uint32_t address, std::size_t size) const
{
    std::string result;
    for (std::size_t i = 0; i < size; ++i) {
        const auto at = static_cast<std::uint32_t>(address + i);
        result += static_cast<char>(words.at(at / 4 * 4) >> 8 * (3 - at % 4));
    }
    return result;
}

void FakeCamera::storeAddress(const base::IpSettings& settings, std::uint32_t at)
{
    words[at] = settings.address.number();
    words[at + 0x10] = settings.mask.number();
    words[at + 0x20] = settings.gateway.number();
}

base::IpSettings FakeCamera::storedAddress(std::uint32_t at) const
{
    return {base::Ipv4(words.at(at)), base::Ipv4(words.at(at + 0x10)), base::Ipv4(words.at(at + 0x20))};
}

std::vector<std::string> FakeCamera::log() const
{
    std::vector<std::string> result;
    for (const FakeNetwork::Sent& sent : network.sent())
        result.push_back(describe(sent.command()));
    return result;
}

void FakeCamera::answer(const gvcp::CommandPacket& command, Status status, const base::Bytes& payload)
{
    network.deliver(1ms, 0, Ip, gvcp::encodeAcknowledge(command.command, status, command.id, payload));
}

void FakeCamera::obey(const gvcp::CommandPacket& command)
{
    base::Bytes payload;
    Status status = Status::Success;
    const auto address = base::readU32(command.payload, 0);
    switch (command.command) {
    case Command::ReadRegister:
        if (words.count(address) > 0)
            payload = gvcp::encodeWords({words.at(address)});
        else
            status = Status::InvalidAddress;
        break;
    case Command::WriteRegister:
        status = write(address, base::readU32(command.payload, 4));
        payload = gvcp::encodeWriteResult(1);
        break;
    case Command::ReadMemory:
        status = readMemory(command.payload, payload);
        break;
    case Command::WriteMemory:
        status = writeMemory(command.payload);
        payload = gvcp::encodeWriteResult(1);
        break;
    default:
        break;
    }
    // An error's acknowledge is the bare header, as some cameras have it.
    answer(command, status, status == Status::Success ? payload : base::Bytes());
}

Status FakeCamera::write(std::uint32_t address, std::uint32_t value)
{
    if (words.count(address) == 0)
        return Status::InvalidAddress;
    if (address == writeProtected)
        return Status::WriteProtect;
    words[address] = value;
    return Status::Success;
}

Status FakeCamera::readMemory(base::ByteView payload, base::Bytes& answer) const
{
    const auto range = gvcp::parseMemoryRange(payload).value();
    if (range.address % 4 != 0 || range.count % 4 != 0)
        return Status::BadAlignment;
    base::Bytes data(range.count);
    for (std::uint32_t i = 0; i < range.count; i += 4) {
        const auto word = words.find(range.address + i);
        if (word == words.end())
            return Status::InvalidAddress;
        base::writeU32(data, i, word->second);
    }
    answer = gvcp::encodeMemoryBlock({range.address, data});
    return Status::Success;
}

Status FakeCamera::writeMemory(base::ByteView payload)
{
    const auto block = gvcp::parseMemoryBlock(payload).value();
    if (block.address % 4 != 0 || block.data.size() % 4 != 0)
        return Status::BadAlignment;
    for (std::uint32_t i = 0; i < block.data.size(); i += 4) {
        const Status status = write(block.address + i, base::readU32(block.data, i));
        if (status != Status::Success)
            return status;
    }
    return Status::Success;
}
