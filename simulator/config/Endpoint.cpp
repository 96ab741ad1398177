// SPDX-License-Identifier: Apache-2.0
#include "simulator/config/Endpoint.h"

#include <charconv>

namespace simulator {

std::optional<Endpoint> parseEndpoint(std::string_view text)
{
    const std::size_t colon = text.find(':');
    const auto address = base::Ipv4::parse(text.substr(0, colon));
    if (!address || colon == std::string_view::npos)
        return std::nullopt;
    Endpoint endpoint{*address, 0};
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data() + colon + 1, end, endpoint.port);
    if (error != std::errc{} || stop != end || endpoint.port == 0)
        return std::nullopt;
    return endpoint;
}

std::string toText(const Endpoint& endpoint)
{
    return endpoint.address.toText() + ':' + std::to_string(endpoint.port);
}

} // namespace simulator
