// SPDX-License-Identifier: Apache-2.0
#include "simulator/camera/RegisterMap.h"

#include "gvcp/DiscoveryAck.h"
#include "gvcp/Registers.h"

#include <algorithm>
#include <utility>

namespace simulator {

using namespace base::literals;

using gvcp::Status;
using gvcp::TextRegister;
namespace reg = gvcp::reg;

namespace {

constexpr std::uint32_t BigEndianUtf8 = 0x80000001; // of the device mode register
constexpr std::uint32_t OtherLinkSpeed = 2500;      // Mbit/s, of the interfaces that are on other networks
constexpr std::uint32_t UsualPacketSize = 1500;     // bytes, of a stream
constexpr std::uint32_t AllIpMethods =
    gvcp::IpConfig::Persistent | gvcp::IpConfig::Dhcp | gvcp::IpConfig::LinkLocal;

/// Where an interface has an address, given as those of the first one.
struct IpRegisters
{
    std::uint32_t address;
    std::uint32_t mask;
    std::uint32_t gateway;
};
constexpr IpRegisters Current{reg::CurrentIp, reg::CurrentSubnetMask, reg::CurrentGateway};
constexpr IpRegisters Persistent{reg::PersistentIp, reg::PersistentSubnetMask, reg::PersistentGateway};

/// What each interface has of its own in the first 248 bytes, given likewise.
constexpr std::uint32_t OfEachInterface[] = {
    reg::MacHigh,           reg::MacLow,         reg::SupportedIpConfig, reg::CurrentIpConfig, reg::CurrentIp,
    reg::CurrentSubnetMask, reg::CurrentGateway,
};

constexpr std::uint32_t OfEachStream[] = {reg::StreamPort, reg::StreamPacketSize, reg::StreamAddress};

base::IpSettings readIp(const Memory& memory, unsigned interface, const IpRegisters& at)
{
    const auto read = [&](std::uint32_t ofFirst) {
        return base::Ipv4(memory.word(reg::ofInterface(interface, ofFirst)));
    };
    return {read(at.address), read(at.mask), read(at.gateway)};
}

void writeIp(Memory& memory, unsigned interface, const IpRegisters& at, const base::IpSettings& ip)
{
    memory.setWord(reg::ofInterface(interface, at.address), ip.address.number());
    memory.setWord(reg::ofInterface(interface, at.mask), ip.mask.number());
    memory.setWord(reg::ofInterface(interface, at.gateway), ip.gateway.number());
}

void writeText(Memory& memory, const TextRegister& at, const std::string& text)
{
    base::Bytes bytes(at.size);
    std::copy_n(text.begin(), std::min(text.size(), bytes.size()), bytes.begin());
    memory.setBytes(at.address, bytes);
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

/// Each interface that is on no network has a stored address of its own, 10.9.N.1.
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

std::uint32_t capabilities(const CameraConfig& config)
{
    std::uint32_t bits = gvcp::Capability::SerialNumber | gvcp::Capability::Concatenation;
    if (config.userNameAccess != CameraConfig::UserNameAccess::None)
        bits |= gvcp::Capability::UserDefinedName;
    if (config.writesMemory)
        bits |= gvcp::Capability::WriteMemory;
    if (config.hasPendingAck)
        bits |= gvcp::Capability::PendingAck;
    if (config.tellsHolder)
        bits |= gvcp::Capability::ApplicationInControl;
    if (config.linkSpeed)
        bits |= gvcp::Capability::LinkSpeed;
    if (config.hasHeartbeatOff)
        bits |= gvcp::Capability::HeartbeatOff;
    return bits;
}

/// The bits of the GVCP configuration register that a camera with these capabilities has.
std::uint32_t switchable(std::uint32_t capabilities)
{
    std::uint32_t bits = 0;
    if (capabilities & gvcp::Capability::PendingAck)
        bits |= gvcp::Configuration::PendingAck;
    if (capabilities & gvcp::Capability::HeartbeatOff)
        bits |= gvcp::Configuration::HeartbeatOff;
    return bits;
}

} // namespace

RegisterMap::RegisterMap(const CameraConfig& config) : RegisterMap(config, factorySettings(config))
{
    setCurrentIp(config.ip);
}

RegisterMap::RegisterMap(const CameraConfig& config, const StoredSettings& settings)
    : m_interface(config.interface),
      m_interfaceCount(config.interfaceCount()),
      m_streamCount(config.streams),
      m_resetRegister(config.resetRegister),
      m_resetMask(config.resetMask),
      m_hasPersistentIp(config.hasPersistentIp)
{
    layOut(config);
    for (unsigned number = 0; number < m_interfaceCount; ++number)
        describe(config, settings, number);
    m_memory.setWord(reg::DeviceMode, BigEndianUtf8);
    writeText(m_memory, reg::FirstDescriptionUrl, config.description.url);
    writeText(m_memory, reg::SecondDescriptionUrl, config.description.secondUrl);
    m_memory.setWord(reg::InterfaceCount, m_interfaceCount);
    m_memory.setWord(reg::StreamChannelCount, m_streamCount);
    m_memory.setWord(reg::GvcpCapability, capabilities(config));
    m_memory.setWord(reg::HeartbeatTimeout, static_cast<std::uint32_t>(config.heartbeatTimeout.count()));
    m_memory.setWord(reg::GvcpConfiguration, config.pendingAckOn ? gvcp::Configuration::PendingAck : 0);
    for (const auto& [address, value] : settings.registers)
        m_memory.setWord(address, value);
}

void RegisterMap::layOut(const CameraConfig& config)
{
    using Access = Memory::Access;
    const bool isNameWritable = config.userNameAccess == CameraConfig::UserNameAccess::ReadWrite;
    m_memory.add(reg::CurrentIpConfig, 4, Access::ReadWrite);
    m_memory.add(reg::UserDefinedName.address, reg::UserDefinedName.size,
                 isNameWritable ? Access::ReadWrite : Access::ReadOnly);
    m_memory.add(reg::Version, gvcp::DiscoveryAckSize,
                 Access::ReadOnly); // The others of the first 248 bytes.
    for (const TextRegister& url : {reg::FirstDescriptionUrl, reg::SecondDescriptionUrl})
        m_memory.add(url.address, url.size, Access::ReadOnly);
    for (unsigned number = 0; number < m_interfaceCount; ++number)
        layOutInterface(number, config.linkSpeed.has_value());
    for (const std::uint32_t each :
         {reg::InterfaceCount, reg::MessageChannelCount, reg::StreamChannelCount, reg::GvcpCapability})
        m_memory.add(each, 4, Access::ReadOnly);
    for (const std::uint32_t each : {reg::HeartbeatTimeout, reg::GvcpConfiguration})
        m_memory.add(each, 4, Access::ReadWrite);
    // An application asks for control by writing the first of these; the camera answers that by itself and
    // then fills in those that there are.
    m_memory.add(reg::ControlChannelPrivilege, 4, Access::ReadOnly);
    if (config.tellsHolder)
        for (const std::uint32_t each : {reg::ApplicationPort, reg::ApplicationAddress})
            m_memory.add(each, 4, Access::ReadOnly);
    for (unsigned number = 0; number < m_streamCount; ++number)
        for (const std::uint32_t each : OfEachStream)
            m_memory.add(reg::ofStream(number, each), 4, Access::ReadWrite);
    for (const CameraConfig::MakersRegister& each : config.registers) {
        m_memory.add(each.address, 4, each.access);
        m_memory.setWord(each.address, each.value);
        m_makersRegisters.push_back(each.address);
    }
    if (std::ranges::find(m_makersRegisters, m_resetRegister) == m_makersRegisters.end()) {
        m_memory.add(m_resetRegister, 4, Access::ReadWrite);
        m_makersRegisters.push_back(m_resetRegister);
    }
    m_memory.addFile(CameraConfig::DescriptionAddress, config.description.file);
}

void RegisterMap::layOutInterface(unsigned number, bool tellsLinkSpeed)
{
    using Access = Memory::Access;
    // The first one has these at the beginning of the map.
    if (number > 0)
        for (const std::uint32_t each : OfEachInterface)
            m_memory.add(reg::ofInterface(number, each), 4,
                         each == reg::CurrentIpConfig ? Access::ReadWrite : Access::ReadOnly);
    if (hasStoredAddress(number))
        for (const std::uint32_t each : {Persistent.address, Persistent.mask, Persistent.gateway})
            m_memory.add(reg::ofInterface(number, each), 4, Access::ReadWrite);
    if (tellsLinkSpeed)
        m_memory.add(reg::ofInterface(number, reg::LinkSpeed), 4, Access::ReadOnly);
}

void RegisterMap::describe(const CameraConfig& config, const StoredSettings& settings, unsigned interface)
{
    const StoredIp& stored = settings.interfaces[interface];
    gvcp::DiscoveryAck ack;
    ack.versionMajor = 1;
    ack.versionMinor = 2;
    ack.mac = interface == m_interface ? config.mac : config.interfaceMacs[interface];
    ack.ipConfigOptions = supportedIpConfig(interface);
    ack.ipConfigCurrent = stored.ipConfig;
    // The interface on this network has yet to come by its address; nothing keeps the others from theirs.
    if (interface != m_interface)
        ack.ip = stored.persistent;
    ack.manufacturerName = config.manufacturer;
    ack.modelName = config.model;
    ack.deviceVersion = config.version;
    ack.manufacturerInfo = config.info;
    ack.serialNumber = config.serial;
    ack.userDefinedName = settings.userName;
    const base::Bytes bytes = gvcp::encodeDiscoveryAck(ack);
    if (interface == 0)
        m_memory.setBytes(reg::Version, bytes);
    else
        for (const std::uint32_t each : OfEachInterface)
            m_memory.setWord(reg::ofInterface(interface, each), base::readU32(bytes, each));
    if (hasStoredAddress(interface))
        writeIp(m_memory, interface, Persistent, stored.persistent);
    if (config.linkSpeed)
        m_memory.setWord(reg::ofInterface(interface, reg::LinkSpeed),
                         interface == m_interface ? *config.linkSpeed : OtherLinkSpeed);
}

std::uint32_t RegisterMap::supportedIpConfig(unsigned interface) const
{
    return hasStoredAddress(interface) ? AllIpMethods : AllIpMethods & ~gvcp::IpConfig::Persistent;
}

Status RegisterMap::write(std::uint32_t address, base::ByteView data)
{
    const Status status = m_memory.mayWrite(address, data.size());
    if (status != Status::Success)
        return status;
    for (std::size_t done = 0; done < data.size(); done += 4) {
        const auto at = static_cast<std::uint32_t>(address + done);
        const std::uint32_t value = accepted(at, base::readU32(data, done));
        m_memory.setWord(at, value);
        m_isResetAsked = m_isResetAsked || (at == m_resetRegister && (value & m_resetMask) != 0);
    }
    return Status::Success;
}

std::uint32_t RegisterMap::accepted(std::uint32_t address, std::uint32_t value) const
{
    // What the camera has not got cannot be switched on.
    if (address == reg::GvcpConfiguration)
        return value & switchable(word(reg::GvcpCapability));
    // A test packet would leave at once. No camera here sends images.
    for (unsigned number = 0; number < m_streamCount; ++number)
        if (address == reg::ofStream(number, reg::StreamPacketSize))
            return value & ~gvcp::StreamPacket::FireTest;
    for (unsigned number = 0; number < m_interfaceCount; ++number) {
        if (address != reg::ofInterface(number, reg::CurrentIpConfig))
            continue;
        // Nor can link-local addressing be switched off. The bits above belong to other features: they stay
        // as they are written.
        const std::uint32_t missing = AllIpMethods & ~supportedIpConfig(number);
        return (value & ~missing) | gvcp::IpConfig::LinkLocal;
    }
    return value;
}

base::IpSettings RegisterMap::currentIp() const
{
    return readIp(m_memory, m_interface, Current);
}

void RegisterMap::setCurrentIp(const base::IpSettings& ip)
{
    writeIp(m_memory, m_interface, Current, ip);
}

StoredSettings RegisterMap::stored() const
{
    StoredSettings settings;
    for (unsigned number = 0; number < m_interfaceCount; ++number)
        settings.interfaces.push_back(storedIp(number));
    base::Bytes name(reg::UserDefinedName.size);
    m_memory.read(reg::UserDefinedName.address, name);
    settings.userName.assign(name.begin(), std::ranges::find(name, 0));
    for (const std::uint32_t address : m_makersRegisters)
        settings.registers.emplace_back(address, word(address));
    return settings;
}

StoredIp RegisterMap::storedIp(unsigned interface) const
{
    return {word(reg::ofInterface(interface, reg::CurrentIpConfig)),
            hasStoredAddress(interface) ? readIp(m_memory, interface, Persistent) : base::IpSettings{}};
}

void RegisterMap::setController(std::uint32_t privilege, base::Ipv4 address, std::uint16_t port)
{
    m_memory.setWord(reg::ControlChannelPrivilege, privilege);
    if (!(word(reg::GvcpCapability) & gvcp::Capability::ApplicationInControl))
        return;
    m_memory.setWord(reg::ApplicationAddress, address.number());
    m_memory.setWord(reg::ApplicationPort, port);
}

void RegisterMap::closeStreams()
{
    for (unsigned number = 0; number < m_streamCount; ++number)
        for (const std::uint32_t each : OfEachStream)
            m_memory.setWord(reg::ofStream(number, each), 0);
}

void RegisterMap::openStream(const Endpoint& destination)
{
    m_memory.setWord(reg::StreamPort, destination.port);
    m_memory.setWord(reg::StreamPacketSize, UsualPacketSize);
    m_memory.setWord(reg::StreamAddress, destination.address.number());
}

std::optional<Endpoint> RegisterMap::stream() const
{
    // The bits above the port say by which network interface.
    const auto port =
        m_streamCount > 0 ? static_cast<std::uint16_t>(word(reg::StreamPort)) : std::uint16_t{0};
    return port > 0 ? std::optional(Endpoint{base::Ipv4(word(reg::StreamAddress)), port}) : std::nullopt;
}

bool RegisterMap::takeResetRequest()
{
    const bool wasAsked = std::exchange(m_isResetAsked, false);
    if (wasAsked)
        m_memory.setWord(m_resetRegister, word(m_resetRegister) & ~m_resetMask);
    return wasAsked;
}

base::Bytes RegisterMap::discoveryBlock() const
{
    base::Bytes block(gvcp::DiscoveryAckSize);
    m_memory.read(reg::Version, block);
    for (const std::uint32_t each : OfEachInterface)
        base::writeU32(block, each, word(reg::ofInterface(m_interface, each)));
    return block;
}

} // namespace simulator
