// SPDX-License-Identifier: Apache-2.0
#include "tests/simulator/Capture.h"

#include "tests/simulator/Lines.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <unistd.h>

namespace simulator_tests {

Capture::Capture(const lab::Namespace& host, const std::string& filter, std::size_t packets)
    : m_host(host),
      m_file(testing::TempDir() + "farm-" + std::to_string(::getpid()) + ".pcap"),
      m_process(host.start({"sh", "-c",
                            "exec tcpdump -i eth0 -Z root -U -c " + std::to_string(packets) + " -w " +
                                m_file + " '" + filter + "' 2>&1"}))
{
    while (m_process.readLine().find("listening on") == std::string::npos) {
    }
}

Capture::~Capture()
{
    std::filesystem::remove(m_file);
}

std::vector<std::string> Capture::finish(const std::string& selection)
{
    EXPECT_EQ(m_process.wait(), 0);
    return linesOf(m_host.run("tshark -o ip.check_checksum:TRUE -o udp.check_checksum:TRUE -Y '" + selection +
                              "' -T fields -E separator=/s -e _ws.malformed -e ip.checksum.status"
                              " -e udp.checksum.status -e _ws.col.Protocol -e _ws.col.Info -r " +
                              m_file));
}

} // namespace simulator_tests
