// SPDX-License-Identifier: Apache-2.0
// Feeds texts of any kind to what reads a site file, replaces the cameras of those that it takes, and exports
// cameras that say of themselves what stands there.
#include "base/Utf8.h"
#include "site/Export.h"
#include "site/ReadSite.h"
#include "site/Replacement.h"
#include "tests/fuzz/Require.h"

#include <set>

using namespace site;
using inventory::IpMethod;

namespace {

void judge(const Site& site)
{
    std::set<std::string> names;
    std::set<base::Ipv4> addresses;
    for (const Place& place : site.places) {
        require(!place.name.empty() && base::isUtf8(place.name) && names.insert(place.name).second);
        require(place.match != Match{} && place.match.adapter != "" && place.match.serial != "");
        require(!place.userName || place.userName->size() <= 15);
        if (place.method != IpMethod::Static) {
            require(place.ip == base::IpSettings{});
            continue;
        }
        require(place.ip.address.canBeHost() && place.ip.mask.isMask());
        require(addresses.insert(place.ip.address).second);
        require(place.ip.gateway.isUnspecified() || place.ip.reaches(place.ip.gateway));
    }
    for (const AdapterRule& rule : site.adapters)
        require(!rule.name.empty() && (!rule.address || !addresses.contains(rule.address->address)));
}

/// Whatever is asked: the site is the same with a new camera there, or it is said why not.
void replace(std::string_view text, const Site& site, const std::string& serial)
{
    inventory::Camera newcomer;
    newcomer.mac = {{0x02, 0xFE, 0, 0, 0, 1}};
    newcomer.serial = serial;
    for (std::size_t i = 0; i < std::min<std::size_t>(site.places.size(), 2); ++i) {
        Site wanted = site;
        Match& match = wanted.places[i].match;
        if (match.serial)
            match.serial = serial;
        if (match.mac)
            match.mac = newcomer.mac;
        try {
            require(readSite(withNewcomer(text, site.places[i].name, newcomer)) == wanted);
        } catch (const SiteError& error) {
            require(!error.sentence().format.empty());
        }
    }
}

inventory::Inventory inventoryLike(const Site& site, std::string_view text)
{
    inventory::Inventory inventory;
    for (const Place& place : site.places) {
        inventory::Camera camera;
        camera.mac = {{2, 0, 0, 0, static_cast<std::uint8_t>(inventory.cameras.size() >> 8),
                       static_cast<std::uint8_t>(inventory.cameras.size())}};
        camera.userName = place.name.substr(0, 16);
        camera.model = place.model.value_or("").substr(0, 32);
        camera.serial = place.match.serial.value_or("").substr(0, 16);
        camera.adapterName = place.match.adapter.value_or("line0");
        camera.method = place.method;
        camera.ip = place.ip;
        inventory.cameras.push_back(camera);
    }
    // As it is, it is a name, too.
    inventory::Camera camera;
    camera.mac = {{2, 1, 0, 0, 0, 1}};
    camera.userName = text.substr(0, 16);
    camera.model = camera.serial = text.substr(0, 16);
    camera.adapterName = text.substr(0, 15);
    inventory.cameras.push_back(camera);
    return inventory;
}

void exportAll(const inventory::Inventory& inventory)
{
    for (const MatchBy by : {MatchBy::Mac, MatchBy::Serial, MatchBy::Adapter}) {
        const std::string text = exportSite(inventory, by);
        require(base::isUtf8(text) && text.starts_with(ExportMark));
        const Site site = readSite(text);
        require(site.places.size() == inventory.cameras.size());
        for (std::size_t i = 0; i < site.places.size(); ++i) {
            const inventory::Camera& camera = inventory.cameras[i];
            require(site.places[i].method == camera.method && site.places[i].ip == camera.ip);
            require(!site.places[i].userName || *site.places[i].userName == camera.userName);
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    try {
        const Site site = readSite(text);
        judge(site);
        for (const char* serial : {"24010019", "a: \"b\"\n# '", "", "null"})
            replace(text, site, serial);
        // A look finds no more cameras than that, and a file with so many can be read.
        if (site.places.size() <= 256)
            exportAll(inventoryLike(site, text));
    } catch (const SiteError& error) {
        require(error.line() >= 0 && error.column() >= 0 && !error.sentence().format.empty());
        exportAll(inventoryLike({}, text));
    }
    return 0;
}
