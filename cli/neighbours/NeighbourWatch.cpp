// SPDX-License-Identifier: Apache-2.0
#include "cli/neighbours/NeighbourWatch.h"

#include "base/Bytes.h"
#include "inventory/Neighbours.h"

#include <algorithm>
#include <arpa/inet.h>
#include <array>
#include <cerrno>
#include <cstring>
#include <linux/rtnetlink.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <system_error>

namespace cli {
namespace {

constexpr const char* Table = "the kernel's neighbour table";

[[noreturn]] void fail(int error, const char* what)
{
    throw std::system_error(error, std::generic_category(), what);
}

struct Request
{
    nlmsghdr header;
    ndmsg entry;
    rtattr attribute;
    in_addr address;
};

/// Its contents, as the kernel sent them.
base::ByteView bytesOf(const rtattr& attribute)
{
    return {static_cast<const std::uint8_t*>(RTA_DATA(&attribute)), RTA_PAYLOAD(&attribute)};
}

std::chrono::milliseconds sinceConfirmed(const rtattr& attribute)
{
    nda_cacheinfo times{};
    std::memcpy(&times, RTA_DATA(&attribute), std::min<std::size_t>(sizeof times, RTA_PAYLOAD(&attribute)));
    return std::chrono::milliseconds(std::uint64_t{times.ndm_confirmed} * 1000 /
                                     static_cast<std::uint64_t>(::sysconf(_SC_CLK_TCK)));
}

/// An entry as a message has it, and whose it is.
struct Entry
{
    int adapterIndex = 0;
    base::Ipv4 address;
    Neighbour neighbour;
};

Entry parseEntry(nlmsghdr* message)
{
    auto* const header = static_cast<ndmsg*>(NLMSG_DATA(message));
    Entry entry{header->ndm_ifindex, {}, {header->ndm_state, {}, {}}};
    auto left = static_cast<int>(NLMSG_PAYLOAD(message, sizeof *header));
    for (auto* each =
             reinterpret_cast<rtattr*>(reinterpret_cast<char*>(header) + NLMSG_ALIGN(sizeof *header));
         RTA_OK(each, left); each = RTA_NEXT(each, left)) {
        if (each->rta_type == NDA_DST && RTA_PAYLOAD(each) == sizeof(in_addr))
            entry.address = base::readIpv4(bytesOf(*each), 0);
        else if (each->rta_type == NDA_LLADDR && RTA_PAYLOAD(each) == sizeof(base::MacAddress::bytes))
            entry.neighbour.mac = base::readMac(bytesOf(*each), 0);
        else if (each->rta_type == NDA_CACHEINFO)
            entry.neighbour.sinceConfirmed = sinceConfirmed(*each);
    }
    return entry;
}

int errorOf(const nlmsghdr* message)
{
    return -static_cast<const nlmsgerr*>(NLMSG_DATA(message))->error;
}

} // namespace

NeighbourWatch::NeighbourWatch(int adapterIndex, base::Ipv4 address)
    : m_adapterIndex(adapterIndex),
      m_address(address),
      m_netlink(::socket(AF_NETLINK, SOCK_RAW | SOCK_CLOEXEC | SOCK_NONBLOCK, NETLINK_ROUTE))
{
    if (!m_netlink)
        fail(errno, Table);
    sockaddr_nl changes{};
    changes.nl_family = AF_NETLINK;
    changes.nl_groups = RTMGRP_NEIGH;
    if (::bind(m_netlink.get(), reinterpret_cast<const sockaddr*>(&changes), sizeof changes) != 0)
        fail(errno, Table);
}

std::vector<Neighbour> NeighbourWatch::look()
{
    request();
    std::vector<Neighbour> seen;
    // The kernel answers before send() returns, behind the changes until then.
    for (bool isAnswered = false; !isAnswered;) {
        alignas(nlmsghdr) std::array<char, 8192> buffer;
        const ssize_t size = ::recv(m_netlink.get(), buffer.data(), buffer.size(), 0);
        if (size > 0)
            isAnswered = take(buffer.data(), static_cast<std::size_t>(size), seen);
        else if (errno == EAGAIN)
            break; // It found no room, among too many changes.
        else if (errno != EINTR && errno != ENOBUFS)
            fail(errno, Table);
    }
    return seen;
}

void NeighbourWatch::request()
{
    Request request{};
    request.header.nlmsg_len = sizeof request;
    request.header.nlmsg_type = RTM_GETNEIGH;
    request.header.nlmsg_flags = NLM_F_REQUEST;
    request.header.nlmsg_seq = ++m_sequence;
    request.entry.ndm_family = AF_INET;
    request.entry.ndm_ifindex = m_adapterIndex;
    request.attribute.rta_type = NDA_DST;
    request.attribute.rta_len = RTA_LENGTH(sizeof request.address);
    request.address.s_addr = htonl(m_address.number());
    if (::send(m_netlink.get(), &request, sizeof request, 0) == -1)
        fail(errno, Table);
}

bool NeighbourWatch::take(char* messages, std::size_t size, std::vector<Neighbour>& seen) const
{
    auto left = static_cast<unsigned>(size);
    for (auto* message = reinterpret_cast<nlmsghdr*>(messages); NLMSG_OK(message, left);
         message = NLMSG_NEXT(message, left)) {
        if (message->nlmsg_type == NLMSG_ERROR) {
            if (errorOf(message) != ENOENT)
                fail(errorOf(message), Table);
            seen.push_back({});
        } else if (message->nlmsg_type == RTM_NEWNEIGH || message->nlmsg_type == RTM_DELNEIGH) {
            const Entry entry = parseEntry(message);
            if (entry.adapterIndex == m_adapterIndex && entry.address == m_address)
                seen.push_back(message->nlmsg_type == RTM_NEWNEIGH ? entry.neighbour : Neighbour{});
        }
        if (message->nlmsg_seq == m_sequence)
            return true;
    }
    return false;
}

void NeighbourWatch::provoke()
{
    inventory::askForOwner(static_cast<unsigned>(m_adapterIndex), m_address);
}

} // namespace cli
