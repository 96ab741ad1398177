// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace doctor {

/// A base chain of nftables that may drop what arrives.
struct FilterChain
{
    std::string family;
    std::string table;
    std::string name;

    bool operator==(const FilterChain&) const = default;
};

/// What is known of this computer's firewall.
struct Firewall
{
    enum class Sight
    {
        NotAllowed, ///< Only root may look.
        NotPossible,
        Seen
    };
    Sight sight = Sight::NotAllowed;
    std::vector<FilterChain> chains;
};

/// The chains, of `nft -j list ruleset`: those of type filter through which a datagram passes on its way from
/// where the listener hears it to another program of this computer, and that drop or reject something, by
/// their policy, by a rule or by a chain that they jump to. Nothing when that is no such text.
std::optional<std::vector<FilterChain>> droppingChains(const std::string& ruleset);

/// Asks nft(8), in the calling thread's network.
Firewall lookAtFirewall();

} // namespace doctor
