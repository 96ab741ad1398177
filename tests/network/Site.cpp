// SPDX-License-Identifier: Apache-2.0
#include "tests/network/Site.h"

#include <cstdio>

lab::Switch& Site::addAdapter(const std::string& interface, const std::string& address)
{
    m_switches.push_back(std::make_unique<lab::Switch>());
    m_switches.back()->attach(m_host, interface, address);
    return *m_switches.back();
}

lab::Farm& Site::addCameras(lab::Switch& network, const std::string& cameras)
{
    m_farms.push_back(std::make_unique<lab::Farm>(network, "{\"cameras\": [" + cameras + "]}"));
    return *m_farms.back();
}

void Site::setReversePathFilter(int mode)
{
    // The kernel takes the larger of "all" and the adapter's own.
    m_host.run("for f in /proc/sys/net/ipv4/conf/*/rp_filter; do echo " + std::to_string(mode) +
               " > $f; done");
}

void Site::raiseFirewall()
{
    m_host.run("nft 'add table inet filter;"
               " add chain inet filter input { type filter hook input priority 0; policy drop; };"
               " add rule inet filter input ct state established,related accept'");
}

std::string macOf(int camera)
{
    char text[18];
    std::snprintf(text, sizeof text, "02:00:00:00:01:%02X", static_cast<unsigned>(camera) & 0xFF);
    return text;
}
