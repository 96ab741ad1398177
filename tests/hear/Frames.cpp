// SPDX-License-Identifier: Apache-2.0
#include "tests/hear/Frames.h"

#include "tests/simulator/Hex.h"

#include <algorithm>

namespace frames {

const base::Bytes Answer = hex("02 00 00 00 00 05  02 00 00 00 01 00  08 00"
                               "45 00 00 1E 00 00 40 00 40 11 6F 19  0A 00 00 09  C0 A8 01 05"
                               "0F 74 9C 40 00 0A 27 0D  61 62");
const base::Bytes Discover = hex("FF FF FF FF FF FF  02 00 00 00 01 00  08 00"
                                 "45 00 00 20 00 00 00 00 40 11 7A CE  00 00 00 00  FF FF FF FF"
                                 "00 44 00 43 00 0C 00 00  01 01 06 00");
const base::Bytes ArpRequest = hex("FF FF FF FF FF FF  02 00 00 00 01 00  08 06  00 01 08 00 06 04 00 01"
                                   "02 00 00 00 01 00  C0 A8 01 09  00 00 00 00 00 00  C0 A8 01 05");
const base::Bytes ArpReply = hex("02 00 00 00 00 05  02 00 00 00 01 00  08 06  00 01 08 00 06 04 00 02"
                                 "02 00 00 00 01 00  C0 A8 01 09  02 00 00 00 00 05  C0 A8 01 05");
const base::Bytes ArpProbe = hex("FF FF FF FF FF FF  02 00 00 00 01 00  08 06  00 01 08 00 06 04 00 01"
                                 "02 00 00 00 01 00  00 00 00 00  00 00 00 00 00 00  C0 A8 01 09");

std::vector<Named> unlikeAnswers()
{
    const base::Bytes other = changed(Answer, 42, {0x7A, 0x7A});
    base::Bytes optionsLikePorts = changed(other, 14, {0x46});
    optionsLikePorts.insert(optionsLikePorts.begin() + 34, {0x0F, 0x74, 0x9C, 0x40});
    optionsLikePorts[38] = 0;
    return {
        {"from another port", changed(other, 34, {0x0F, 0x75})},
        {"to another port", changed(other, 36, {0x9C, 0x41})},
        {"ports in the IP options", optionsLikePorts},
        {"TCP", changed(other, 23, {6})},
        {"a first fragment", changed(other, 20, {0x20, 0x00})},
        {"a fragment in the middle", changed(other, 20, {0x20, 0x02})},
        {"a last fragment", changed(other, 20, {0x00, 0x02})},
        {"cut off before the ports", {other.begin(), other.begin() + 37}},
        {"no IPv4, but for its header", changed(other, 12, {0x88, 0xB5})},
        {"IPv6", hex("02 00 00 00 00 05  02 00 00 00 01 00  86 DD  60 00 00 00 00 0A 11 40"
                     "FE 80 00 00 00 00 00 00 00 00 00 00 00 00 00 09"
                     "FE 80 00 00 00 00 00 00 00 00 00 00 00 00 00 05  0F 74 9C 40 00 0A 27 0D  61 62")},
        {"an ARP request", ArpRequest},
        {"for another host", changed(other, 0, hex("02 00 00 00 00 06"))},
        {"in a VLAN", tagged(other, 7)},
        {"in a VLAN, with a priority", tagged(other, 0x6007)},
    };
}

base::Bytes changed(base::Bytes frame, std::size_t at, const base::Bytes& bytes)
{
    std::copy(bytes.begin(), bytes.end(), frame.begin() + static_cast<std::ptrdiff_t>(at));
    return frame;
}

base::Bytes tagged(base::Bytes frame, std::uint16_t tag)
{
    const auto high = static_cast<std::uint8_t>(tag >> 8);
    frame.insert(frame.begin() + 12, {0x81, 0x00, high, static_cast<std::uint8_t>(tag)});
    return frame;
}

} // namespace frames
