// SPDX-License-Identifier: Apache-2.0
#include "site/Export.h"

#include "base/AddressRules.h"
#include "base/UserName.h"
#include "base/Utf8.h"
#include "inventory/FreeAddresses.h"
#include "site/Matching.h"
#include "site/YamlText.h"

#include <algorithm>
#include <map>
#include <set>

namespace site {
namespace {

using base::Ipv4;
using inventory::Adapter;
using inventory::Camera;
using inventory::IpMethod;

/// As readSite() takes them.
constexpr unsigned MinMtu = 68;
constexpr unsigned MaxMtu = 65535;

std::string gatewayText(Ipv4 gateway)
{
    return gateway.isUnspecified() ? "none" : gateway.toText();
}

/// The value that most have; the first of those.
Ipv4 commonest(const std::vector<Ipv4>& values)
{
    std::map<Ipv4, std::size_t> counts;
    for (const Ipv4 each : values)
        ++counts[each];
    return std::ranges::max_element(counts, {}, [](const auto& each) { return each.second; })->first;
}

class Export
{
public:
    Export(const inventory::Inventory& inventory, MatchBy by)
        : m_inventory(inventory),
          m_by(by),
          m_candidates(candidatesOf(inventory))
    {
        for (const Candidate& each : m_candidates) {
            m_usedPlaces.insert(each.camera->userName);
            ++m_countBySerial[each.camera->serial];
            for (const std::string& adapter : each.adapters)
                ++m_countByAdapter[adapter];
        }
    }

    std::string text()
    {
        findCommonSettings();
        const std::string adapters = adaptersText();
        std::string cameras;
        for (const Candidate& each : m_candidates)
            cameras += placeText(*each.camera);
        return std::string(ExportMark) + "version: 1\n" + defaultsText() + adapters +
               (m_hasPlaces ? "cameras:\n" : "cameras: {}\n") + cameras + "unlisted: warn\n";
    }

private:
    void findCommonSettings()
    {
        std::vector<Ipv4> masks;
        std::vector<Ipv4> gateways;
        for (const Candidate& each : m_candidates)
            if (each.camera->method == IpMethod::Static && !whyNoSettings(each.camera->ip)) {
                masks.push_back(each.camera->ip.mask);
                gateways.push_back(each.camera->ip.gateway);
            }
        if (!masks.empty())
            m_common = {{}, commonest(masks), commonest(gateways)};
    }

    std::string defaultsText() const
    {
        return m_common ? "defaults: {mode: static, mask: " + m_common->mask.toText() +
                              ", gateway: " + gatewayText(m_common->gateway) + "}\n"
                        : "";
    }

    /// Of those that hear a camera. A file by adapter is for other computers too, whose addresses differ.
    std::string adaptersText()
    {
        std::string text;
        for (const Adapter& adapter : m_inventory.adapters) {
            if (m_by == MatchBy::Adapter || !m_countByAdapter.contains(adapter.name) ||
                adapter.name.empty() || !base::isUtf8(adapter.name))
                continue;
            std::vector<std::string> members;
            if (const inventory::AdapterAddress* const home = inventory::homeOf(adapter)) {
                members.push_back("address: " + home->toText());
                m_adapterOf.emplace(home->address, adapter.name);
            }
            if (adapter.mtu >= MinMtu && adapter.mtu <= MaxMtu)
                members.push_back("mtu: " + std::to_string(adapter.mtu));
            if (members.empty())
                continue;
            text += "  " + yamlText(adapter.name) + ": {" + members.front() +
                    (members.size() > 1 ? ", " + members.back() : "") + "}\n";
        }
        return text.empty() ? "" : "adapters:\n" + text;
    }

    std::string placeText(const Camera& camera)
    {
        const std::string place = placeFor(camera);
        const std::string why = whyNoPlace(camera);
        const bool isLeftOut = !why.empty();
        std::string text;
        const auto add = [&text, isLeftOut](const std::string& indent, const std::string& line) {
            text += isLeftOut ? "  # " + indent.substr(2) + line + "\n" : indent + line + "\n";
        };
        const auto addComment = [&text, isLeftOut](const std::string& comment) {
            if (!comment.empty() && !isLeftOut)
                text += "    # " + commentText(comment) + "\n";
        };

        if (isLeftOut)
            text = "  # left out, as a site file cannot say it: " + commentText(why) + "\n";
        add("  ", yamlText(place) + ":");
        addComment(matchComment(camera));
        add("    ", "match: {" + matchText(camera) + "}");
        if (!camera.model.empty() && base::isUtf8(camera.model))
            add("    ", "model: " + yamlText(camera.model));
        switch (camera.method) {
        case IpMethod::Static:
            addComment(storedComment(camera));
            add("    ", "address: " + camera.ip.address.toText());
            if (!m_common || camera.ip.mask != m_common->mask)
                add("    ", "mask: " + camera.ip.mask.toText());
            if (!m_common || camera.ip.gateway != m_common->gateway)
                add("    ", "gateway: " + gatewayText(camera.ip.gateway));
            break;
        case IpMethod::Dhcp:
            add("    ", "mode: dhcp");
            break;
        case IpMethod::LinkLocal:
            add("    ", "mode: lla");
            break;
        }
        if (place != camera.userName || base::whyNoUserName("name", place))
            add("    ", "name: " + nameText(camera.userName));
        m_hasPlaces = m_hasPlaces || !isLeftOut;
        return text;
    }

    std::string placeFor(const Camera& camera)
    {
        const bool hasName = !camera.userName.empty() && base::isUtf8(camera.userName);
        std::string wanted = hasName ? camera.userName : camera.mac.toText();
        if (m_givenPlaces.insert(wanted).second)
            return wanted;
        for (unsigned number = 2;; ++number) {
            std::string other = wanted + " " + std::to_string(number);
            if (!m_usedPlaces.contains(other) && m_givenPlaces.insert(other).second)
                return other;
        }
    }

    /// Also when it is empty: what has got a name since loses it again.
    static std::string nameText(const std::string& userName)
    {
        return base::whyNoUserName("name", userName) ? "keep" : yamlText(userName);
    }

    bool isBySerial(const Camera& camera) const
    {
        return m_by == MatchBy::Serial && !camera.serial.empty() && base::isUtf8(camera.serial) &&
               m_countBySerial.at(camera.serial) == 1;
    }

    bool isByAdapter(const Camera& camera) const
    {
        return m_by == MatchBy::Adapter && !camera.adapterName.empty() && base::isUtf8(camera.adapterName);
    }

    bool isAlone(const Camera& camera) const { return m_countByAdapter.at(camera.adapterName) == 1; }

    std::string matchText(const Camera& camera) const
    {
        std::string mac = "mac: " + camera.mac.toText();
        if (isBySerial(camera))
            return "serial: " + inDoubleQuotes(camera.serial);
        if (isByAdapter(camera))
            return "adapter: " + yamlText(camera.adapterName) + (isAlone(camera) ? "" : ", " + mac);
        return mac;
    }

    std::string matchComment(const Camera& camera)
    {
        if (isByAdapter(camera) && !isAlone(camera) && m_explained.insert(camera.adapterName).second)
            return camera.adapterName + " hears " + std::to_string(m_countByAdapter.at(camera.adapterName)) +
                   " cameras, so the adapter alone does not say which one is meant";
        if (m_by != MatchBy::Serial || isBySerial(camera))
            return {};
        return camera.serial.empty() ? "by mac, as it tells no serial number"
                                     : "by mac, as its serial number is not its own: " + camera.serial;
    }

    static std::string storedComment(const Camera& camera)
    {
        if (!camera.stored || *camera.stored == camera.ip)
            return {};
        const base::IpSettings& stored = *camera.stored;
        return "it has another address stored (" + stored.address.toText() + ", mask " +
               stored.mask.toText() + ", gateway " + gatewayText(stored.gateway) +
               "), which it takes at its next start; apply stores "
               "this one";
    }

    static std::optional<base::Sentence> whyNoSettings(const base::IpSettings& ip)
    {
        if (auto why = base::whyNoMask({"mask", ip.mask}))
            return why;
        if (auto why = base::whyNoHostOf({"address", ip.address}, ip.mask))
            return why;
        return base::whyNoGateway({"gateway", ip.gateway}, {"address", ip.address}, {"mask", ip.mask});
    }

    /// Empty when a site file can have it.
    std::string whyNoPlace(const Camera& camera)
    {
        const bool hasMac = matchText(camera).find("mac: ") != std::string::npos;
        if (const auto why = base::whyNoCamera("mac", camera.mac.toText()); why && hasMac)
            return why->english();
        if (camera.method != IpMethod::Static)
            return {};
        if (const auto why = whyNoSettings(camera.ip))
            return why->english();
        const std::string address = camera.ip.address.toText();
        if (const auto adapter = m_adapterOf.find(camera.ip.address); adapter != m_adapterOf.end())
            return "this computer has the address " + address + ", too, on " + adapter->second;
        const auto [owner, isNew] = m_ownerOf.emplace(camera.ip.address, &camera);
        return isNew ? "" : "another camera has the address " + address + ", too: " + textOf(*owner->second);
    }

    const inventory::Inventory& m_inventory;
    MatchBy m_by;
    std::vector<Candidate> m_candidates;
    std::map<std::string, std::size_t> m_countBySerial;
    std::map<std::string, std::size_t> m_countByAdapter;
    std::set<std::string> m_usedPlaces;  ///< The cameras' names, of which places are made.
    std::set<std::string> m_givenPlaces; ///< Those of the places so far.
    std::set<std::string> m_explained;   ///< Adapters whose comment is written.
    std::map<Ipv4, std::string> m_adapterOf;
    std::map<Ipv4, const Camera*> m_ownerOf;
    std::optional<base::IpSettings> m_common; ///< Nothing when no camera is static.
    bool m_hasPlaces = false;
};

} // namespace

std::string exportSite(const inventory::Inventory& inventory, MatchBy by)
{
    return Export(inventory, by).text();
}

} // namespace site
