// SPDX-License-Identifier: Apache-2.0
#include "sdk/LastingAddress.h"

#include "gvcp/Memory.h"
#include "gvcp/Registers.h"
#include "sdk/CameraError.h"
#include "sdk/ExclusiveControl.h"

#include <algorithm>

namespace sdk {

namespace {

using gvcp::RegisterValue;
namespace reg = gvcp::reg;

bool isPersistent(std::uint32_t ipConfig)
{
    return (ipConfig & gvcp::IpConfig::Persistent) != 0;
}

std::vector<RegisterValue> wrongRegisters(ControlChannel& channel, const gvcp::ForceIp& addresses)
{
    std::vector<RegisterValue> registers{{reg::PersistentIp, addresses.ip},
                                         {reg::PersistentSubnetMask, addresses.subnetMask},
                                         {reg::PersistentGateway, addresses.gateway}};
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

void ForcedAddresses::keep(const gvcp::ForceIp& addresses)
{
    const std::lock_guard lock(m_mutex);
    m_addresses[addresses.mac] = addresses;
}

void ForcedAddresses::forget(const gvcp::MacAddress& mac)
{
    const std::lock_guard lock(m_mutex);
    m_addresses.erase(mac);
}

std::optional<gvcp::ForceIp> ForcedAddresses::of(const gvcp::MacAddress& mac) const
{
    const std::lock_guard lock(m_mutex);
    const auto found = m_addresses.find(mac);
    return found == m_addresses.end() ? std::nullopt : std::optional(found->second);
}

void storeAddress(ControlChannel& channel, const gvcp::ForceIp& addresses)
{
    for (const RegisterValue& wrong : wrongRegisters(channel, addresses))
        channel.writeRegister(wrong.address, wrong.value);
}

RZ_ERROR makeAddressLast(std::unique_ptr<Network> network, const gvcp::ForceIp& addresses,
                         std::uint32_t options, std::uint32_t configuration, ForcedAddresses& forced)
{
    const auto note = [&] {
        if (isPersistent(options))
            forced.keep(addresses);
        else
            forced.forget(addresses.mac);
        return isPersistent(options) && isPersistent(configuration);
    };
    try {
        ControlChannel channel(std::move(network), addresses.ip);
        // The camera may take a while to answer at its new address.
        options = channel.readRegister(reg::SupportedIpConfig, ControlChannel::ManyTries);
        configuration = channel.readRegister(reg::CurrentIpConfig);
        if (note() && !wrongRegisters(channel, addresses).empty()) {
            const ExclusiveControl control(channel);
            storeAddress(channel, addresses);
        }
        return RZ_OK;
    } catch (const CameraError&) {
        return note() ? RZ_ERROR_NOT_STORED : RZ_OK;
    }
}

} // namespace sdk
