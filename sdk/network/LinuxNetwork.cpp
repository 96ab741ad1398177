// SPDX-License-Identifier: Apache-2.0
#include "sdk/network/LinuxNetwork.h"

#include "gvcp/Packet.h"
#include "sdk/network/UdpFrame.h"

#include <algorithm>
#include <arpa/inet.h>
#include <cerrno>
#include <cstring>
#include <netinet/in.h>
#include <sys/socket.h>
#include <system_error>
#include <utility>

namespace sdk {

namespace {

/// 256 cameras answer within a few milliseconds, each answer costs the kernel about a kilobyte.
constexpr int ReceiveBuffer = 4 << 20;

/// The port that the kernel chooses on the first adapter may be in use on another; then all are opened anew.
constexpr int MaxPortsTried = 16;

/// Whoever does not collect them in time loses what devices say.
constexpr std::size_t MaxArrivals = 4096;

/// Without the listeners it has to do when they are not ready by then.
constexpr std::chrono::milliseconds TimeToListen(50);

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
    require(setOption(socket, IPPROTO_IP, IP_PKTINFO, on), "IP_PKTINFO");
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

/// Where the datagram was sent to, as the kernel notes beside it.
base::Ipv4 destinationOf(msghdr& message)
{
    for (cmsghdr* item = CMSG_FIRSTHDR(&message); item; item = CMSG_NXTHDR(&message, item)) {
        if (item->cmsg_level != IPPROTO_IP || item->cmsg_type != IP_PKTINFO)
            continue;
        in_pktinfo to{};
        std::memcpy(&to, CMSG_DATA(item), sizeof to);
        return base::Ipv4(ntohl(to.ipi_addr.s_addr));
    }
    return {};
}

timespec toTimespec(Clock::duration time)
{
    const auto nanoseconds = std::chrono::duration_cast<std::chrono::nanoseconds>(time).count();
    return {static_cast<time_t>(nanoseconds / 1'000'000'000), static_cast<long>(nanoseconds % 1'000'000'000)};
}

} // namespace

LinuxNetwork::LinuxNetwork(const std::vector<Adapter>& adapters, const Purpose& purpose) : m_purpose(purpose)
{
    for (int i = 0; i < MaxPortsTried && !openAll(adapters); ++i) {
    }
    awaitListeners();
    m_polled.resize(m_ports.size() * Sources, {-1, POLLIN, 0});
}

LinuxNetwork::~LinuxNetwork()
{
    // All at once; each is then waited for.
    for (const Port& port : m_ports)
        for (Listener* const listener : port.listeners())
            if (listener)
                listener->end();
}

/// False when the port that the kernel chose on the first adapter is taken on another one.
bool LinuxNetwork::openAll(const std::vector<Adapter>& adapters)
{
    m_adapters.clear();
    m_failures.clear();
    m_ports.clear();
    m_port = 0;
    bool isPortTaken = false;
    for (const Adapter& adapter : adapters) {
        try {
            base::FileDescriptor udp = openUdp(adapter, m_port);
            m_port = portOf(udp);
            Port port{std::move(udp), std::make_unique<Listener>(adapter.index, m_port), nullptr};
            if (m_purpose.hearsArrivals)
                port.arrivals = std::make_unique<Listener>(adapter.index, Listener::Arrivals());
            m_ports.push_back(std::move(port));
            m_adapters.push_back(adapter);
        } catch (const std::system_error& error) {
            m_failures.push_back(adapter.name + ": " + error.code().message());
            isPortTaken = isPortTaken || error.code().value() == EADDRINUSE;
        }
    }
    return !isPortTaken;
}

void LinuxNetwork::awaitListeners()
{
    const Clock::time_point until = Clock::now() + TimeToListen;
    for (;;) {
        std::vector<Listener*> starting;
        std::vector<pollfd> polled;
        for (const Port& port : m_ports)
            for (Listener* const listener : port.listeners())
                if (listener && listener->isStarting()) {
                    starting.push_back(listener);
                    polled.push_back({listener->descriptor(), POLLIN, 0});
                }
        const auto left = until - Clock::now();
        if (starting.empty() || left <= Clock::duration::zero())
            return;
        const timespec timeout = toTimespec(left);
        if (ppoll(polled.data(), polled.size(), &timeout, nullptr) <= 0)
            continue;
        for (std::size_t i = 0; i < starting.size(); ++i)
            if (polled[i].revents != 0)
                starting[i]->read();
    }
}

RZ_LISTENER LinuxNetwork::listening() const
{
    for (const Port& port : m_ports)
        if (port.listener && port.listener->state() != RZ_LISTENER_HEARS)
            return port.listener->state();
    return RZ_LISTENER_HEARS;
}

bool LinuxNetwork::send(std::size_t adapter, base::Ipv4 source, base::Ipv4 destination,
                        base::ByteView datagram)
{
    sockaddr_in peer = socketAddress(destination, gvcp::DevicePort);
    iovec data{const_cast<std::uint8_t*>(datagram.data()), datagram.size()};
    in_pktinfo from{};
    from.ipi_ifindex = static_cast<int>(m_adapters[adapter].index);
    from.ipi_spec_dst.s_addr = htonl(source.number());
    alignas(cmsghdr) std::array<std::uint8_t, CMSG_SPACE(sizeof from)> control{};
    msghdr message{};
    message.msg_name = &peer;
    message.msg_namelen = sizeof peer;
    message.msg_iov = &data;
    message.msg_iovlen = 1;
    message.msg_control = control.data();
    message.msg_controllen = control.size();
    cmsghdr* const item = CMSG_FIRSTHDR(&message);
    item->cmsg_level = IPPROTO_IP;
    item->cmsg_type = IP_PKTINFO;
    item->cmsg_len = CMSG_LEN(sizeof from);
    std::memcpy(CMSG_DATA(item), &from, sizeof from);
    return sendmsg(m_ports[adapter].udp.get(), &message, 0) == static_cast<ssize_t>(datagram.size());
}

std::optional<Datagram> LinuxNetwork::receive(Clock::time_point until)
{
    for (bool isLastLook = false;;) {
        for (std::size_t i = 0; i < m_polled.size(); ++i) {
            m_turn = (m_turn + 1) % m_polled.size();
            // Reading also clears an error. Each is read once after a poll: mostly there is no second
            // datagram.
            const bool isReadable = std::exchange(m_polled[m_turn].revents, short{0}) != 0;
            const std::size_t adapter = m_turn / Sources;
            std::optional<Datagram> datagram;
            if (m_turn % Sources == Arrivals && readArrivals(adapter, isReadable))
                return std::nullopt;
            if (m_turn % Sources == Answers)
                datagram = readListener(adapter, isReadable);
            else if (m_turn % Sources == Udp && isReadable)
                datagram = readUdp(adapter);
            if (datagram)
                return datagram;
        }
        // A flood of packets that are none of ours must not hold the caller beyond its time.
        if (isLastLook)
            return std::nullopt;
        const auto left = std::max(until - now(), Clock::duration::zero());
        isLastLook = left == Clock::duration::zero();
        const timespec timeout = toTimespec(left);
        for (std::size_t i = 0; i < m_ports.size(); ++i) {
            // poll() passes over a negative one.
            const Port& port = m_ports[i];
            m_polled[i * Sources + Udp].fd = port.udp.get();
            m_polled[i * Sources + Answers].fd = port.listener ? port.listener->descriptor() : -1;
            m_polled[i * Sources + Arrivals].fd = port.arrivals ? port.arrivals->descriptor() : -1;
        }
        if (ppoll(m_polled.data(), m_polled.size(), &timeout, nullptr) < 0)
            std::for_each(m_polled.begin(), m_polled.end(), [](pollfd& polled) { polled.revents = 0; });
    }
}

std::optional<Datagram> LinuxNetwork::readUdp(std::size_t adapter)
{
    sockaddr_in from{};
    iovec data{m_buffer.data(), m_buffer.size()};
    alignas(cmsghdr) std::array<std::uint8_t, CMSG_SPACE(sizeof(in_pktinfo))> control{};
    msghdr message{};
    message.msg_name = &from;
    message.msg_namelen = sizeof from;
    message.msg_iov = &data;
    message.msg_iovlen = 1;
    message.msg_control = control.data();
    message.msg_controllen = control.size();
    const ssize_t length = recvmsg(m_ports[adapter].udp.get(), &message, 0);
    if (length < 0 || ntohs(from.sin_port) != gvcp::DevicePort)
        return std::nullopt;
    const base::Ipv4 source(ntohl(from.sin_addr.s_addr));
    if (source == m_purpose.onlyCamera)
        m_ports[adapter].listener.reset();
    const base::ByteView payload(m_buffer.data(), static_cast<std::size_t>(length));
    return Datagram{adapter, source, payload, isToAll(adapter, destinationOf(message)), false};
}

/// What the listener has relayed is looked at as if anybody had sent it.
std::optional<Datagram> LinuxNetwork::readListener(std::size_t adapter, bool isReadable)
{
    Listener* const listener = m_ports[adapter].listener.get();
    if (!listener)
        return std::nullopt;
    auto frame = listener->nextFrame();
    if (!frame && isReadable) {
        listener->read();
        frame = listener->nextFrame();
    }
    for (; frame; frame = listener->nextFrame()) {
        const auto datagram = parseUdpFrame(*frame);
        if (datagram && datagram->sourcePort == gvcp::DevicePort && datagram->destinationPort == m_port)
            return Datagram{adapter, datagram->source, datagram->payload,
                            isToAll(adapter, datagram->destination), true};
    }
    return std::nullopt;
}

/// Whether there was any.
bool LinuxNetwork::readArrivals(std::size_t adapter, bool isReadable)
{
    Listener* const listener = m_ports[adapter].arrivals.get();
    if (!listener || !isReadable)
        return false;
    listener->read();
    const std::size_t before = m_arrivals.size();
    for (auto frame = listener->nextFrame(); frame; frame = listener->nextFrame())
        if (const auto arrival = parseArrivalFrame(*frame, adapter))
            m_arrivals.push_back(*arrival);
    while (m_arrivals.size() > MaxArrivals)
        m_arrivals.pop_front();
    return m_arrivals.size() != before;
}

std::optional<Arrival> LinuxNetwork::nextArrival()
{
    if (m_arrivals.empty())
        return std::nullopt;
    const Arrival first = m_arrivals.front();
    m_arrivals.pop_front();
    return first;
}

bool LinuxNetwork::isToAll(std::size_t adapter, base::Ipv4 destination) const
{
    return destination == base::LimitedBroadcast || m_adapters[adapter].isBroadcast(destination);
}

} // namespace sdk
