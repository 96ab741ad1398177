// SPDX-License-Identifier: Apache-2.0
// Frames as captured from other systems: a probe and an announcement of RFC 5227, an ordinary question and
// its answer, and what a DHCP client sends.
#include "sdk/network/ArrivalFrame.h"

#include <gtest/gtest.h>

using namespace sdk;
using namespace base::literals;

namespace {

base::Bytes hex(const std::string& text)
{
    base::Bytes bytes;
    std::string digits;
    for (const char each : text)
        if (each != ' ')
            digits += each;
    for (std::size_t i = 0; i < digits.size(); i += 2)
        bytes.push_back(static_cast<std::uint8_t>(std::stoi(digits.substr(i, 2), nullptr, 16)));
    return bytes;
}

const std::string ToAll = "ffffffffffff 021a2b000007 0806 ";
const std::string Ethernet = "0001 0800 06 04 ";
const std::string Padding(36, '0');

/// Its UDP checksum is none. 192.168.1.x is asked for when there is an option for it.
std::string dhcp(const std::string& type, const std::string& furtherOptions = "")
{
    const std::string zeros(2 * (16 + 10 + 64 + 128), '0');
    const std::string message = "01 01 06 00 3903f326 0000 0000" + zeros.substr(0, 32) + "021a2b000007" +
                                zeros.substr(0, 2 * (10 + 64 + 128)) + "63825363" + "3501" + type +
                                furtherOptions + "ff";
    const std::size_t size = hex(message).size();
    const auto word = [](std::size_t value) {
        char digits[5];
        std::snprintf(digits, sizeof digits, "%04zx", value);
        return std::string(digits);
    };
    return "ffffffffffff 021a2b000007 0800 4500" + word(size + 28) +
           "0000 0000 40 11 0000 00000000 ffffffff" + "0044 0043" + word(size + 8) + "0000" + message;
}

std::optional<Arrival> parse(const std::string& text)
{
    return parseArrivalFrame(hex(text), 3);
}

constexpr base::MacAddress Device{{0x02, 0x1A, 0x2B, 0, 0, 7}};

Arrival arrival(RZ_ARRIVAL kind, base::Ipv4 address)
{
    return {kind, 3, Device, address};
}

} // namespace

TEST(ArrivalFrame, TellsWhatADeviceSaysByArp)
{
    EXPECT_EQ(parse(ToAll + Ethernet + "0001 021a2b000007 00000000 000000000000 c0a80a15" + Padding),
              arrival(RZ_ARRIVAL_PROBE, "192.168.10.21"_ip));
    EXPECT_EQ(parse(ToAll + Ethernet + "0001 021a2b000007 c0a80a15 000000000000 c0a80a15"),
              arrival(RZ_ARRIVAL_ANNOUNCEMENT, "192.168.10.21"_ip));
    EXPECT_EQ(parse(ToAll + Ethernet + "0002 021a2b000007 c0a80a15 ffffffffffff c0a80a15"),
              arrival(RZ_ARRIVAL_ANNOUNCEMENT, "192.168.10.21"_ip));
    EXPECT_EQ(parse(ToAll + Ethernet + "0001 021a2b000007 c0a80a15 000000000000 c0a80a01"),
              arrival(RZ_ARRIVAL_SPEECH, "192.168.10.21"_ip));
    EXPECT_EQ(parse("021a2b0000ff 021a2b000007 0806" + Ethernet +
                    "0002 021a2b000007 c0a80a15 021a2b0000ff c0a80a01"),
              arrival(RZ_ARRIVAL_SPEECH, "192.168.10.21"_ip));
}

TEST(ArrivalFrame, TellsThatADhcpClientAsksForAnAddressAndForWhich)
{
    EXPECT_EQ(parse(dhcp("01")), arrival(RZ_ARRIVAL_DHCP, {}));
    EXPECT_EQ(parse(dhcp("03", "3204c0a80a15")), arrival(RZ_ARRIVAL_DHCP, "192.168.10.21"_ip));
    EXPECT_EQ(parse(dhcp("03", "0000 3d0701021a2b000007 3204c0a80a15")),
              arrival(RZ_ARRIVAL_DHCP, "192.168.10.21"_ip))
        << "behind padding and another option";
    EXPECT_EQ(parse(dhcp("03", "3203c0a80a")), arrival(RZ_ARRIVAL_DHCP, {})) << "an address of three bytes";
    EXPECT_EQ(parse(dhcp("03", "32f0c0a80a")), arrival(RZ_ARRIVAL_DHCP, {})) << "an option beyond the end";
}

TEST(ArrivalFrame, IsNothingElse)
{
    const std::pair<const char*, std::string> others[] = {
        {"empty", ""},
        {"an Ethernet header alone", ToAll},
        {"ARP that is cut off", ToAll + Ethernet + "0001 021a2b000007 c0a80a15 000000000000 c0a80a"},
        {"ARP for another network than Ethernet",
         ToAll + "0006 0800 06 04 0001 021a2b000007 c0a80a15" + "000000000000 c0a80a15"},
        {"of nobody", ToAll + Ethernet + "0001 000000000000 c0a80a15 000000000000 c0a80a15"},
        {"of a group", ToAll + Ethernet + "0001 01005e000001 c0a80a15 000000000000 c0a80a15"},
        {"a lease given back", dhcp("07")},
        {"no type at all", dhcp("01").replace(dhcp("01").find("3501"), 6, "000000")},
    };
    for (const auto& [name, frame] : others)
        EXPECT_FALSE(parse(frame).has_value()) << name;

    std::string answer = dhcp("01");
    answer.replace(answer.find("01 01 06 00"), 2, "02");
    EXPECT_FALSE(parse(answer).has_value()) << "a server's";
    std::string other = dhcp("01");
    other.replace(other.find("63825363"), 8, "63825364");
    EXPECT_FALSE(parse(other).has_value()) << "another protocol on that port";
    std::string port = dhcp("01");
    port.replace(port.find("0044 0043"), 9, "0044 0045");
    EXPECT_FALSE(parse(port).has_value()) << "to another port";
}

TEST(ArrivalFrame, NoByteLessAndNoMatterWhichOneIsBelieved)
{
    const base::Bytes whole = hex(dhcp("03", "3204c0a80a15"));
    for (std::size_t size = 0; size < whole.size(); ++size)
        EXPECT_FALSE(parseArrivalFrame(base::ByteView(whole).first(size), 0).has_value()) << size;
}
