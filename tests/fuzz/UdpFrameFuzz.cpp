// SPDX-License-Identifier: Apache-2.0
// Feeds frames of any kind to what reads those that the listener relays: the bytes as they are, and as the
// payload of a frame that another library makes.
#include "sdk/network/ArrivalFrame.h"
#include "sdk/network/UdpFrame.h"
#include "tests/fuzz/Require.h"

#include <algorithm>
#include <cstdint>
#include <tins/ethernetII.h>
#include <tins/ip.h>
#include <tins/rawpdu.h>
#include <tins/udp.h>

using base::Bytes;
using base::ByteView;
using namespace base::literals;

namespace {

constexpr std::size_t EthernetHeader = 14;
constexpr std::size_t IpHeader = 20;
constexpr std::size_t UdpHeader = 8;
constexpr std::size_t Headers = EthernetHeader + IpHeader + UdpHeader;

bool isSame(const sdk::UdpFrame& a, const sdk::UdpFrame& b)
{
    return a.source == b.source && a.sourcePort == b.sourcePort && a.destinationPort == b.destinationPort &&
           std::equal(a.payload.begin(), a.payload.end(), b.payload.begin(), b.payload.end());
}

void readFrame(ByteView bytes)
{
    const auto frame = sdk::parseUdpFrame(bytes);
    if (!frame)
        return;
    require(frame->payload.data() >= bytes.data() + Headers &&
            frame->payload.data() + frame->payload.size() <= bytes.data() + bytes.size());

    // What stands behind the packet is nothing to it, and what it lacks at its end makes it none.
    const std::size_t size = EthernetHeader + base::readU16(bytes, EthernetHeader + 2);
    Bytes padded(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(size));
    require(isSame(sdk::parseUdpFrame(padded).value(), *frame));
    require(!sdk::parseUdpFrame(ByteView(padded).first(size - 1)));
    padded.insert(padded.end(), 18, 0xEE);
    require(isSame(sdk::parseUdpFrame(padded).value(), *frame));
}

void readArrival(ByteView bytes)
{
    const auto arrival = sdk::parseArrivalFrame(bytes, 2);
    if (!arrival)
        return;
    require(arrival->adapter == 2 && !arrival->mac.isGroup() && !arrival->mac.isUnspecified());
    // Padding says nothing.
    Bytes padded(bytes.begin(), bytes.end());
    padded.insert(padded.end(), 18, 0xEE);
    require(sdk::parseArrivalFrame(padded, 2) == arrival);
    if (arrival->kind == RZ_ARRIVAL_DHCP)
        require(sdk::parseUdpFrame(bytes)->destinationPort == 67);
    else
        require(!sdk::parseUdpFrame(bytes) && !sdk::parseArrivalFrame(bytes.first(EthernetHeader + 27), 2));
}

void readPayload(ByteView payload)
{
    auto packet =
        Tins::EthernetII("02:00:00:00:00:05", "02:00:00:00:00:09") / Tins::IP("192.168.1.5", "10.0.0.9") /
        Tins::UDP(40000, 3956) /
        Tins::RawPDU(payload.data(), static_cast<std::uint32_t>(std::min<std::size_t>(payload.size(), 1472)));
    Bytes bytes = packet.serialize();
    const auto frame = sdk::parseUdpFrame(bytes);
    require(frame && frame->source == "10.0.0.9"_ip && frame->sourcePort == 3956 &&
            frame->destinationPort == 40000);
    require(std::equal(frame->payload.begin(), frame->payload.end(), payload.begin(),
                       payload.begin() + static_cast<std::ptrdiff_t>(frame->payload.size())));
    require(frame->payload.size() == std::min<std::size_t>(payload.size(), 1472));
    // One bit that fell over is noticed, wherever the first byte says. (A checksum that was the sum of the
    // addresses, the protocol and the length alone would say that there is none yet.)
    const std::size_t checksum = EthernetHeader + IpHeader + 6;
    const std::uint32_t pseudoHeader =
        0xC0A8 + 0x0105 + 0x0A00 + 0x0009 + 17 + 8 + static_cast<std::uint32_t>(frame->payload.size());
    const bool isLeftToTheAdapter =
        base::readU16(bytes, checksum) == (pseudoHeader & 0xFFFF) + (pseudoHeader >> 16);
    if (!payload.empty() && !isLeftToTheAdapter) {
        bytes[Headers + payload[0] % frame->payload.size()] ^= 1u;
        require(!sdk::parseUdpFrame(bytes));
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const ByteView bytes(data, size);
    readFrame(bytes);
    readArrival(bytes);
    readPayload(bytes);
    return 0;
}
