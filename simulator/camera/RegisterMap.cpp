// SPDX-License-Identifier: Apache-2.0
#include "simulator/camera/RegisterMap.h"

#include "gvcp/Registers.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

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
constexpr std::uint32_t IpMethodBits =
    gvcp::IpConfig::Persistent | gvcp::IpConfig::Dhcp | gvcp::IpConfig::LinkLocal;

/// Where an interface has an address, given as those of the first one.
struct IpRegisters
{
    std::uint32_t address;
    std::uint32_t mask;
    std::uint32_t gateway;
};
constexpr IpRegisters Current{CurrentIp, CurrentSubnetMask, CurrentGateway};
constexpr IpRegisters Persistent{reg::PersistentIp, reg::PersistentSubnetMask, reg::PersistentGateway};

base::IpSettings readIp(const RegisterMap& map, unsigned interface, const IpRegisters& at)
{
    const auto read = [&](std::uint32_t ofFirst) {
        return base::Ipv4(map.word(reg::ofInterface(interface, ofFirst)));
    };
    return {read(at.address), read(at.mask), read(at.gateway)};
}

void writeIp(RegisterMap& map, unsigned interface, const IpRegisters& at, const base::IpSettings& ip)
{
    map.setWord(reg::ofInterface(interface, at.address), ip.address.number());
    map.setWord(reg::ofInterface(interface, at.mask), ip.mask.number());
    map.setWord(reg::ofInterface(interface, at.gateway), ip.gateway.number());
}

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

/// The interfaces that are on no network have something of their own.
StoredSettings factorySettings(const CameraConfig& config)
{
    StoredSettings settings;
    for (unsigned number = 0; number < config.interfaceCount(); ++number) {
        const base::IpSettings unused{"10.9.0.1"_ip.plus(number << 8), "255.255.255.0"_ip, {}};
        settings.interfaces.push_back(
            number == config.interface ? StoredIp{bitsOf(config.ipMethod), config.persistent}
                                       : StoredIp{bitsOf(CameraConfig::IpMethod::Persistent), unused});
    }
    settings.userName = config.userName;
    return settings;
}

using MakersRegister = CameraConfig::MakersRegister;

/// With the reset register in any case.
std::vector<MakersRegister> makersRegisters(const CameraConfig& config)
{
    std::vector<MakersRegister> all = config.registers;
    const auto isReset = [&config](const MakersRegister& each) {
        return each.address == config.resetRegister;
    };
    if (std::none_of(all.begin(), all.end(), isReset))
        all.push_back({config.resetRegister});
    return all;
}

} // namespace

RegisterMap::RegisterMap(const CameraConfig& config) : RegisterMap(config, factorySettings(config))
{
    setCurrentIp(config.ip);
}

RegisterMap::RegisterMap(const CameraConfig& config, const StoredSettings& settings)
    : m_description(config.description.file),
      m_interface(config.interface),
      m_interfaceCount(config.interfaceCount()),
      m_makers(makersRegisters(config)),
      m_resetRegister(config.resetRegister),
      m_resetMask(config.resetMask),
      m_hasPersistentIp(config.hasPersistentIp)
{
    layOut(config);
    setWord(Version, 0x00010002);
    setWord(reg::DeviceMode, 0x80000001); // big-endian, UTF-8
    for (unsigned number = 0; number < m_interfaceCount; ++number) {
        const auto& mac = (number == m_interface ? config.mac : config.interfaceMacs[number]).bytes;
        setWord(reg::ofInterface(number, reg::MacHigh), static_cast<std::uint32_t>(mac[0] << 8 | mac[1]));
        setWord(reg::ofInterface(number, reg::MacLow), base::readU32(mac, 2));
        setWord(reg::ofInterface(number, reg::SupportedIpConfig),
                hasStoredAddress(number) ? IpMethodBits : IpMethodBits & ~gvcp::IpConfig::Persistent);
    }
    setText(ManufacturerName, 32, config.manufacturer);
    setText(ModelName, 32, config.model);
    setText(DeviceVersion, 32, config.version);
    setText(ManufacturerInfo, 48, config.info);
    setText(SerialNumber, 16, config.serial);
    setText(FirstUrl, CameraConfig::UrlSize, config.description.url);
    setText(SecondUrl, CameraConfig::UrlSize, config.description.secondUrl);
    setWord(reg::InterfaceCount, m_interfaceCount);
    setWord(StreamChannelCount, 1);
    setWord(reg::GvcpCapability, capabilities(config));
    setWord(reg::HeartbeatTimeout, static_cast<std::uint32_t>(config.heartbeatTimeout.count()));
    setWord(reg::GvcpConfiguration, config.pendingAckOn ? gvcp::Configuration::PendingAck : 0);
    store(settings);
}

void RegisterMap::layOut(const CameraConfig& config)
{
    constexpr bool writable = true;
    add(Version, reg::CurrentIpConfig - Version, !writable);
    add(reg::CurrentIpConfig, 4, writable);
    add(reg::CurrentIpConfig + 4, reg::UserDefinedName.address - reg::CurrentIpConfig - 4, !writable);
    add(reg::UserDefinedName.address, reg::UserDefinedName.size,
        config.userNameAccess == CameraConfig::UserNameAccess::ReadWrite);
    add(FirstUrl, CameraConfig::UrlSize, !writable);
    add(SecondUrl, CameraConfig::UrlSize, !writable);
    add(reg::InterfaceCount, 4, !writable);
    for (unsigned number = 0; number < m_interfaceCount; ++number)
        layOutInterface(number);
    add(MessageChannelCount, 8, !writable);
    add(reg::GvcpCapability, 4, !writable);
    add(reg::HeartbeatTimeout, 4, writable);
    add(reg::GvcpConfiguration, 4, writable);
    // Written only by way of the privilege's own rules, which are the protocol's.
    add(reg::ControlChannelPrivilege, 4, !writable);
    add(ApplicationPort, 4, !writable);
    add(ApplicationAddress, 4, !writable);
    for (const MakersRegister& each : m_makers) {
        add(each.address, 4, each.access != MakersRegister::Access::ReadOnly);
        setWord(each.address, each.value);
    }
}

bool RegisterMap::isWriteOnly(std::uint32_t address) const
{
    return std::any_of(m_makers.begin(), m_makers.end(), [address](const MakersRegister& each) {
        return each.address == address && each.access == MakersRegister::Access::WriteOnly;
    });
}

void RegisterMap::layOutInterface(unsigned number)
{
    constexpr bool writable = true;
    // The first one has these at the beginning of the map.
    if (number > 0) {
        add(reg::ofInterface(number, reg::MacHigh), reg::CurrentIpConfig - reg::MacHigh, !writable);
        add(reg::ofInterface(number, reg::CurrentIpConfig), 4, writable);
        for (const std::uint32_t each : {CurrentIp, CurrentSubnetMask, CurrentGateway})
            add(reg::ofInterface(number, each), 4, !writable);
    }
    if (hasStoredAddress(number))
        for (const std::uint32_t each :
             {reg::PersistentIp, reg::PersistentSubnetMask, reg::PersistentGateway})
            add(reg::ofInterface(number, each), 4, writable);
}

std::uint32_t RegisterMap::capabilities(const CameraConfig& config) const
{
    std::uint32_t bits = gvcp::Capability::SerialNumber | gvcp::Capability::Concatenation;
    if (config.userNameAccess != CameraConfig::UserNameAccess::None)
        bits |= gvcp::Capability::UserDefinedName;
    if (config.writesMemory)
        bits |= gvcp::Capability::WriteMemory;
    if (config.hasPendingAck)
        bits |= gvcp::Capability::PendingAck;
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
        if (isWriteOnly(static_cast<std::uint32_t>(address + done)))
            return Status::AccessDenied;
        std::copy_n(from, 4, out.begin() + static_cast<std::ptrdiff_t>(done));
    }
    return Status::Success;
}

Status RegisterMap::write(std::uint32_t address, base::ByteView data)
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
        const std::uint32_t value = accepted(at, base::readU32(data, done));
        setWord(at, value);
        m_isResetAsked = m_isResetAsked || (at == m_resetRegister && (value & m_resetMask) != 0);
    }
    return Status::Success;
}

std::uint32_t RegisterMap::accepted(std::uint32_t address, std::uint32_t value) const
{
    // What the camera has not got cannot be switched on.
    if (address == reg::GvcpConfiguration)
        return word(reg::GvcpCapability) & gvcp::Capability::PendingAck
                   ? value & gvcp::Configuration::PendingAck
                   : 0;
    for (unsigned number = 0; number < m_interfaceCount; ++number) {
        if (address != reg::ofInterface(number, reg::CurrentIpConfig))
            continue;
        // Nor can link-local addressing be switched off. The bits above belong to other features: they stay
        // as they are written.
        const std::uint32_t supported = word(reg::ofInterface(number, reg::SupportedIpConfig));
        return (value & ~(IpMethodBits & ~supported)) | gvcp::IpConfig::LinkLocal;
    }
    return value;
}

std::uint32_t RegisterMap::word(std::uint32_t address) const
{
    const Region* const region = regionAt(address);
    if (!region)
        throw std::logic_error("no such register");
    return base::readU32(region->bytes, address - region->address);
}

void RegisterMap::setWord(std::uint32_t address, std::uint32_t value)
{
    base::writeU32(bytesAt(address), 0, value);
}

base::IpSettings RegisterMap::currentIp() const
{
    return readIp(*this, m_interface, Current);
}

void RegisterMap::setCurrentIp(const base::IpSettings& ip)
{
    writeIp(*this, m_interface, Current, ip);
}

StoredSettings RegisterMap::stored() const
{
    StoredSettings settings;
    for (unsigned number = 0; number < m_interfaceCount; ++number)
        settings.interfaces.push_back(storedIp(number));
    const base::Bytes& name = regionAt(reg::UserDefinedName.address)->bytes;
    settings.userName.assign(name.begin(), std::find(name.begin(), name.end(), 0));
    for (const MakersRegister& each : m_makers)
        settings.registers.emplace_back(each.address, word(each.address));
    return settings;
}

StoredIp RegisterMap::storedIp(unsigned interface) const
{
    return {word(reg::ofInterface(interface, reg::CurrentIpConfig)),
            hasStoredAddress(interface) ? readIp(*this, interface, Persistent) : base::IpSettings{}};
}

void RegisterMap::store(const StoredSettings& settings)
{
    for (unsigned number = 0; number < m_interfaceCount; ++number)
        store(number, settings.interfaces[number]);
    setText(reg::UserDefinedName.address, reg::UserDefinedName.size, settings.userName);
    for (const auto& [address, value] : settings.registers)
        setWord(address, value);
}

void RegisterMap::store(unsigned interface, const StoredIp& settings)
{
    setWord(reg::ofInterface(interface, reg::CurrentIpConfig), settings.ipConfig);
    if (hasStoredAddress(interface))
        writeIp(*this, interface, Persistent, settings.persistent);
    if (interface != m_interface)
        writeIp(*this, interface, Current, settings.persistent);
}

bool RegisterMap::takeResetRequest()
{
    const bool wasAsked = std::exchange(m_isResetAsked, false);
    if (wasAsked)
        setWord(m_resetRegister, word(m_resetRegister) & ~m_resetMask);
    return wasAsked;
}

void RegisterMap::setController(std::uint32_t privilege, base::Ipv4 address, std::uint16_t port)
{
    setWord(reg::ControlChannelPrivilege, privilege);
    setWord(ApplicationAddress, address.number());
    setWord(ApplicationPort, port);
}

base::Bytes RegisterMap::discoveryBlock() const
{
    base::Bytes block(DiscoveryBlockSize);
    read(Version, block);
    for (const std::uint32_t each : {reg::MacHigh, reg::MacLow, reg::SupportedIpConfig, reg::CurrentIpConfig,
                                     CurrentIp, CurrentSubnetMask, CurrentGateway})
        base::writeU32(block, each, word(reg::ofInterface(m_interface, each)));
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
    m_regions.push_back({address, writable, base::Bytes(size)});
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
