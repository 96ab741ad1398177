// SPDX-License-Identifier: Apache-2.0
// Feeds packets of any kind to what reads those that a packet socket hears: the bytes as they are, and as the
// payload of a packet that another library makes.
#include "sdk/network/UdpFrame.h"
#include "tests/fuzz/Require.h"

#include <algorithm>
#include <cstdint>
#include <tins/ip.h>
#include <tins/rawpdu.h>
#include <tins/udp.h>

using base::Bytes;
using base::ByteView;
using sdk::UdpChecksum;
using namespace base::literals;

namespace {

constexpr std::size_t IpHeader = 20;
constexpr std::size_t UdpHeader = 8;

bool isSame(const sdk::UdpFrame& a, const sdk::UdpFrame& b)
{
    return a.source == b.source && a.sourcePort == b.sourcePort && a.destinationPort == b.destinationPort &&
           std::equal(a.payload.begin(), a.payload.end(), b.payload.begin(), b.payload.end());
}

void readPacket(ByteView packet)
{
    const auto frame = sdk::parseUdpFrame(packet, UdpChecksum::Ignore);
    const auto verified = sdk::parseUdpFrame(packet, UdpChecksum::Verify);
    require(!verified || (frame && isSame(*verified, *frame)));
    if (!frame)
        return;
    require(frame->payload.data() >= packet.data() + IpHeader + UdpHeader &&
            frame->payload.data() + frame->payload.size() <= packet.data() + packet.size());

    // What stands behind the packet is nothing to it, and what it lacks at its end makes it none.
    const std::size_t size = base::readU16(packet, 2);
    Bytes padded(packet.begin(), packet.begin() + static_cast<std::ptrdiff_t>(size));
    require(isSame(sdk::parseUdpFrame(padded, UdpChecksum::Ignore).value(), *frame));
    require(!sdk::parseUdpFrame(ByteView(padded).first(size - 1), UdpChecksum::Ignore));
    padded.insert(padded.end(), 18, 0xEE);
    require(isSame(sdk::parseUdpFrame(padded, UdpChecksum::Ignore).value(), *frame));
}

void readPayload(ByteView payload)
{
    auto packet =
        Tins::IP("192.168.1.5", "10.0.0.9") / Tins::UDP(40000, 3956) /
        Tins::RawPDU(payload.data(), static_cast<std::uint32_t>(std::min<std::size_t>(payload.size(), 1472)));
    Bytes bytes = packet.serialize();
    const auto frame = sdk::parseUdpFrame(bytes, UdpChecksum::Verify);
    require(frame && frame->source == "10.0.0.9"_ip && frame->sourcePort == 3956 &&
            frame->destinationPort == 40000);
    require(std::equal(frame->payload.begin(), frame->payload.end(), payload.begin(),
                       payload.begin() + static_cast<std::ptrdiff_t>(frame->payload.size())));
    require(frame->payload.size() == std::min<std::size_t>(payload.size(), 1472));
    // One bit that fell over is noticed, wherever the first byte says; the length is not of the checksum
    // alone.
    if (!payload.empty()) {
        bytes[IpHeader + UdpHeader + payload[0] % frame->payload.size()] ^= 1u;
        require(!sdk::parseUdpFrame(bytes, UdpChecksum::Verify));
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const ByteView bytes(data, size);
    readPacket(bytes);
    readPayload(bytes);
    return 0;
}
