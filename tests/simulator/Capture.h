// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tests/support/NetworkLab.h"

#include <string>
#include <vector>

namespace simulator_tests {

/// What crosses the namespace's interface eth0, written down by others and read by a dissector.
class Capture
{
public:
    /// Takes that many packets which the filter selects. Returns when it is listening.
    Capture(const lab::Namespace& host, const std::string& filter, std::size_t packets);
    Capture(const Capture&) = delete;
    Capture& operator=(const Capture&) = delete;
    ~Capture();

    /// Waits for the last packet. Then, for each one that the dissector's own filter selects: nothing or
    /// "malformed", the checksums' states (1 for good) of IP and UDP, the protocol and its summary.
    std::vector<std::string> finish(const std::string& selection);

private:
    const lab::Namespace& m_host;
    std::string m_file;
    lab::Process m_process;
};

} // namespace simulator_tests
