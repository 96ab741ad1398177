// SPDX-License-Identifier: Apache-2.0
#include "sdk/line/Dialog.h"

#include "gvcp/Memory.h"
#include "gvcp/Registers.h"

#include <algorithm>

namespace sdk {

namespace {

namespace reg = gvcp::reg;

/// How often a command is sent: of 200 cameras that a network with 30 % loss each way hides, none is given
/// up.
constexpr int Tries = 15;

} // namespace

Task<Nothing> Dialog::requireFree()
{
    try {
        const std::uint32_t privilege = co_await readRegister(reg::ControlChannelPrivilege);
        if (privilege != gvcp::Privilege::Open)
            throw CameraError(RZ_ERROR_ACCESS_DENIED, "another application holds it");
    } catch (const CameraError& error) {
        if (error.code() == RZ_ERROR_ACCESS_DENIED)
            throw CameraError(RZ_ERROR_ACCESS_DENIED, "another application holds it");
        // It will show, and may be mended by the camera's new address.
        co_return {};
    }
    co_return {};
}

Task<Nothing> Dialog::takeControl()
{
    co_await writeRegister(reg::ControlChannelPrivilege, gvcp::Privilege::Exclusive);
    const std::uint32_t privilege = co_await readRegister(reg::ControlChannelPrivilege);
    if ((privilege & gvcp::Privilege::Exclusive) == 0)
        throw CameraError(RZ_ERROR_ACCESS_DENIED, "it does not give exclusive control");
    co_return {};
}

Task<Nothing> Dialog::giveControlBack(bool isSilent)
{
    try {
        co_await ask(CameraCommand::writeRegister(reg::ControlChannelPrivilege, gvcp::Privilege::Open),
                     isSilent ? 1 : Tries);
    } catch (const CameraError&) {
        // It is gone, or under another application's control by now, or lets go by its own time-out.
        co_return {};
    }
    co_return {};
}

Task<unsigned> Dialog::findInterface()
{
    base::MacAddress first;
    std::uint32_t count = 1;
    for (unsigned number = 0; number < count; ++number) {
        // Both registers at once: the camera that answers may change from one packet to the next.
        const base::Bytes registers =
            co_await ask(CameraCommand::readMemory(reg::ofInterface(number, reg::MacHigh), 8), Tries);
        base::MacAddress mac;
        std::copy(registers.begin() + 2, registers.end(), mac.bytes.begin());
        if (mac == m_mac)
            co_return number;
        if (number == 0) {
            first = mac;
            count = std::min(co_await readRegister(reg::InterfaceCount), gvcp::MaxInterfaces);
        }
    }
    throw CameraError(RZ_ERROR_OTHER_CAMERA, "at its address " + m_seen.identity.ip.address.toText() +
                                                 " the camera " + first.toText() + " answers");
}

Task<std::uint32_t> Dialog::readIpConfig(unsigned interface)
{
    return readRegister(reg::ofInterface(interface, reg::CurrentIpConfig));
}

Task<Nothing> Dialog::writeIpConfig(unsigned interface, std::uint32_t value)
{
    return writeRegister(reg::ofInterface(interface, reg::CurrentIpConfig), value);
}

Task<base::IpSettings> Dialog::readStored(unsigned interface)
{
    base::IpSettings stored;
    stored.address = base::Ipv4(co_await readRegister(reg::ofInterface(interface, reg::PersistentIp)));
    stored.mask = base::Ipv4(co_await readRegister(reg::ofInterface(interface, reg::PersistentSubnetMask)));
    stored.gateway = base::Ipv4(co_await readRegister(reg::ofInterface(interface, reg::PersistentGateway)));
    co_return stored;
}

Task<Nothing> Dialog::writeStored(unsigned interface, base::IpSettings present, base::IpSettings wanted)
{
    if (present.address != wanted.address)
        co_await writeRegister(reg::ofInterface(interface, reg::PersistentIp), wanted.address.number());
    if (present.mask != wanted.mask)
        co_await writeRegister(reg::ofInterface(interface, reg::PersistentSubnetMask), wanted.mask.number());
    if (present.gateway != wanted.gateway)
        co_await writeRegister(reg::ofInterface(interface, reg::PersistentGateway), wanted.gateway.number());
    co_return {};
}

Task<Nothing> Dialog::writeName(std::string name)
{
    base::Bytes bytes(reg::UserDefinedName.size, 0);
    std::copy_n(name.begin(), std::min(name.size(), bytes.size() - 1), bytes.begin());
    bool hasWriteMemory = true;
    try {
        co_await ask(CameraCommand::writeMemory(reg::UserDefinedName.address, bytes), Tries);
    } catch (const CameraError& error) {
        if (error.status() != gvcp::Status::NotImplemented)
            throw;
        hasWriteMemory = false;
    }
    for (std::uint32_t i = 0; !hasWriteMemory && i < bytes.size(); i += 4)
        co_await writeRegister(reg::UserDefinedName.address + i, base::readU32(bytes, i));
    co_return {};
}

Task<base::Bytes> Dialog::ask(CameraCommand command, int tries)
{
    const base::Ipv4 camera = m_seen.identity.ip.address;
    Command step(m_line, command.plan(m_line.network(), m_seen.adapter, camera, tries));
    co_await m_line.wait(step);
    co_return command.resultOf(step.exchange(), camera);
}

Task<std::uint32_t> Dialog::readRegister(std::uint32_t address)
{
    const base::Bytes value = co_await ask(CameraCommand::readRegister(address), Tries);
    co_return base::readU32(value, 0);
}

Task<Nothing> Dialog::writeRegister(std::uint32_t address, std::uint32_t value)
{
    co_await ask(CameraCommand::writeRegister(address, value), Tries);
    co_return {};
}

} // namespace sdk
