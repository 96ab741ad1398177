// SPDX-License-Identifier: Apache-2.0
// Rules as `nft -j list ruleset` prints them.
#include "doctor/Firewall.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using doctor::droppingChains;
using doctor::FilterChain;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Optional;

namespace {

std::string ruleset(const std::string& objects)
{
    return R"({"nftables": [{"metainfo": {"version": "1.0.6", "json_schema_version": 1}},
                            {"table": {"family": "inet", "name": "filter", "handle": 1}}, )" +
           objects + "]}";
}

std::string chain(const std::string& name, const std::string& hook, const std::string& policy = "accept",
                  const std::string& type = "filter")
{
    return R"({"chain": {"family": "inet", "table": "filter", "name": ")" + name +
           R"(", "handle": 1, "type": ")" + type + R"(", "hook": ")" + hook + R"(", "prio": 0, "policy": ")" +
           policy + R"("}})";
}

std::string innerChain(const std::string& name)
{
    return R"({"chain": {"family": "inet", "table": "filter", "name": ")" + name + R"(", "handle": 9}})";
}

std::string rule(const std::string& chain, const std::string& expression)
{
    return R"({"rule": {"family": "inet", "table": "filter", "chain": ")" + chain +
           R"(", "handle": 4, "expr": [)" + expression + "]}}";
}

const FilterChain Input{"inet", "filter", "input"};

} // namespace

TEST(DroppingChains, AreThoseWhosePolicyIsToDrop)
{
    EXPECT_THAT(
        droppingChains(ruleset(chain("input", "input", "drop") + "," + chain("pre", "prerouting") + "," +
                               chain("output", "output", "drop") + "," + chain("forward", "forward", "drop") +
                               "," + chain("nat", "prerouting", "drop", "nat"))),
        Optional(ElementsAre(Input)));
}

TEST(DroppingChains, AreThoseWithARuleThatDrops)
{
    const std::string match =
        R"({"match": {"op": "==", "left": {"payload": {"protocol": "udp", "field": "sport"}}, "right": 3956}}, )";
    for (const char* verdict :
         {R"({"drop": null})", R"({"reject": {"type": "icmpx", "expr": "port-unreachable"}})",
          R"({"xt": {"type": "target", "name": "REJECT"}})",
          R"({"vmap": {"key": {"meta": {"key": "iifname"}},
                                             "data": {"set": [["eth0", {"drop": null}]]}}})"})
        EXPECT_THAT(droppingChains(ruleset(chain("input", "input") + "," + rule("input", match + verdict))),
                    Optional(ElementsAre(Input)))
            << verdict;
    for (const char* verdict : {R"({"accept": null})", R"({"counter": {"packets": 1, "bytes": 2}})",
                                R"({"log": {"prefix": "drop"}})"})
        EXPECT_THAT(droppingChains(ruleset(chain("input", "input") + "," + rule("input", match + verdict))),
                    Optional(IsEmpty()))
            << verdict;
}

TEST(DroppingChains, AreThoseThatJumpToOneThatDrops)
{
    const std::string inner = innerChain("a") + "," + innerChain("b") + "," +
                              rule("a", R"({"goto": {"target": "b"}})") + "," +
                              rule("b", R"({"jump": {"target": "a"}})");
    const std::string jump =
        chain("input", "input") + "," + rule("input", R"({"jump": {"target": "a"}})") + "," + inner;
    EXPECT_THAT(droppingChains(ruleset(jump)), Optional(IsEmpty())) << "and a circle has an end";
    EXPECT_THAT(droppingChains(ruleset(jump + "," + rule("b", R"({"drop": null})"))),
                Optional(ElementsAre(Input)));
}

TEST(DroppingChains, AreThoseWithAMapOfVerdictsThatDrops)
{
    const std::string rules =
        chain("input", "input") + "," +
        rule("input", R"({"vmap": {"key": {"meta": {"key": "iifname"}}, "data": "@verdicts"}})") + "," +
        R"({"map": {"family": "inet", "name": "verdicts", "table": "filter", "type": "ifname", "handle": 2,
                    "map": "verdict", "elem": [["eth1", {"accept": null}], ["eth0", {")";
    EXPECT_THAT(droppingChains(ruleset(rules + R"(drop": null}]]}})")), Optional(ElementsAre(Input)));
    EXPECT_THAT(droppingChains(ruleset(rules + R"(accept": null}]]}})")), Optional(IsEmpty()));
}

TEST(DroppingChains, OfAnotherProtocolOrBeforeTheListenerAreNone)
{
    const std::pair<const char*, const char*> others[] = {
        {"ip6", "input"}, {"arp", "input"}, {"bridge", "input"}, {"netdev", "ingress"}, {"inet", "ingress"}};
    for (const auto& [family, hook] : others)
        EXPECT_THAT(droppingChains(
                        ruleset(R"({"chain": {"family": ")" + std::string(family) +
                                R"(", "table": "t", "name": "in", "handle": 1, "type": "filter", "hook": ")" +
                                hook + R"(", "prio": 0, "policy": "drop"}})")),
                    Optional(IsEmpty()))
            << family << ' ' << hook;
}

TEST(DroppingChains, AreNotToBeHadOfWhatIsNoRuleset)
{
    for (const char* text : {"", "{", "[]", "{}", R"({"nftables": 1})"})
        EXPECT_EQ(droppingChains(text), std::nullopt) << text;
    // What is not known is passed over.
    EXPECT_THAT(droppingChains(R"({"nftables": [1, "a", {"chain": 2}, {"rule": []}, {"map": null},
                                                {"rule": {"expr": 3}}, {"flowtable": {"dev": "eth0"}}]})"),
                Optional(IsEmpty()));
}
