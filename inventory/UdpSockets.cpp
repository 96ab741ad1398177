// SPDX-License-Identifier: Apache-2.0
#include "inventory/UdpSockets.h"

#include <arpa/inet.h>
#include <charconv>
#include <fstream>
#include <optional>
#include <sstream>
#include <string>
#include <string_view>

namespace inventory {
namespace {

constexpr std::size_t WordDigits = 8;

template <typename Number>
std::optional<Number> number(std::string_view text, int base)
{
    Number value{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value, base);
    return error == std::errc() && end == text.data() + text.size() ? std::optional(value) : std::nullopt;
}

/// What the kernel prints for an address of IPv6 when it is none, or one of IPv4: three words that say so.
std::optional<std::string_view> ipv4Word(std::string_view address)
{
    if (address.size() == WordDigits)
        return address;
    if (address.size() != 4 * WordDigits)
        return std::nullopt;
    const std::string_view before = address.substr(0, 3 * WordDigits);
    const std::string_view last = address.substr(3 * WordDigits);
    const bool isAny = address.find_first_not_of('0') == std::string_view::npos;
    const bool isMapped = before.substr(0, 2 * WordDigits).find_first_not_of('0') == std::string_view::npos &&
                          number<std::uint32_t>(before.substr(2 * WordDigits), 16) == htonl(0xFFFF);
    return isAny || isMapped ? std::optional(last) : std::nullopt;
}

/// "0100007F:0035" is 127.0.0.1, port 53, on a computer that has the low byte first: an address is printed as
/// the number that its bytes are there.
std::optional<Endpoint> endpointOf(std::string_view text)
{
    const std::size_t colon = text.find(':');
    if (colon == std::string_view::npos)
        return std::nullopt;
    const auto word = ipv4Word(text.substr(0, colon));
    const auto address = word ? number<std::uint32_t>(*word, 16) : std::nullopt;
    const auto port = number<std::uint16_t>(text.substr(colon + 1), 16);
    if (!address || !port)
        return std::nullopt;
    return Endpoint{base::Ipv4(ntohl(*address)), *port};
}

std::optional<UdpSocket> socketOf(const std::string& line)
{
    std::istringstream words(line);
    std::string skipped;
    std::string local;
    std::string remote;
    std::string user;
    std::string inode;
    // Its number, its state, both queues, two of timers; a time-out.
    words >> skipped >> local >> remote >> skipped >> skipped >> skipped >> skipped >> user >> skipped >>
        inode;
    const auto from = endpointOf(local);
    const auto to = endpointOf(remote);
    const auto userId = number<unsigned>(user, 10);
    const auto file = number<std::uint64_t>(inode, 10);
    if (!from || !to || !userId || !file)
        return std::nullopt;
    return UdpSocket{*from, *to, *userId, *file};
}

} // namespace

std::vector<UdpSocket> readUdpSockets(std::istream& table)
{
    std::vector<UdpSocket> sockets;
    for (std::string line; std::getline(table, line);)
        if (const auto socket = socketOf(line))
            sockets.push_back(*socket);
    return sockets;
}

std::vector<UdpSocket> udpSockets()
{
    std::vector<UdpSocket> sockets;
    for (const char* path : {"/proc/thread-self/net/udp", "/proc/thread-self/net/udp6"}) {
        std::ifstream table(path);
        const std::vector<UdpSocket> some = readUdpSockets(table);
        sockets.insert(sockets.end(), some.begin(), some.end());
    }
    return sockets;
}

} // namespace inventory
