// SPDX-License-Identifier: Apache-2.0
#include "sdk/addressing/LastingAddress.h"

#include "gvcp/Memory.h"
#include "gvcp/Registers.h"
#include "sdk/camera/Identity.h"
#include "sdk/network/CameraError.h"

#include <algorithm>

namespace sdk {

namespace {

using namespace std::chrono_literals;
using gvcp::RegisterValue;
namespace reg = gvcp::reg;

/// Cameras leave the network for up to four seconds while they change.
constexpr auto TimeOfChange = 10s;

bool isPersistent(std::uint32_t ipConfig)
{
    return (ipConfig & gvcp::IpConfig::Persistent) != 0;
}

std::vector<RegisterValue> wrongRegisters(ControlChannel& channel, unsigned interface,
                                          const base::IpSettings& addresses)
{
    std::vector<RegisterValue> registers{
        {reg::ofInterface(interface, reg::PersistentIp), addresses.address.number()},
        {reg::ofInterface(interface, reg::PersistentSubnetMask), addresses.mask.number()},
        {reg::ofInterface(interface, reg::PersistentGateway), addresses.gateway.number()}};
    registers.erase(std::remove_if(registers.begin(), registers.end(),
                                   [&channel](const RegisterValue& wanted) {
                                       return channel.readRegister(wanted.address) == wanted.value;
                                   }),
                    registers.end());
    return registers;
}

} // namespace

ForcedAddresses& ForcedAddresses::instance()
{
    static ForcedAddresses* const addresses = new ForcedAddresses;
    return *addresses;
}

void ForcedAddresses::keep(const base::MacAddress& mac, const base::IpSettings& addresses,
                           Clock::time_point now)
{
    const std::lock_guard lock(m_mutex);
    m_entries[mac] = {.addresses = addresses, .time = now};
}

void ForcedAddresses::forget(const base::MacAddress& mac)
{
    const std::lock_guard lock(m_mutex);
    if (const auto found = m_entries.find(mac); found != m_entries.end())
        found->second.isStorable = false;
}

void ForcedAddresses::setWaiting(const base::MacAddress& mac, bool isWaiting)
{
    const std::lock_guard lock(m_mutex);
    if (const auto found = m_entries.find(mac); found != m_entries.end())
        found->second.isWaiting = isWaiting;
}

std::optional<base::IpSettings> ForcedAddresses::of(const base::MacAddress& mac) const
{
    const std::lock_guard lock(m_mutex);
    const auto found = m_entries.find(mac);
    return found != m_entries.end() && found->second.isStorable ? std::optional(found->second.addresses)
                                                                : std::nullopt;
}

bool ForcedAddresses::isWaiting(const base::MacAddress& mac) const
{
    const std::lock_guard lock(m_mutex);
    const auto found = m_entries.find(mac);
    return found != m_entries.end() && found->second.isWaiting;
}

bool ForcedAddresses::wasJustForced(const base::MacAddress& mac, Clock::time_point now) const
{
    const std::lock_guard lock(m_mutex);
    const auto found = m_entries.find(mac);
    return found != m_entries.end() && now - found->second.time < TimeOfChange;
}

base::IpSettings storedAddress(ControlChannel& channel, unsigned interface)
{
    const auto value = [&](std::uint32_t ofFirst) {
        return base::Ipv4(channel.readRegister(reg::ofInterface(interface, ofFirst)));
    };
    return {.address = value(reg::PersistentIp),
            .mask = value(reg::PersistentSubnetMask),
            .gateway = value(reg::PersistentGateway)};
}

void storeAddress(ControlChannel& channel, unsigned interface, const base::IpSettings& addresses)
{
    bool isRefusedWhole = true;
    for (const RegisterValue& wrong : wrongRegisters(channel, interface, addresses)) {
        try {
            channel.writeRegister(wrong.address, wrong.value);
        } catch (const CameraError& error) {
            if (isRefusedWhole && error.status() != gvcp::Status::Success)
                throw;
            throw CameraError(error.code(),
                              std::string(error.what()) +
                                  "; it may have stored some of the old address and some of the new");
        }
        isRefusedWhole = false;
    }
}

void storeWaitingAddress(Session& session, ForcedAddresses& forced)
{
    const base::MacAddress& mac = session.mac();
    const auto addresses = forced.of(mac);
    if (!addresses || !forced.isWaiting(mac))
        return;
    try {
        // A camera that is at another address by now was given that one since, or has reset: there is nothing
        // to store any more.
        if (addresses->address == session.channel().camera())
            storeAddress(session.channel(), session.interface(), *addresses);
    } catch (const CameraError& error) {
        throw CameraError(RZ_ERROR_NOT_STORED,
                          std::string("its address could not be stored (") + error.what() + ")");
    }
    forced.setWaiting(mac, false);
}

void makeAddressLast(std::unique_ptr<Network> network, const base::MacAddress& mac,
                     const base::IpSettings& addresses, std::uint32_t options, std::uint32_t configuration,
                     ForcedAddresses& forced)
{
    try {
        ControlChannel channel(std::move(network), addresses.address);
        // A camera that does not start with its stored address needs nothing stored, and is not waited for.
        const int tries = isPersistent(configuration) ? ControlChannel::ManyTries : ControlChannel::FewTries;
        const unsigned interface = interfaceWith(channel, mac, tries);
        options = channel.readRegister(reg::ofInterface(interface, reg::SupportedIpConfig));
        configuration = channel.readRegister(reg::ofInterface(interface, reg::CurrentIpConfig));
        if (isPersistent(options) && isPersistent(configuration) &&
            !wrongRegisters(channel, interface, addresses).empty()) {
            const ExclusiveControl control(channel);
            requireMac(channel, interface, mac);
            storeAddress(channel, interface, addresses);
        }
    } catch (const CameraError&) {
        forced.setWaiting(mac, isPersistent(options) && isPersistent(configuration));
    }
    if (!isPersistent(options))
        forced.forget(mac);
}

} // namespace sdk
