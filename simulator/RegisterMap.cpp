// SPDX-License-Identifier: Apache-2.0
#include "simulator/RegisterMap.h"

#include "gvcp/Registers.h"

#include <algorithm>
#include <stdexcept>

namespace simulator {

using gvcp::Status;
namespace reg = gvcp::reg;

namespace {

// Registers that only this side of the protocol fills in.
constexpr std::uint32_t Version = 0x0000;
constexpr std::uint32_t CurrentIp = 0x0024;
constexpr std::uint32_t CurrentSubnetMask = 0x0034;
constexpr std::uint32_t CurrentGateway = 0x0044;
constexpr std::uint32_t ManufacturerName = 0x0048;
constexpr std::uint32_t ModelName = 0x0068;
constexpr std::uint32_t DeviceVersion = 0x0088;
constexpr std::uint32_t ManufacturerInfo = 0x00A8;
constexpr std::uint32_t SerialNumber = 0x00D8;
constexpr std::uint32_t FirstUrl = 0x0200;
constexpr std::uint32_t SecondUrl = 0x0400;
constexpr std::uint32_t MessageChannelCount = 0x0900;
constexpr std::uint32_t StreamChannelCount = 0x0904;
constexpr std::uint32_t ApplicationPort = 0x0A04;
constexpr std::uint32_t ApplicationAddress = 0x0A14;

constexpr std::size_t DiscoveryBlockSize = 248;
constexpr std::size_t UserNameSize = 16;
constexpr std::uint32_t IpMethodBits =
    gvcp::IpConfig::Persistent | gvcp::IpConfig::Dhcp | gvcp::IpConfig::LinkLocal;

constexpr std::uint32_t bitsOf(CameraConfig::IpMethod method)
{
    switch (method) {
    case CameraConfig::IpMethod::Persistent:
        return gvcp::IpConfig::LinkLocal | gvcp::IpConfig::Persistent;
    case CameraConfig::IpMethod::Dhcp:
        return gvcp::IpConfig::LinkLocal | gvcp::IpConfig::Dhcp;
    case CameraConfig::IpMethod::LinkLocal:
        break;
    }
    return gvcp::IpConfig::LinkLocal;
}

} // namespace

RegisterMap::RegisterMap(const CameraConfig& config)
    : RegisterMap(config, {bitsOf(config.ipMethod), config.persistent, config.userName})
{
    setCurrentIp(config.ip);
}

RegisterMap::RegisterMap(const CameraConfig& config, const StoredSettings& settings)
    : m_description(config.description.file),
      m_resetRegister(config.resetRegister),
      m_hasPersistentIp(config.hasPersistentIp)
{
    layOut(config);
    const auto& mac = config.mac.bytes;
    setWord(Version, 0x00010002);
    setWord(reg::DeviceMode, 0x80000001); // big-endian, UTF-8
    setWord(reg::MacHigh, static_cast<std::uint32_t>(mac[0] << 8 | mac[1]));
    setWord(reg::MacLow, gvcp::readU32(mac, 2));
    setWord(reg::SupportedIpConfig,
            m_hasPersistentIp ? IpMethodBits : IpMethodBits & ~gvcp::IpConfig::Persistent);
    setText(ManufacturerName, 32, config.manufacturer);
    setText(ModelName, 32, config.model);
    setText(DeviceVersion, 32, config.version);
    setText(ManufacturerInfo, 48, config.info);
    setText(SerialNumber, 16, config.serial);
    setText(FirstUrl, CameraConfig::UrlSize, config.description.url);
    setText(SecondUrl, CameraConfig::UrlSize, config.description.secondUrl);
    setWord(reg::InterfaceCount, 1);
    setWord(StreamChannelCount, 1);
    setWord(reg::GvcpCapability, capabilities(config));
    setWord(reg::HeartbeatTimeout, static_cast<std::uint32_t>(config.heartbeatTimeout.count()));
    store(settings);
}

void RegisterMap::layOut(const CameraConfig& config)
{
    constexpr bool writable = true;
    add(Version, reg::CurrentIpConfig - Version, !writable);
    add(reg::CurrentIpConfig, 4, writable);
    add(reg::CurrentIpConfig + 4, reg::UserDefinedName - reg::CurrentIpConfig - 4, !writable);
    add(reg::UserDefinedName, UserNameSize, config.userNameAccess == CameraConfig::UserNameAccess::ReadWrite);
    add(FirstUrl, CameraConfig::UrlSize, !writable);
    add(SecondUrl, CameraConfig::UrlSize, !writable);
    add(reg::InterfaceCount, 4, !writable);
    if (m_hasPersistentIp) {
        add(reg::PersistentIp, 4, writable);
        add(reg::PersistentSubnetMask, 4, writable);
        add(reg::PersistentGateway, 4, writable);
    }
    add(MessageChannelCount, 8, !writable);
    add(reg::GvcpCapability, 4, !writable);
    add(reg::HeartbeatTimeout, 4, writable);
    // Written only by way of the privilege's own rules, which are the protocol's.
    add(reg::ControlChannelPrivilege, 4, !writable);
    add(ApplicationPort, 4, !writable);
    add(ApplicationAddress, 4, !writable);
    add(m_resetRegister, 4, writable);
}

std::uint32_t RegisterMap::capabilities(const CameraConfig& config) const
{
    std::uint32_t bits =
        gvcp::Capability::SerialNumber | gvcp::Capability::PendingAck | gvcp::Capability::Concatenation;
    if (config.userNameAccess != CameraConfig::UserNameAccess::None)
        bits |= gvcp::Capability::UserDefinedName;
    if (config.writesMemory)
        bits |= gvcp::Capability::WriteMemory;
    return bits;
}

Status RegisterMap::read(std::uint32_t address, std::span<std::uint8_t> out) const
{
    if (address % 4 != 0 || out.size() % 4 != 0)
        return Status::BadAlignment;
    for (std::size_t done = 0; done < out.size(); done += 4) {
        const std::uint8_t* const from = wordAt(static_cast<std::uint32_t>(address + done));
        if (!from)
            return Status::InvalidAddress;
        std::copy_n(from, 4, out.begin() + static_cast<std::ptrdiff_t>(done));
    }
    return Status::Success;
}

Status RegisterMap::write(std::uint32_t address, gvcp::ByteView data)
{
    if (address % 4 != 0 || data.size() % 4 != 0)
        return Status::BadAlignment;
    for (std::size_t done = 0; done < data.size(); done += 4) {
        const auto at = static_cast<std::uint32_t>(address + done);
        if (!wordAt(at))
            return Status::InvalidAddress;
        const Region* const region = regionAt(at);
        if (!region || !region->writable)
            return Status::WriteProtect;
    }
    for (std::size_t done = 0; done < data.size(); done += 4) {
        const auto at = static_cast<std::uint32_t>(address + done);
        std::uint32_t value = gvcp::readU32(data, done);
        // What the camera has not got cannot be switched on, nor link-local addressing off. The bits above
        // belong to other features: they stay as they are written.
        if (at == reg::CurrentIpConfig)
            value = (value & ~(IpMethodBits & ~word(reg::SupportedIpConfig))) | gvcp::IpConfig::LinkLocal;
        setWord(at, value);
    }
    return Status::Success;
}

std::uint32_t RegisterMap::word(std::uint32_t address) const
{
    const Region* const region = regionAt(address);
    if (!region)
        throw std::logic_error("no such register");
    return gvcp::readU32(region->bytes, address - region->address);
}

void RegisterMap::setWord(std::uint32_t address, std::uint32_t value)
{
    gvcp::writeU32(bytesAt(address), 0, value);
}

IpSettings RegisterMap::currentIp() const
{
    return {word(CurrentIp), word(CurrentSubnetMask), word(CurrentGateway)};
}

void RegisterMap::setCurrentIp(const IpSettings& ip)
{
    setWord(CurrentIp, ip.address);
    setWord(CurrentSubnetMask, ip.mask);
    setWord(CurrentGateway, ip.gateway);
}

StoredSettings RegisterMap::stored() const
{
    StoredSettings settings;
    settings.ipConfig = word(reg::CurrentIpConfig);
    if (m_hasPersistentIp)
        settings.persistent = {word(reg::PersistentIp), word(reg::PersistentSubnetMask),
                               word(reg::PersistentGateway)};
    const gvcp::Bytes& name = regionAt(reg::UserDefinedName)->bytes;
    settings.userName.assign(name.begin(), std::find(name.begin(), name.end(), 0));
    return settings;
}

void RegisterMap::store(const StoredSettings& settings)
{
    setWord(reg::CurrentIpConfig, settings.ipConfig);
    if (m_hasPersistentIp) {
        setWord(reg::PersistentIp, settings.persistent.address);
        setWord(reg::PersistentSubnetMask, settings.persistent.mask);
        setWord(reg::PersistentGateway, settings.persistent.gateway);
    }
    setText(reg::UserDefinedName, UserNameSize, settings.userName);
}

bool RegisterMap::takeResetRequest()
{
    const bool wasWritten = word(m_resetRegister) != 0;
    setWord(m_resetRegister, 0);
    return wasWritten;
}

void RegisterMap::setController(std::uint32_t privilege, gvcp::Ipv4 address, std::uint16_t port)
{
    setWord(reg::ControlChannelPrivilege, privilege);
    setWord(ApplicationAddress, address);
    setWord(ApplicationPort, port);
}

gvcp::Bytes RegisterMap::discoveryBlock() const
{
    gvcp::Bytes block(DiscoveryBlockSize);
    read(Version, block);
    return block;
}

const RegisterMap::Region* RegisterMap::regionAt(std::uint32_t address) const
{
    const auto found = std::find_if(m_regions.begin(), m_regions.end(),
                                    [address](const Region& region) { return region.holds(address); });
    return found == m_regions.end() ? nullptr : &*found;
}

const std::uint8_t* RegisterMap::wordAt(std::uint32_t address) const
{
    constexpr std::uint32_t Begin = CameraConfig::DescriptionAddress;
    if (const Region* const region = regionAt(address))
        return &region->bytes[address - region->address];
    if (m_description && address >= Begin && address - Begin < m_description->size())
        return &(*m_description)[address - Begin];
    return nullptr;
}

void RegisterMap::add(std::uint32_t address, std::size_t size, bool writable)
{
    m_regions.push_back({address, writable, gvcp::Bytes(size)});
}

void RegisterMap::setText(std::uint32_t address, std::size_t size, const std::string& text)
{
    std::copy_n(text.begin(), std::min(text.size(), size), bytesAt(address).begin());
}

std::span<std::uint8_t> RegisterMap::bytesAt(std::uint32_t address)
{
    for (Region& region : m_regions)
        if (region.holds(address))
            return std::span(region.bytes).subspan(address - region.address);
    throw std::logic_error("no such register");
}

} // namespace simulator
