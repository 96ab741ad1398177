// SPDX-License-Identifier: Apache-2.0
#include "sdk/network/PacketFilter.h"

#include "gvcp/Packet.h"
#include "sdk/network/UdpFrame.h"

#include <netinet/in.h>

namespace sdk {

std::vector<sock_filter> filterFor(std::uint16_t localPort)
{
    constexpr sock_filter Drop = BPF_STMT(BPF_RET | BPF_K, 0);
    constexpr sock_filter Pass = BPF_STMT(BPF_RET | BPF_K, 0xFFFF);
    constexpr sock_filter SkipIpv4Header = BPF_STMT(BPF_LDX | BPF_B | BPF_MSH, 0);
    const auto byteAt = [](std::uint32_t at) -> sock_filter {
        return BPF_STMT(BPF_LD | BPF_B | BPF_ABS, at);
    };
    const auto wordAt = [](std::uint32_t at) -> sock_filter {
        return BPF_STMT(BPF_LD | BPF_H | BPF_ABS, at);
    };
    const auto wordBehind = [](std::uint32_t at) -> sock_filter {
        return BPF_STMT(BPF_LD | BPF_H | BPF_IND, at);
    };
    const auto is = [](std::uint32_t value) -> sock_filter {
        return BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, value, 1, 0);
    };
    const auto hasNoneOf = [](std::uint32_t bits) -> sock_filter {
        return BPF_JUMP(BPF_JMP | BPF_JSET | BPF_K, bits, 0, 1);
    };
    // Behind each test stands its way out, which it steps over when it holds.
    return {
        byteAt(Ipv4Header::Protocol),
        is(IPPROTO_UDP),
        Drop,
        wordAt(Ipv4Header::Fragment),
        hasNoneOf(Ipv4Header::FragmentBits),
        Drop,
        SkipIpv4Header,
        wordBehind(UdpHeader::SourcePort),
        is(gvcp::DevicePort),
        Drop,
        wordBehind(UdpHeader::DestinationPort),
        is(localPort),
        Drop,
        Pass,
    };
}

} // namespace sdk
