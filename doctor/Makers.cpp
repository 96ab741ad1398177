// SPDX-License-Identifier: Apache-2.0
#include "doctor/Makers.h"

#include <fstream>

namespace doctor {
namespace {

constexpr const char* Registry = "/usr/share/ieee-data/oui.txt";

/// "00-1A-2B"; empty for a MAC that its owner chose himself.
std::string blockOf(const base::MacAddress& mac)
{
    constexpr unsigned chosen = 2;
    if ((mac.bytes[0] & chosen) != 0)
        return {};
    std::string text = mac.toText().substr(0, 8);
    text[2] = text[5] = '-';
    return text;
}

} // namespace

std::map<base::MacAddress, std::string> makersIn(std::istream& registry,
                                                 const std::vector<base::MacAddress>& macs)
{
    std::multimap<std::string, base::MacAddress> wanted;
    for (const base::MacAddress& mac : macs)
        if (const std::string block = blockOf(mac); !block.empty())
            wanted.emplace(block, mac);
    std::map<base::MacAddress, std::string> makers;
    const std::string mark = "(hex)";
    for (std::string line; !wanted.empty() && std::getline(registry, line);) {
        const auto at = line.find(mark);
        if (at == std::string::npos)
            continue;
        const auto begin = line.find_first_not_of(" \t\r", at + mark.size());
        const auto end = line.find_last_not_of(" \t\r");
        const auto [first, last] = wanted.equal_range(line.substr(0, 8));
        if (begin == std::string::npos || first == last)
            continue;
        for (auto each = first; each != last; ++each)
            makers[each->second] = line.substr(begin, end + 1 - begin);
        wanted.erase(first, last);
    }
    return makers;
}

std::map<base::MacAddress, std::string> findMakers(const std::vector<base::MacAddress>& macs)
{
    std::ifstream registry(Registry);
    return makersIn(registry, macs);
}

} // namespace doctor
