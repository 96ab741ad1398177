// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "base/Bytes.h"
#include "base/Ipv4.h"
#include "tests/support/NetworkLab.h"

namespace simulator_tests {

/// A UDP socket of the kernel's on the namespace's interface eth0, that speaks to cameras.
class GvcpClient
{
public:
    struct Datagram
    {
        base::Ipv4 source;
        base::Bytes payload; ///< Empty when nothing came within 10 s.
    };

    explicit GvcpClient(const lab::Namespace& host);
    GvcpClient(const GvcpClient&) = delete;
    GvcpClient& operator=(const GvcpClient&) = delete;
    ~GvcpClient();

    void send(base::Ipv4 to, const base::Bytes& payload) const;
    Datagram receive() const;
    /// What is answered to this command.
    base::Bytes ask(base::Ipv4 to, const base::Bytes& payload) const
    {
        send(to, payload);
        return receive().payload;
    }

private:
    int m_fd;
};

} // namespace simulator_tests
