// SPDX-License-Identifier: Apache-2.0
#include "tests/simulator/DhcpServer.h"

#include <filesystem>
#include <fstream>
#include <unistd.h>

namespace simulator_tests {

namespace {

std::string commandLine(const std::string& range, const std::string& leaseFile)
{
    // Looking for conflicts by ping would make 256 clients wait in turn.
    return "exec dnsmasq --keep-in-foreground --conf-file=/dev/null --user=root --pid-file --log-facility=-"
           " --quiet-dhcp --port=0 --interface=eth0 --bind-interfaces --no-ping --dhcp-authoritative"
           " --dhcp-option=option:router,192.168.1.5 --dhcp-range=" +
           range + ",1h --dhcp-leasefile=" + leaseFile + " 2>&1";
}

} // namespace

DhcpServer::DhcpServer(const lab::Namespace& host, const std::string& range)
    : m_leaseFile(std::filesystem::temp_directory_path() / ("leases-" + std::to_string(::getpid()))),
      m_process(host.start({"sh", "-c", commandLine(range, m_leaseFile)}))
{
    while (m_process.readLine().find("sockets bound exclusively to interface eth0") == std::string::npos) {
    }
}

DhcpServer::~DhcpServer()
{
    std::filesystem::remove(m_leaseFile);
}

std::map<std::string, std::string> DhcpServer::leases() const
{
    std::map<std::string, std::string> leases;
    std::ifstream file(m_leaseFile);
    std::string expiry;
    std::string mac;
    std::string address;
    std::string rest;
    while (file >> expiry >> mac >> address && std::getline(file, rest))
        leases[mac] = address;
    return leases;
}

} // namespace simulator_tests
