// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "base/Bytes.h"

#include <memory>
#include <netlink/addr.h>
#include <netlink/cache.h>
#include <netlink/socket.h>
#include <optional>
#include <system_error>

namespace inventory {

/// A conversation with the kernel about this computer's networks.
class Netlink
{
public:
    Netlink() : m_socket(nl_socket_alloc(), &nl_socket_free)
    {
        if (!m_socket)
            throw std::bad_alloc();
        require(nl_connect(m_socket.get(), NETLINK_ROUTE), "the kernel's networks");
    }

    nl_sock* get() const { return m_socket.get(); }

    /// Throws std::system_error when that is one of the library's errors.
    static void require(int result, const char* what)
    {
        if (result < 0)
            throw std::system_error(std::make_error_code(std::errc::io_error),
                                    std::string(what) + ": " + nl_geterror(result));
    }

private:
    std::unique_ptr<nl_sock, decltype(&nl_socket_free)> m_socket;
};

struct CacheDeleter
{
    void operator()(nl_cache* cache) const { nl_cache_free(cache); }
};
using Cache = std::unique_ptr<nl_cache, CacheDeleter>;

inline std::optional<base::Ipv4> ipv4Of(const nl_addr* address)
{
    if (!address || nl_addr_get_len(address) != 4)
        return std::nullopt;
    return base::readIpv4({static_cast<const std::uint8_t*>(nl_addr_get_binary_addr(address)), 4}, 0);
}

inline std::optional<base::MacAddress> macOf(const nl_addr* address)
{
    if (!address || nl_addr_get_len(address) != 6)
        return std::nullopt;
    return base::readMac({static_cast<const std::uint8_t*>(nl_addr_get_binary_addr(address)), 6}, 0);
}

} // namespace inventory
