// SPDX-License-Identifier: Apache-2.0
#include "site/SiteRules.h"

#include "site/SiteError.h"

#include <map>
#include <optional>
#include <string>
#include <utility>

namespace site {
namespace {

using inventory::IpMethod;

/// `format` is filled with both places, their lines, and the value that they have in common.
void requireUnique(const std::vector<PlaceInFile>& places, Spot PlaceInFile::*spot, const char* format,
                   const auto& valueOf)
{
    std::map<std::string, const PlaceInFile*> owners;
    for (const PlaceInFile& each : places) {
        const std::optional<std::string> value = valueOf(each.place);
        const auto [owner, isNew] = value ? owners.emplace(*value, &each) : std::pair(owners.end(), true);
        if (isNew)
            continue;
        const PlaceInFile& other = *owner->second;
        const Spot& here = each.*spot;
        throw SiteError(here.line, here.column,
                        {format,
                         {other.place.name, std::to_string((other.*spot).line), each.place.name,
                          std::to_string(here.line), *value}});
    }
}

std::optional<std::string> addressOf(const Place& place)
{
    return place.method == IpMethod::Static ? std::optional(place.ip.address.toText()) : std::nullopt;
}

std::optional<std::string> macOf(const Place& place)
{
    return place.match.mac ? std::optional(place.match.mac->toText()) : std::nullopt;
}

/// Nothing for those with a MAC or a serial number, which differ in that.
std::optional<std::string> othersOf(const Place& place)
{
    const Match& match = place.match;
    if (match.mac || match.serial)
        return std::nullopt;
    // A name of the system's has no slash, and is not empty.
    return match.adapter.value_or("") + "/" + (match.userName ? "=" + *match.userName : "");
}

} // namespace

void requireRoomForAll(const std::vector<PlaceInFile>& places, const std::vector<AdapterRule>& adapters,
                       const Lines& adapterLines)
{
    requireUnique(places, &PlaceInFile::match,
                  TRANSLATABLE("Sentence",
                               "places \"%1\" (line %2) and \"%3\" (line %4) have one camera, of MAC "
                               "%5; one place is allowed for each"),
                  macOf);
    requireUnique(places, &PlaceInFile::match,
                  TRANSLATABLE("Sentence",
                               "places \"%1\" (line %2) and \"%3\" (line %4) have one camera, of serial "
                               "number \"%5\"; one place is allowed for each"),
                  [](const Place& place) { return place.match.serial; });
    requireUnique(places, &PlaceInFile::match,
                  TRANSLATABLE("Sentence",
                               "places \"%1\" (line %2) and \"%3\" (line %4) match the same cameras; "
                               "each needs a match of its own"),
                  othersOf);
    requireUnique(places, &PlaceInFile::address,
                  TRANSLATABLE("Sentence",
                               "places \"%1\" (line %2) and \"%3\" (line %4) have one address, %5; each "
                               "needs its own"),
                  addressOf);

    std::map<std::string, std::size_t> owners;
    for (std::size_t i = 0; i < adapters.size(); ++i)
        if (adapters[i].address)
            owners.emplace(adapters[i].address->address.toText(), i);
    for (const PlaceInFile& each : places) {
        const auto address = addressOf(each.place);
        const auto owner = address ? owners.find(*address) : owners.end();
        if (owner != owners.end())
            throw SiteError(
                each.address.line, each.address.column,
                {TRANSLATABLE("Sentence", "address \"%1\" is that of adapter %2 (line %3); another one is "
                                          "allowed"),
                 {*address, adapters[owner->second].name, std::to_string(adapterLines[owner->second])}});
    }
}

} // namespace site
