// SPDX-License-Identifier: Apache-2.0
// docs/site.schema.json and the reader say the same: held against each other on a file that has everything,
// and on what becomes of it when anything in it is left out, added or something else.
#include "tests/site/Schema.h"
#include "site/ReadSite.h"

#include <fstream>
#include <gmock/gmock.h>

using nlohmann::json;

namespace {

const json& schema()
{
    static const json read = json::parse(std::ifstream(SITE_SCHEMA));
    return read;
}

/// With place names of both lengths, and with every member somewhere.
json everything()
{
    return json::parse(R"({
        "version": 1,
        "defaults": {"mode": "static", "mask": "255.0.0.0", "gateway": "none"},
        "adapters": {"line0": {"address": "10.0.0.1/8", "mtu": 1500}},
        "cameras": {
            "left": {"match": {"adapter": "line0", "serial": "1", "mac": "02:00:00:00:00:0a", "name": "x"},
                     "model": "M", "mode": "static", "address": "10.0.0.2", "mask": "255.0.0.0",
                     "gateway": "10.0.0.3", "name": "l"},
            "right": {"match": {"name": "y"}, "mode": "dhcp"},
            "a place of the line": {"match": {"adapter": "line1"}, "address": "10.0.0.4", "name": "keep"}
        },
        "unlisted": "warn"})");
}

const std::vector<json> Values{nullptr,
                               true,
                               0,
                               1,
                               67,
                               68,
                               1500,
                               65535,
                               65536,
                               -1,
                               "",
                               "1",
                               "x",
                               "none",
                               "keep",
                               "static",
                               "dhcp",
                               "lla",
                               "DHCP",
                               "ignore",
                               "warn",
                               "fail",
                               "exactly-15-byte",
                               "sixteen-bytes-xx",
                               "10.0.0.9",
                               "10.0.0.09",
                               "10.0.0",
                               "127.0.0.1",
                               "0.0.0.0",
                               "224.0.0.1",
                               "240.0.0.1",
                               "126.1.1.1",
                               "128.1.1.1",
                               "223.255.255.254",
                               "255.255.255.255",
                               "10.0.0.9/8",
                               "10.0.0.9/1",
                               "10.0.0.9/0",
                               "10.0.0.9/30",
                               "10.0.0.9/32",
                               "10.0.0.9/33",
                               "10.0.0.9/08",
                               "127.0.0.1/8",
                               "255.0.0.0",
                               "128.0.0.0",
                               "255.255.255.252",
                               "255.255.255.254",
                               "255.0.255.0",
                               "02:00:00:00:00:01",
                               "02-00-00-00-00-0B",
                               "02000000000c",
                               "02:00-00:00:00:01",
                               "0200:00000001",
                               "03:00:00:00:00:01",
                               "00:00:00:00:00:00",
                               "000000000000",
                               json::object(),
                               json::array(),
                               json{{"x", "y"}}};

/// Why the reader refuses it, the format of its sentence; empty when it takes it.
std::string refusal(const json& site)
{
    try {
        site::readSite(site.dump());
    } catch (const site::SiteError& error) {
        return error.sentence().format;
    }
    return {};
}

/// What no schema can say, as it is about several values together.
bool isAboutTheWhole(const std::string& refusal)
{
    constexpr std::string_view wholes[] = {
        "address is missing here, which mode static needs",
        "mask is missing here and in defaults, which mode static needs",
        "%1 goes with mode static only",
        "is not in the subnet of",
        "is the address of the subnet itself",
        "is the broadcast address of its subnet",
        "is the camera's own new address",
        "is that of adapter %2",
        "have one address, %5",
        "match the same cameras",
    };
    return std::ranges::any_of(
        wholes, [&refusal](std::string_view each) { return refusal.find(each) != std::string::npos; });
}

struct Counts
{
    int taken = 0;
    int refused = 0;
    int refusedAsAWhole = 0;
};

void compare(const json& site, Counts& counts)
{
    const std::string why = refusal(site);
    const bool fits = schema::fits(site, schema(), schema());
    if (isAboutTheWhole(why)) {
        ++counts.refusedAsAWhole;
        return;
    }
    ++(fits ? counts.taken : counts.refused);
    EXPECT_EQ(fits, why.empty()) << why << '\n' << site.dump(1);
}

/// All members of that object, and of those inside it, by turns left out, joined by another, or something
/// else.
void compareVariants(const json& site, const json::json_pointer& at, Counts& counts)
{
    const json object = site[at];
    json variant = site;
    variant[at]["another"] = "x";
    compare(variant, counts);
    variant[at].erase("another");
    variant[at][""] = "x";
    compare(variant, counts);
    for (const auto& [name, value] : object.items()) {
        variant = site;
        variant[at].erase(name);
        compare(variant, counts);
        for (const json& other : Values) {
            variant[at][name] = other;
            compare(variant, counts);
        }
        if (value.is_object())
            compareVariants(site, at / name, counts);
    }
}

} // namespace

TEST(SiteSchema, TakesAndRefusesWhatTheReaderDoes)
{
    Counts counts;
    compare(everything(), counts);
    EXPECT_EQ(counts.taken, 1);
    compareVariants(everything(), json::json_pointer(), counts);
    EXPECT_GT(counts.taken, 100);
    EXPECT_GT(counts.refused, 1000);
    EXPECT_GT(counts.refusedAsAWhole, 5);
}

TEST(SiteSchema, KnowsThatALongPlaceNeedsAName)
{
    Counts counts;
    for (const char* place : {"exactly-15-byte", "sixteen-bytes-xx"})
        for (const json& name : {json(), json("keep"), json("x")}) {
            json site{{"version", 1},
                      {"cameras", {{place, {{"match", {{"serial", "1"}}}, {"mode", "lla"}}}}}};
            if (!name.is_null())
                site["cameras"][place]["name"] = name;
            compare(site, counts);
        }
    EXPECT_EQ(counts.taken, 5);
    EXPECT_EQ(counts.refused, 1);
}
