// SPDX-License-Identifier: Apache-2.0
#include "doctor/Firewall.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <map>
#include <memory>
#include <nlohmann/json.hpp>
#include <set>
#include <tuple>
#include <unistd.h>

namespace doctor {
namespace {

using nlohmann::json;

/// No administrator reads a longer ruleset either; sets of a million addresses are in there.
constexpr std::size_t MaxRuleset = std::size_t{64} << 20;

/// Family, table, and the name of a chain or a map in it.
using Name = std::tuple<std::string, std::string, std::string>;

std::string text(const json& object, const char* member)
{
    const auto found = object.find(member);
    return found != object.end() && found->is_string() ? found->get<std::string>() : std::string();
}

Name nameOf(const json& object, const char* member)
{
    return {text(object, "family"), text(object, "table"), text(object, member)};
}

/// What a chain's rules do with some of what comes by.
struct Verdicts
{
    bool drops = false;
    std::set<Name> others; ///< Chains and maps that have further ones.
};

/// Collects them, wherever in a rule or a map's elements they stand.
void collect(const json& expression, const Name& self, Verdicts& verdicts)
{
    if (!expression.is_structured())
        return;
    for (const auto& [key, value] : expression.items()) {
        const auto& [family, table, name] = self;
        if (expression.is_object()) {
            const std::string target = value.is_object() ? text(value, "target") : std::string();
            // Those of iptables, which nft shows by their names at most.
            const std::string foreign =
                key == "xt" && value.is_object() ? text(value, "name") : std::string();
            if (key == "drop" || key == "reject" || foreign == "DROP" || foreign == "REJECT")
                verdicts.drops = true;
            else if ((key == "jump" || key == "goto") && !target.empty())
                verdicts.others.insert({family, table, target});
            else if (key == "vmap" && value.is_object() && text(value, "data").starts_with('@'))
                verdicts.others.insert({family, table, text(value, "data")});
        }
        collect(value, self, verdicts);
    }
}

bool canDrop(const Name& first, const std::map<Name, Verdicts>& verdicts)
{
    std::set<Name> seen{first};
    std::vector<Name> open{first};
    while (!open.empty()) {
        const auto found = verdicts.find(open.back());
        open.pop_back();
        if (found == verdicts.end())
            continue;
        if (found->second.drops)
            return true;
        for (const Name& other : found->second.others)
            if (seen.insert(other).second)
                open.push_back(other);
    }
    return false;
}

/// Whether a datagram from a camera passes through it between the listener, which hears behind the hooks of
/// devices and bridges, and a program.
bool isOnTheWay(const json& chain)
{
    const std::string family = text(chain, "family");
    const std::string hook = text(chain, "hook");
    return (family == "ip" || family == "inet") && text(chain, "type") == "filter" &&
           (hook == "input" || hook == "prerouting");
}

struct PipeCloser
{
    void operator()(FILE* pipe) const { ::pclose(pipe); }
};

} // namespace

std::optional<std::vector<FilterChain>> droppingChains(const std::string& ruleset)
{
    const json whole = json::parse(ruleset, nullptr, false);
    const auto all = whole.is_object() ? whole.find("nftables") : whole.end();
    if (!whole.is_object() || all == whole.end() || !all->is_array())
        return std::nullopt;

    std::map<Name, Verdicts> verdicts;
    for (const json& each : *all) {
        if (!each.is_object())
            continue;
        if (const auto rule = each.find("rule"); rule != each.end() && rule->is_object()) {
            const Name chain = nameOf(*rule, "chain");
            collect(rule->value("expr", json()), chain, verdicts[chain]);
        } else if (const auto map = each.find("map"); map != each.end() && map->is_object()) {
            Name name = nameOf(*map, "name");
            std::get<2>(name).insert(0, 1, '@');
            collect(map->value("elem", json()), name, verdicts[name]);
        }
    }
    std::vector<FilterChain> chains;
    for (const json& each : *all) {
        if (!each.is_object() || !each.contains("chain") || !each["chain"].is_object())
            continue;
        const json& chain = each["chain"];
        if (isOnTheWay(chain) &&
            (text(chain, "policy") == "drop" || canDrop(nameOf(chain, "name"), verdicts)))
            chains.push_back({text(chain, "family"), text(chain, "table"), text(chain, "name")});
    }
    return chains;
}

Firewall lookAtFirewall()
{
    if (::geteuid() != 0)
        return {Firewall::Sight::NotAllowed, {}};
    // Root's PATH need not have it, as that of su(1).
    const std::unique_ptr<FILE, PipeCloser> nft(
        ::popen("PATH=\"$PATH:/usr/sbin:/sbin\" nft -j list ruleset 2>/dev/null", "re"));
    std::string ruleset;
    std::array<char, 65536> buffer;
    while (nft && ruleset.size() <= MaxRuleset) {
        const std::size_t size = std::fread(buffer.data(), 1, buffer.size(), nft.get());
        if (size == 0)
            break;
        ruleset.append(buffer.data(), size);
    }
    auto chains = droppingChains(ruleset);
    if (!chains)
        return {Firewall::Sight::NotPossible, {}};
    return {Firewall::Sight::Seen, std::move(*chains)};
}

} // namespace doctor
