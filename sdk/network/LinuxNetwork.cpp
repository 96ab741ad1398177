// SPDX-License-Identifier: Apache-2.0
#include "sdk/network/LinuxNetwork.h"

#include "gvcp/Packet.h"
#include "sdk/network/PacketFilter.h"
#include "sdk/network/UdpFrame.h"

#include <algorithm>
#include <arpa/inet.h>
#include <cerrno>
#include <cstring>
#include <linux/if_packet.h>
#include <net/ethernet.h>
#include <netinet/in.h>
#include <span>
#include <sys/socket.h>
#include <system_error>
#include <utility>

namespace sdk {

namespace {

/// 256 cameras answer within a few milliseconds, each answer costs the kernel about a kilobyte.
constexpr int ReceiveBuffer = 4 << 20;

/// The port that the kernel chooses on the first adapter may be in use on another; then all are opened anew.
constexpr int MaxPortsTried = 16;

template <typename T>
bool setOption(const base::FileDescriptor& socket, int level, int name, const T& value)
{
    return setsockopt(socket.get(), level, name, &value, sizeof value) == 0;
}

void raiseReceiveBuffer(const base::FileDescriptor& socket)
{
    // The first needs CAP_NET_ADMIN, the second stops at the host's limit.
    if (!setOption(socket, SOL_SOCKET, SO_RCVBUFFORCE, ReceiveBuffer))
        setOption(socket, SOL_SOCKET, SO_RCVBUF, ReceiveBuffer);
}

sockaddr_in socketAddress(base::Ipv4 address, std::uint16_t port)
{
    sockaddr_in result{};
    result.sin_family = AF_INET;
    result.sin_addr.s_addr = htonl(address.number());
    result.sin_port = htons(port);
    return result;
}

/// Bound to the device and to no address: a socket bound to an address does not get answers sent by
/// broadcast. The kernel chooses the port if it is 0. Throws std::system_error.
base::FileDescriptor openUdp(const Adapter& adapter, std::uint16_t port)
{
    const auto require = [](bool isDone, const char* what) {
        if (!isDone)
            throw std::system_error(errno, std::generic_category(), what);
    };
    base::FileDescriptor socket(::socket(AF_INET, SOCK_DGRAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
    require(bool(socket), "socket");
    const int on = 1;
    require(setOption(socket, SOL_SOCKET, SO_BROADCAST, on), "SO_BROADCAST");
    require(setsockopt(socket.get(), SOL_SOCKET, SO_BINDTODEVICE, adapter.name.c_str(),
                       static_cast<socklen_t>(adapter.name.size())) == 0,
            "SO_BINDTODEVICE");
    raiseReceiveBuffer(socket);
    const sockaddr_in any = socketAddress(base::Ipv4(), port);
    require(bind(socket.get(), reinterpret_cast<const sockaddr*>(&any), sizeof any) == 0, "bind");
    return socket;
}

std::uint16_t portOf(const base::FileDescriptor& udp)
{
    sockaddr_in own{};
    socklen_t size = sizeof own;
    getsockname(udp.get(), reinterpret_cast<sockaddr*>(&own), &size);
    return ntohs(own.sin_port);
}

/// A packet socket for what comes from a camera's port to `localPort`. It takes nothing until it is bound,
/// and that happens after the filter is in place. None when the process may not have one; throws
/// std::system_error when it may, and the computer has no room for it.
base::FileDescriptor openPackets(const Adapter& adapter, std::uint16_t localPort)
{
    base::FileDescriptor socket(::socket(AF_PACKET, SOCK_DGRAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
    if (!socket) {
        if (errno == EMFILE || errno == ENFILE || errno == ENOBUFS || errno == ENOMEM)
            throw std::system_error(errno, std::generic_category(), "packet socket");
        return base::FileDescriptor();
    }

    auto code = filterFor(localPort);
    const sock_fprog filter{static_cast<unsigned short>(code.size()), code.data()};
    const int on = 1;
    if (!setOption(socket, SOL_SOCKET, SO_ATTACH_FILTER, filter) ||
        !setOption(socket, SOL_PACKET, PACKET_AUXDATA, on))
        return base::FileDescriptor();
    raiseReceiveBuffer(socket);

    sockaddr_ll where{};
    where.sll_family = AF_PACKET;
    where.sll_protocol = htons(ETHERTYPE_IP);
    where.sll_ifindex = static_cast<int>(adapter.index);
    if (bind(socket.get(), reinterpret_cast<const sockaddr*>(&where), sizeof where) != 0)
        return base::FileDescriptor();
    return socket;
}

/// A datagram as sendmsg and recvmsg take it: with its peer's address, and one thing more that the kernel is
/// to know of it, or tells.
template <typename Address, typename Extra>
struct Message
{
    explicit Message(std::span<std::uint8_t> buffer) : data{buffer.data(), buffer.size()}
    {
        header.msg_name = &peer;
        header.msg_namelen = sizeof peer;
        header.msg_iov = &data;
        header.msg_iovlen = 1;
        header.msg_control = control;
        header.msg_controllen = sizeof control;
    }
    Message(const Message&) = delete;
    Message& operator=(const Message&) = delete;

    Address peer{};
    iovec data;
    alignas(cmsghdr) std::uint8_t control[CMSG_SPACE(sizeof(Extra))]{};
    msghdr header{};
};

/// Whether the kernel has yet to compute this packet's checksum, or has found it right.
UdpChecksum checksumHint(msghdr& message)
{
    for (cmsghdr* item = CMSG_FIRSTHDR(&message); item; item = CMSG_NXTHDR(&message, item)) {
        if (item->cmsg_level != SOL_PACKET || item->cmsg_type != PACKET_AUXDATA)
            continue;
        tpacket_auxdata data{};
        std::memcpy(&data, CMSG_DATA(item), sizeof data);
        if ((data.tp_status & (TP_STATUS_CSUMNOTREADY | TP_STATUS_CSUM_VALID)) != 0)
            return UdpChecksum::Ignore;
    }
    return UdpChecksum::Verify;
}

timespec toTimespec(Clock::duration time)
{
    const auto nanoseconds = std::chrono::duration_cast<std::chrono::nanoseconds>(time).count();
    return {static_cast<time_t>(nanoseconds / 1'000'000'000), static_cast<long>(nanoseconds % 1'000'000'000)};
}

} // namespace

LinuxNetwork::LinuxNetwork(const std::vector<Adapter>& adapters, std::optional<base::Ipv4> onlyCamera)
    : m_onlyCamera(onlyCamera)
{
    for (int i = 0; i < MaxPortsTried && !openAll(adapters); ++i) {
    }
}

/// False when the port that the kernel chose on the first adapter is taken on another one.
bool LinuxNetwork::openAll(const std::vector<Adapter>& adapters)
{
    m_adapters.clear();
    m_failures.clear();
    m_ports.clear();
    m_polled.clear();
    bool isPortTaken = false;
    for (const Adapter& adapter : adapters) {
        try {
            base::FileDescriptor udp = openUdp(adapter, m_ports.empty() ? 0 : portOf(m_ports.front().udp));
            base::FileDescriptor packetSocket = openPackets(adapter, portOf(udp));
            m_polled.push_back({udp.get(), POLLIN, 0});
            m_polled.push_back({packetSocket.get(), POLLIN, 0}); // poll() passes over a negative one.
            m_ports.push_back({std::move(udp), std::move(packetSocket)});
            m_adapters.push_back(adapter);
        } catch (const std::system_error& error) {
            m_failures.push_back(adapter.name + ": " + error.code().message());
            isPortTaken = isPortTaken || error.code().value() == EADDRINUSE;
        }
    }
    return !isPortTaken;
}

bool LinuxNetwork::send(std::size_t adapter, base::Ipv4 source, base::Ipv4 destination,
                        base::ByteView datagram)
{
    Message<sockaddr_in, in_pktinfo> message({const_cast<std::uint8_t*>(datagram.data()), datagram.size()});
    message.peer = socketAddress(destination, gvcp::DevicePort);

    in_pktinfo from{};
    from.ipi_ifindex = static_cast<int>(m_adapters[adapter].index);
    from.ipi_spec_dst.s_addr = htonl(source.number());
    cmsghdr* item = CMSG_FIRSTHDR(&message.header);
    item->cmsg_level = IPPROTO_IP;
    item->cmsg_type = IP_PKTINFO;
    item->cmsg_len = CMSG_LEN(sizeof from);
    std::memcpy(CMSG_DATA(item), &from, sizeof from);
    return sendmsg(m_ports[adapter].udp.get(), &message.header, 0) == static_cast<ssize_t>(datagram.size());
}

std::optional<Datagram> LinuxNetwork::receive(Clock::time_point until)
{
    for (bool isLastLook = false;;) {
        for (std::size_t i = 0; i < m_polled.size(); ++i) {
            m_turn = (m_turn + 1) % m_polled.size();
            // Reading also clears an error. Each socket is read once after a poll: mostly there is no second
            // datagram.
            if (std::exchange(m_polled[m_turn].revents, short{0}) == 0)
                continue;
            const std::size_t adapter = m_turn / 2;
            const auto datagram = m_turn % 2 == 0 ? readUdp(adapter) : readPacket(adapter);
            if (datagram)
                return datagram;
        }
        // A flood of packets that are none of ours must not hold the caller beyond its time.
        if (isLastLook)
            return std::nullopt;
        const auto left = std::max(until - now(), Clock::duration::zero());
        isLastLook = left == Clock::duration::zero();
        const timespec timeout = toTimespec(left);
        if (ppoll(m_polled.data(), m_polled.size(), &timeout, nullptr) < 0)
            std::for_each(m_polled.begin(), m_polled.end(), [](pollfd& polled) { polled.revents = 0; });
    }
}

std::optional<Datagram> LinuxNetwork::readUdp(std::size_t adapter)
{
    sockaddr_in from{};
    socklen_t size = sizeof from;
    const ssize_t length = recvfrom(m_ports[adapter].udp.get(), m_buffer.data(), m_buffer.size(), 0,
                                    reinterpret_cast<sockaddr*>(&from), &size);
    if (length < 0 || ntohs(from.sin_port) != gvcp::DevicePort)
        return std::nullopt;
    const base::Ipv4 source(ntohl(from.sin_addr.s_addr));
    if (source == m_onlyCamera)
        closePackets(adapter);
    return Datagram{adapter, source, {m_buffer.data(), static_cast<std::size_t>(length)}};
}

void LinuxNetwork::closePackets(std::size_t adapter)
{
    m_polled[adapter * 2 + 1] = {-1, POLLIN, 0};
    m_ports[adapter].packets = base::FileDescriptor();
}

std::optional<Datagram> LinuxNetwork::readPacket(std::size_t adapter)
{
    Message<sockaddr_ll, tpacket_auxdata> message(m_buffer);
    const ssize_t length = recvmsg(m_ports[adapter].packets.get(), &message.header, 0);
    // In promiscuous mode the adapter also hears what was sent to other hosts.
    if (length < 0 || message.peer.sll_pkttype == PACKET_OTHERHOST)
        return std::nullopt;
    const auto frame =
        parseUdpFrame({m_buffer.data(), static_cast<std::size_t>(length)}, checksumHint(message.header));
    if (!frame)
        return std::nullopt;
    return Datagram{adapter, frame->source, frame->payload};
}

} // namespace sdk
