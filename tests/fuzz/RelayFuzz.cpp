// SPDX-License-Identifier: Apache-2.0
// Lets the listener say anything, in pieces of any size: what is made of it does not depend on the pieces, is
// no more than was said, and never reads beyond it.
#include "sdk/network/RelayedPackets.h"
#include "sdk/network/UdpFrame.h"
#include "tests/fuzz/Require.h"

#include <algorithm>
#include <cstdint>
#include <vector>

using base::Bytes;
using base::ByteView;

namespace {

void take(sdk::RelayedPackets& packets, std::vector<Bytes>& taken)
{
    while (const auto packet = packets.next()) {
        taken.emplace_back(packet->begin(), packet->end());
        if (const auto frame = sdk::parseUdpFrame(*packet))
            require(frame->payload.data() >= packet->data() &&
                    frame->payload.data() + frame->payload.size() <= packet->data() + packet->size());
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size == 0)
        return 0;
    // The first byte is the size of the pieces.
    const std::size_t piece = std::max<std::size_t>(data[0], 1);
    const ByteView bytes(data + 1, size - 1);

    sdk::RelayedPackets whole;
    std::vector<Bytes> expected;
    whole.add(bytes);
    take(whole, expected);

    sdk::RelayedPackets packets;
    std::vector<Bytes> taken;
    for (std::size_t at = 0; at < bytes.size(); at += piece) {
        packets.add(bytes.subspan(at, std::min(piece, bytes.size() - at)));
        take(packets, taken);
    }
    require(taken == expected);

    Bytes said;
    for (const Bytes& packet : taken) {
        said.push_back(static_cast<std::uint8_t>(packet.size() >> 8));
        said.push_back(static_cast<std::uint8_t>(packet.size()));
        said.insert(said.end(), packet.begin(), packet.end());
    }
    require(said.size() <= bytes.size() && std::equal(said.begin(), said.end(), bytes.begin()));
    return 0;
}
