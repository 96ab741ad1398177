// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tests/support/NetworkLab.h"

#include <map>
#include <string>

namespace simulator_tests {

/// A DHCP server of others on the namespace's interface eth0, which needs an address. Gone with this object.
class DhcpServer
{
public:
    /// `range` as "192.168.1.100,192.168.1.200,255.255.255.0". Returns when it is listening.
    DhcpServer(const lab::Namespace& host, const std::string& range);
    DhcpServer(const DhcpServer&) = delete;
    DhcpServer& operator=(const DhcpServer&) = delete;
    ~DhcpServer();

    /// The addresses that it has leased, by their owners' MAC addresses in lower case.
    std::map<std::string, std::string> leases() const;

private:
    std::string m_leaseFile;
    lab::Process m_process;
};

} // namespace simulator_tests
