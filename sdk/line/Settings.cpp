// SPDX-License-Identifier: Apache-2.0
#include "sdk/line/Settings.h"

#include "gvcp/Registers.h"

#include <cstring>

namespace sdk {

std::uint32_t methodOf(std::uint32_t ipConfig)
{
    for (const std::uint32_t method : {gvcp::IpConfig::Persistent, gvcp::IpConfig::Dhcp})
        if ((ipConfig & method) != 0)
            return method;
    return gvcp::IpConfig::LinkLocal;
}

std::string nameOf(std::uint32_t method)
{
    return method == gvcp::IpConfig::Persistent ? "static"
           : method == gvcp::IpConfig::Dhcp     ? "DHCP"
                                                : "link-local";
}

base::IpSettings addressOf(const RZ_CC_SETTINGS& settings)
{
    return {base::Ipv4(settings.nIp), base::Ipv4(settings.nSubnetMask), base::Ipv4(settings.nGateway)};
}

base::IpSettings storedOf(const RZ_CC_SETTINGS& settings)
{
    return {base::Ipv4(settings.nStoredIp), base::Ipv4(settings.nStoredMask),
            base::Ipv4(settings.nStoredGateway)};
}

std::string textOf(const base::IpSettings& ip)
{
    return ip.address.toText() + " with mask " + ip.mask.toText() + " and gateway " + ip.gateway.toText();
}

bool haveSameName(const RZ_CC_SETTINGS& one, const RZ_CC_SETTINGS& other)
{
    return std::strncmp(one.szUserDefinedName, other.szUserDefinedName, sizeof one.szUserDefinedName) == 0;
}

} // namespace sdk
