// SPDX-License-Identifier: Apache-2.0
#include "site/ReadSite.h"

#include "base/AddressRules.h"
#include "base/UserName.h"
#include "site/SiteRules.h"
#include "site/Yaml.h"

#include <algorithm>
#include <charconv>

namespace site {
namespace {

using base::Sentence;
using inventory::IpMethod;

[[noreturn]] void refuse(const YamlNode& node, const Sentence& sentence)
{
    throw SiteError(node.spot.line, node.spot.column, sentence);
}

void require(const YamlNode& node, const std::optional<Sentence>& why)
{
    if (why)
        refuse(node, *why);
}

/// "static, dhcp, lla".
std::string enumerated(const std::vector<std::string>& names)
{
    std::string text;
    for (const std::string& name : names)
        text += (text.empty() ? "" : ", ") + name;
    return text;
}

/// The members of a mapping, and what the user calls it.
class Members
{
public:
    Members(const std::string& name, const YamlNode& node) : m_node(node)
    {
        if (node.kind != YamlNode::Kind::Mapping)
            refuse(node,
                   {TRANSLATABLE("Sentence", "%1 has no members here; a mapping is needed, {} when it is to "
                                             "have none"),
                    {name}});
    }
    Members(const std::string& name, const YamlNode& node, const std::vector<std::string>& allowed)
        : Members(name, node)
    {
        for (const auto& [member, value] : node.members)
            if (std::ranges::find(allowed, member.text) == allowed.end())
                refuse(member, {TRANSLATABLE("Sentence", "\"%1\" is unknown here; allowed are %2"),
                                {member.text, enumerated(allowed)}});
    }

    const YamlNode& node() const { return m_node; }
    const std::vector<YamlMember>& all() const { return m_node.members; }

    const YamlNode* find(const std::string& name) const
    {
        const auto found = std::ranges::find(all(), name, [](const auto& each) { return each.name.text; });
        return found == all().end() ? nullptr : &found->value;
    }

    const YamlNode& at(const std::string& name) const
    {
        if (const YamlNode* const node = find(name))
            return *node;
        refuse(m_node, {TRANSLATABLE("Sentence", "%1 is missing here; it is needed"), {name}});
    }

private:
    const YamlNode& m_node;
};

const std::string& textOf(const std::string& name, const YamlNode& node)
{
    if (!node.isText())
        refuse(node,
               {TRANSLATABLE("Sentence", "%1 has no text here; one is needed, in quotes when it is \"null\" "
                                         "or \"~\""),
                {name}});
    return node.text;
}

std::string filledTextOf(const std::string& name, const YamlNode& node)
{
    if (textOf(name, node).empty())
        refuse(node, {TRANSLATABLE("Sentence", "%1 is an empty text; another one is needed"), {name}});
    return node.text;
}

/// Decimal, without sign and leading zeros.
std::optional<unsigned> numberIn(std::string_view text)
{
    unsigned number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    const bool isWhole = error == std::errc{} && end == text.data() + text.size();
    return isWhole && std::to_string(number) == text ? std::optional(number) : std::nullopt;
}

base::GivenIpv4 addressOf(const std::string& name, const YamlNode& node)
{
    require(node, base::whyNoIpv4(name, textOf(name, node)));
    return {name, *base::Ipv4::parse(node.text)};
}

base::GivenIpv4 gatewayOf(const YamlNode& node)
{
    if (textOf("gateway", node) == "none")
        return {"gateway", {}};
    base::GivenIpv4 gateway = addressOf("gateway", node);
    if (!gateway.address.isUnspecified())
        require(node, base::whyNoHost(gateway));
    return gateway;
}

base::GivenIpv4 maskOf(const YamlNode& node)
{
    base::GivenIpv4 mask = addressOf("mask", node);
    require(node, base::whyNoMask(mask));
    return mask;
}

template <typename Choice>
Choice choiceOf(const std::string& name, const YamlNode& node,
                const std::vector<std::pair<std::string, Choice>>& choices)
{
    std::vector<std::string> allowed;
    for (const auto& [text, choice] : choices) {
        if (textOf(name, node) == text)
            return choice;
        allowed.push_back(text);
    }
    refuse(node, {TRANSLATABLE("Sentence", "%1 \"%2\" is unknown; allowed are %3"),
                  {name, node.text, enumerated(allowed)}});
}

IpMethod methodOf(const YamlNode& node)
{
    return choiceOf<IpMethod>(
        "mode", node, {{"static", IpMethod::Static}, {"dhcp", IpMethod::Dhcp}, {"lla", IpMethod::LinkLocal}});
}

inventory::AdapterAddress adapterAddressOf(const YamlNode& node)
{
    const std::string& text = textOf("address", node);
    const std::size_t slash = std::min(text.find('/'), text.size());
    const std::string host = text.substr(0, slash);
    const auto prefix = numberIn(std::string_view(text).substr(std::min(slash + 1, text.size())));
    if (base::whyNoIpv4("address", host) || !prefix || *prefix < 1 || *prefix > 32)
        refuse(node, {TRANSLATABLE("Sentence",
                                   "address \"%1\" is no address with the length of its prefix; an IPv4 "
                                   "address, a slash and 1 to 32 are allowed, such as 192.168.10.1/24"),
                      {text}});
    const base::Ipv4 address = *base::Ipv4::parse(host);
    require(node, base::whyNoHost({"address", address}));
    return {address, *prefix};
}

/// Those of every IPv4 network; 65535 bytes is the longest packet.
unsigned mtuOf(const YamlNode& node)
{
    const auto mtu = node.kind == YamlNode::Kind::Plain ? numberIn(node.text) : std::nullopt;
    if (!mtu || *mtu < 68 || *mtu > 65535)
        refuse(node, {TRANSLATABLE("Sentence", "mtu is no number of bytes; 68 to 65535 are allowed"), {}});
    return *mtu;
}

AdapterRule readAdapter(const std::string& name, const YamlNode& node)
{
    const Members members(name, node, {"address", "mtu"});
    AdapterRule rule{name, {}, {}};
    if (const YamlNode* const address = members.find("address"))
        rule.address = adapterAddressOf(*address);
    if (const YamlNode* const mtu = members.find("mtu"))
        rule.mtu = mtuOf(*mtu);
    return rule;
}

/// What a place has that does not say otherwise.
struct Defaults
{
    IpMethod method = IpMethod::Static;
    std::optional<base::GivenIpv4> mask;
    base::GivenIpv4 gateway{"gateway", {}};
};

Defaults readDefaults(const YamlNode& node)
{
    const Members members("defaults", node, {"mode", "mask", "gateway"});
    Defaults defaults;
    if (const YamlNode* const mode = members.find("mode"))
        defaults.method = methodOf(*mode);
    if (const YamlNode* const mask = members.find("mask"))
        defaults.mask = maskOf(*mask);
    if (const YamlNode* const gateway = members.find("gateway"))
        defaults.gateway = gatewayOf(*gateway);
    return defaults;
}

Match readMatch(const YamlNode& node)
{
    const Members members("match", node, {"adapter", "serial", "mac", "name"});
    if (members.all().empty())
        refuse(node, {TRANSLATABLE("Sentence",
                                   "match has no members; one or more of adapter, serial, mac, name are "
                                   "needed"),
                      {}});
    Match match;
    if (const YamlNode* const adapter = members.find("adapter"))
        match.adapter = filledTextOf("adapter", *adapter);
    if (const YamlNode* const serial = members.find("serial"))
        match.serial = filledTextOf("serial", *serial);
    if (const YamlNode* const mac = members.find("mac")) {
        require(*mac, base::whyNoCamera("mac", textOf("mac", *mac)));
        match.mac = base::MacAddress::parse(mac->text);
    }
    if (const YamlNode* const name = members.find("name"))
        match.userName = textOf("name", *name);
    return match;
}

base::IpSettings readStatic(const Members& members, const Defaults& defaults)
{
    const YamlNode* const addressNode = members.find("address");
    if (!addressNode)
        refuse(members.node(),
               {TRANSLATABLE("Sentence", "address is missing here, which mode static needs"), {}});
    const base::GivenIpv4 address = addressOf("address", *addressNode);

    const YamlNode* const maskNode = members.find("mask");
    if (!maskNode && !defaults.mask)
        refuse(
            members.node(),
            {TRANSLATABLE("Sentence", "mask is missing here and in defaults, which mode static needs"), {}});
    const base::GivenIpv4 mask = maskNode ? maskOf(*maskNode) : *defaults.mask;
    require(*addressNode, base::whyNoHostOf(address, mask.address));

    const YamlNode* const gatewayNode = members.find("gateway");
    const base::GivenIpv4 gateway = gatewayNode ? gatewayOf(*gatewayNode) : defaults.gateway;
    require(gatewayNode ? *gatewayNode : *addressNode, base::whyNoGateway(gateway, address, mask));
    return {address.address, mask.address, gateway.address};
}

/// Nothing: the camera keeps the one that it has.
std::optional<std::string> readUserName(const YamlNode& place, const YamlNode* name)
{
    if (!name) {
        if (base::whyNoUserName("name", place.text))
            refuse(place,
                   {TRANSLATABLE("Sentence", "place \"%1\" cannot be its camera's name, as only %2 bytes of "
                                             "UTF-8 without a NUL can; it needs name: such a text, or keep"),
                    {place.text, std::to_string(base::MaxUserNameBytes)}});
        return place.text;
    }
    if (textOf("name", *name) == "keep")
        return std::nullopt;
    require(*name, base::whyNoUserName("name", name->text));
    return name->text;
}

PlaceInFile readPlace(const YamlNode& name, const YamlNode& node, const Defaults& defaults)
{
    filledTextOf("place", name);
    const Members members(name.text, node, {"match", "model", "mode", "address", "mask", "gateway", "name"});
    PlaceInFile result{{}, name.spot, members.at("match").spot, name.spot};
    Place& place = result.place;
    place.name = name.text;
    place.match = readMatch(members.at("match"));
    if (const YamlNode* const model = members.find("model"))
        place.model = filledTextOf("model", *model);
    const YamlNode* const mode = members.find("mode");
    place.method = mode ? methodOf(*mode) : defaults.method;
    if (place.method == IpMethod::Static) {
        place.ip = readStatic(members, defaults);
        result.address = members.at("address").spot;
    } else
        for (const char* each : {"address", "mask", "gateway"})
            if (const YamlNode* const other = members.find(each))
                refuse(*other,
                       {TRANSLATABLE("Sentence", "%1 goes with mode static only; here the mode is %2, which "
                                                 "takes none"),
                        {each, place.method == IpMethod::Dhcp ? "dhcp" : "lla"}});
    place.userName = readUserName(name, members.find("name"));
    return result;
}

void requireVersion(const YamlNode& node)
{
    if (node.kind != YamlNode::Kind::Plain || node.text != "1")
        refuse(node, {TRANSLATABLE("Sentence", "version is unknown; the number 1 is allowed"), {}});
}

} // namespace

Site readSite(std::string_view text)
{
    const YamlNode root = readYaml(text);
    const Members members("the file", root, {"version", "defaults", "adapters", "cameras", "unlisted"});
    requireVersion(members.at("version"));

    Site site;
    Lines adapterLines;
    if (const YamlNode* const adapters = members.find("adapters"))
        for (const auto& [name, rule] : Members("adapters", *adapters).all()) {
            site.adapters.push_back(readAdapter(filledTextOf("adapter", name), rule));
            adapterLines.push_back(name.spot.line);
        }

    Defaults defaults;
    if (const YamlNode* const node = members.find("defaults"))
        defaults = readDefaults(*node);
    std::vector<PlaceInFile> places;
    for (const auto& [name, place] : Members("cameras", members.at("cameras")).all())
        places.push_back(readPlace(name, place, defaults));
    requireRoomForAll(places, site.adapters, adapterLines);
    for (PlaceInFile& each : places)
        site.places.push_back(std::move(each.place));

    if (const YamlNode* const unlisted = members.find("unlisted"))
        site.unlisted = choiceOf<Unlisted>(
            "unlisted", *unlisted,
            {{"ignore", Unlisted::Ignore}, {"warn", Unlisted::Warn}, {"fail", Unlisted::Fail}});
    return site;
}

} // namespace site
