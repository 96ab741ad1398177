// SPDX-License-Identifier: Apache-2.0
#include "tests/simulator/GvcpClient.h"

#include <arpa/inet.h>
#include <stdexcept>
#include <sys/socket.h>
#include <unistd.h>

namespace simulator_tests {

GvcpClient::GvcpClient(const lab::Namespace& host)
{
    const lab::Visit visit(host);
    m_fd = ::socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    const int on = 1;
    const int bufferSize = 32 << 20; // bytes; the kernel counts each datagram's whole buffer
    const timeval patience{10, 0};
    if (m_fd < 0 || ::setsockopt(m_fd, SOL_SOCKET, SO_BROADCAST, &on, sizeof on) != 0 ||
        ::setsockopt(m_fd, SOL_SOCKET, SO_RCVBUFFORCE, &bufferSize, sizeof bufferSize) != 0 ||
        // Without a default route only a socket that belongs to an interface can send a limited broadcast.
        ::setsockopt(m_fd, SOL_SOCKET, SO_BINDTODEVICE, "eth0", 4) != 0 ||
        ::setsockopt(m_fd, SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof patience) != 0)
        throw std::runtime_error("cannot make a socket");
}

GvcpClient::~GvcpClient()
{
    ::close(m_fd);
}

void GvcpClient::send(base::Ipv4 to, const base::Bytes& payload) const
{
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(3956);
    address.sin_addr.s_addr = htonl(to.number());
    if (::sendto(m_fd, payload.data(), payload.size(), 0, reinterpret_cast<const sockaddr*>(&address),
                 sizeof address) < 0)
        throw std::runtime_error("cannot send to " + to.toText());
}

GvcpClient::Datagram GvcpClient::receive() const
{
    Datagram datagram;
    sockaddr_in from{};
    socklen_t fromSize = sizeof from;
    datagram.payload.resize(2000);
    const ssize_t size = ::recvfrom(m_fd, datagram.payload.data(), datagram.payload.size(), 0,
                                    reinterpret_cast<sockaddr*>(&from), &fromSize);
    datagram.payload.resize(size > 0 ? static_cast<std::size_t>(size) : 0);
    datagram.source = base::Ipv4(ntohl(from.sin_addr.s_addr));
    return datagram;
}

} // namespace simulator_tests
