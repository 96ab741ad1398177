// SPDX-License-Identifier: Apache-2.0
#include "sdk/description/DescriptionCompletion.h"

#include "base/Zip.h"
#include "gvcp/Registers.h"

#include <algorithm>
#include <bit>
#include <cctype>
#include <cstdio>
#include <map>
#include <optional>
#include <pugixml.hpp>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace sdk {

namespace {

constexpr std::string_view RootName = "RegisterDescription";
constexpr std::string_view UserName = "DeviceUserID";

/// A feature that may be missing, as XML in which names between @ stand for what elementsOf() puts there.
struct Feature
{
    std::string_view name;
    bool isOfAnInterface; ///< In a file it is about the camera's first network interface.
    std::string_view xml;
};

constexpr Feature Features[] = {
    {"GevCurrentIPConfigurationPersistentIP", true, R"(
<Boolean Name="@feature@" NameSpace="Standard"><pValue>@register@</pValue></Boolean>
<MaskedIntReg Name="@register@" NameSpace="Custom"><Address>@ipConfiguration@</Address><Length>4</Length>
<AccessMode>RW</AccessMode><pPort>@port@</pPort><Cachable>NoCache</Cachable>
<Bit>@persistentBit@</Bit><Sign>Unsigned</Sign><Endianess>BigEndian</Endianess></MaskedIntReg>)"},
    {"GevCurrentIPConfigurationDHCP", true, R"(
<Boolean Name="@feature@" NameSpace="Standard"><pValue>@register@</pValue></Boolean>
<MaskedIntReg Name="@register@" NameSpace="Custom"><Address>@ipConfiguration@</Address><Length>4</Length>
<AccessMode>RW</AccessMode><pPort>@port@</pPort><Cachable>NoCache</Cachable>
<Bit>@dhcpBit@</Bit><Sign>Unsigned</Sign><Endianess>BigEndian</Endianess></MaskedIntReg>)"},
    {UserName, false, R"(
<StringReg Name="@feature@" NameSpace="Standard"><Address>@userName@</Address><Length>@userNameSize@</Length>
<AccessMode>RW</AccessMode><pPort>@port@</pPort><Cachable>NoCache</Cachable></StringReg>)"},
    {"DeviceReset", false, R"(
<Command Name="@feature@" NameSpace="Standard"><pValue>@register@</pValue>
<CommandValue>1</CommandValue></Command>
<IntReg Name="@register@" NameSpace="Custom"><Address>@ipRestart@</Address><Length>4</Length>
<AccessMode>WO</AccessMode><pPort>@port@</pPort><Cachable>NoCache</Cachable>
<Sign>Unsigned</Sign><Endianess>BigEndian</Endianess></IntReg>)"},
};

/// Neither white space nor NUL nor another control character.
bool isText(char c)
{
    return static_cast<unsigned char>(c) > ' ';
}

/// Real descriptions have white space around names.
std::string trimmed(std::string_view text)
{
    const auto begin = std::find_if(text.begin(), text.end(), isText);
    const auto end = std::find_if(text.rbegin(), std::make_reverse_iterator(begin), isText).base();
    return {begin, end};
}

/// As GenICam has names; others would have to be escaped.
bool isPlainName(std::string_view name)
{
    return std::all_of(name.begin(), name.end(), [](unsigned char c) {
        return c == '_' || c == '.' || (c < 0x80 && std::isalnum(c) != 0);
    });
}

/// What a description defines, as far as it matters here.
class Description : public pugi::xml_tree_walker
{
public:
    explicit Description(base::ByteView text)
    {
        // Entities stay unexpanded, so that nothing grows. The walk is not recursive, because the camera
        // decides how deep the tree is. Bytes that are no UTF-8 are kept, so that places in the text stay
        // what they are.
        if (m_document.load_buffer(text.data(), text.size(), pugi::parse_default, pugi::encoding_utf8) &&
            m_document.document_element().name() == RootName)
            m_document.traverse(*this);
    }

    /// The camera's own port; empty when there is none, or when the text is no description.
    const std::string& port() const { return m_port; }

    /// Null when there is no node of that name.
    pugi::xml_node node(const std::string& name) const
    {
        const auto found = m_nodes.find(name);
        return found == m_nodes.end() ? pugi::xml_node() : found->second;
    }

    /// Gives a name that no node has and that is given to nobody else.
    std::string takeUnusedName(const std::string& like)
    {
        std::string name = like;
        while (m_nodes.count(name) > 0)
            name += '_';
        m_nodes.emplace(name, pugi::xml_node());
        return name;
    }

    bool for_each(pugi::xml_node& element) override
    {
        // These are parts of nodes: they have names, and are no features.
        static const std::set<std::string_view> parts{"EnumEntry", "pVariable", "Constant", "Expression"};
        const std::string name = trimmed(element.attribute("Name").value());
        if (name.empty() || parts.count(element.name()) > 0)
            return true;
        m_nodes.emplace(name, element);
        // Ports for the chunks and events of a stream have an id.
        const bool isCameras = element.name() == std::string_view("Port") && !element.child("ChunkID") &&
                               !element.child("EventID") && isPlainName(name);
        if (isCameras && (m_port.empty() || name == "Device"))
            m_port = name;
        return true;
    }

private:
    pugi::xml_document m_document;
    std::map<std::string, pugi::xml_node> m_nodes;
    std::string m_port;
};

void replaceAll(std::string& text, std::string_view from, std::string_view to)
{
    for (auto at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size()))
        text.replace(at, from.size(), to);
}

std::string hexText(std::uint64_t number)
{
    char text[19];
    std::snprintf(text, sizeof text, "0x%llX", static_cast<unsigned long long>(number));
    return text;
}

/// In big-endian registers GenICam counts bits from the top: 31 is 0x1, 30 is 0x2.
std::string bitText(std::uint32_t bit)
{
    return std::to_string(std::countl_zero(bit));
}

std::string elementsOf(const Feature& feature, Description& description, unsigned interface)
{
    std::string xml(feature.xml);
    replaceAll(xml, "@feature@", feature.name);
    replaceAll(xml, "@register@", description.takeUnusedName(std::string(feature.name) + "Reg"));
    replaceAll(xml, "@port@", description.port());
    replaceAll(xml, "@ipConfiguration@",
               hexText(gvcp::reg::ofInterface(interface, gvcp::reg::CurrentIpConfig)));
    replaceAll(xml, "@persistentBit@", bitText(gvcp::IpConfig::Persistent));
    replaceAll(xml, "@dhcpBit@", bitText(gvcp::IpConfig::Dhcp));
    replaceAll(xml, "@userName@", hexText(gvcp::reg::UserDefinedName.address));
    replaceAll(xml, "@userNameSize@", std::to_string(gvcp::reg::UserDefinedName.size));
    replaceAll(xml, "@ipRestart@", hexText(IpRestartAddress));
    return xml;
}

/// The nodes from one that is a String to the string register that it stands for, both included; empty for
/// any other.
std::vector<pugi::xml_node> wayToRegister(const Description& description, pugi::xml_node node)
{
    constexpr std::size_t Longest = 16;
    std::vector<pugi::xml_node> way{node};
    while (way.back().name() == std::string_view("String") && way.size() < Longest)
        way.push_back(description.node(trimmed(way.back().child_value("pValue"))));
    if (way.size() == 1 || way.back().name() != std::string_view("StringReg"))
        way.clear();
    return way;
}

class Printed : public pugi::xml_writer
{
public:
    void write(const void* data, std::size_t size) override
    {
        text.append(static_cast<const char*>(data), size);
    }

    std::string text;
};

void addProperty(pugi::xml_node node, const char* name, const std::string& text)
{
    node.append_child(name).text().set(text.c_str());
}

/// The name of a node that says whether all of these conditions hold, or any of them: the condition itself if
/// there is one only, else a new node.
std::string joined(const std::set<std::string>& conditions, bool all, const std::string& name,
                   pugi::xml_node nodes, Description& description)
{
    if (conditions.size() == 1)
        return *conditions.begin();
    auto knife = nodes.append_child("IntSwissKnife");
    std::string unused = description.takeUnusedName(name);
    knife.append_attribute("Name").set_value(unused.c_str());
    std::string formula;
    for (const std::string& condition : conditions) {
        const std::string variable = "V" + std::to_string(formula.size());
        knife.append_child("pVariable").append_attribute("Name").set_value(variable.c_str());
        knife.last_child().text().set(condition.c_str());
        formula += (formula.empty() ? "(" : all ? "&&(" : "||(") + variable + "<>0)";
    }
    addProperty(knife, "Formula", formula);
    return unused;
}

/// The access mode that is imposed on these nodes, the stricter one where there are two; empty for none.
std::string imposedMode(const std::vector<pugi::xml_node>& way)
{
    std::string imposed;
    for (const auto& node : way) {
        const std::string mode = trimmed(node.child_value("ImposedAccessMode"));
        if (mode == "RO" || (imposed != "RO" && mode == "WO") || imposed.empty())
            imposed = mode;
    }
    return imposed;
}

/// A copy of the register at the way's end, with that name. It may be used when all nodes on the way may be.
std::string registerOf(const std::vector<pugi::xml_node>& way, std::string_view name,
                       Description& description)
{
    pugi::xml_document nodes;
    auto copy = nodes.append_copy(way.back());
    copy.remove_attributes();
    copy.append_attribute("Name").set_value(std::string(name).c_str());
    copy.append_attribute("NameSpace").set_value("Standard");
    // Its texts are about the register, and may not be UTF-8.
    for (const char* text : {"Extension", "ToolTip", "Description", "DisplayName", "DocuURL"})
        copy.remove_child(text);
    for (const char* property : {"pIsImplemented", "pIsAvailable", "pIsLocked"}) {
        const bool isLock = std::string_view(property) == "pIsLocked";
        std::set<std::string> conditions;
        for (const auto& node : way)
            if (node.child(property))
                conditions.insert(trimmed(node.child_value(property)));
        copy.remove_child(property);
        if (!conditions.empty())
            addProperty(copy, property,
                        joined(conditions, !isLock, std::string(name) + (property + 1), nodes, description));
    }
    copy.remove_child("ImposedAccessMode");
    if (const std::string mode = imposedMode(way); !mode.empty())
        addProperty(copy, "ImposedAccessMode", mode);

    Printed printed;
    nodes.print(printed, "", pugi::format_raw | pugi::format_no_declaration, pugi::encoding_utf8);
    return '\n' + printed.text;
}

/// A part of the text that becomes another one.
struct Edit
{
    std::size_t begin;
    std::size_t end;
    std::string text;
};

/// Gives the node another name in the text that it was read from. Nothing when its name is not found there.
std::optional<Edit> renaming(std::string_view text, pugi::xml_node node, const std::string& name)
{
    constexpr std::string_view Blanks = " \t\r\n";
    const std::string_view element = node.name();
    const auto begin = static_cast<std::size_t>(node.offset_debug());
    if (begin > text.size() || !text.substr(begin).starts_with(element))
        return std::nullopt;
    for (std::size_t at = begin + element.size();;) {
        const auto attribute = text.find_first_not_of(Blanks, at);
        const auto quote = text.find_first_of("\"'>", at);
        if (attribute == text.npos || quote == text.npos || text[quote] == '>')
            return std::nullopt;
        const auto end = text.find(text[quote], quote + 1);
        if (end == text.npos)
            return std::nullopt;
        const auto nameEnd = text.find_first_of(" \t\r\n=", attribute);
        if (text.substr(attribute, nameEnd - attribute) == "Name")
            return Edit{quote + 1, end, name};
        at = end + 1;
    }
}

std::string edited(std::string_view text, std::vector<Edit> edits)
{
    std::sort(edits.begin(), edits.end(), [](const Edit& a, const Edit& b) { return a.begin > b.begin; });
    std::string result(text);
    for (const Edit& edit : edits)
        result.replace(edit.begin, edit.end - edit.begin, edit.text);
    return result;
}

/// The text of the file without the NULs that some cameras have around it, and what stands among these.
std::string_view withoutPadding(base::ByteView file)
{
    std::string_view text(reinterpret_cast<const char*>(file.data()), file.size());
    const auto end = std::find_if(text.rbegin(), text.rend(), isText).base();
    text = text.substr(0, text.find('\0', static_cast<std::size_t>(end - text.begin())));
    if (text.starts_with('\0'))
        text.remove_prefix(
            static_cast<std::size_t>(std::find_if(text.begin(), text.end(), isText) - text.begin()));
    return text;
}

base::ByteView bytesOf(std::string_view text)
{
    return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

/// Nothing when the text lacks no feature, or when those that it lacks cannot be added.
std::optional<std::string> completedText(std::string_view text, bool hasUserName, unsigned interface)
{
    Description description(bytesOf(text));
    const auto closingTag = text.rfind("</" + std::string(RootName));
    if (description.port().empty() || closingTag == text.npos)
        return std::nullopt;
    std::string added;
    std::vector<Edit> edits;
    std::vector<std::string> expected;
    for (const Feature& feature : Features) {
        const std::string name(feature.name);
        const auto node = description.node(name);
        const auto way = name == UserName ? wayToRegister(description, node) : std::vector<pugi::xml_node>();
        const bool isReplaced = node && (!way.empty() || (feature.isOfAnInterface && interface > 0));
        if (isReplaced) {
            const auto edit = renaming(text, node, description.takeUnusedName(name));
            if (!edit)
                return std::nullopt;
            edits.push_back(*edit);
        } else if (node || (name == UserName && !hasUserName)) {
            continue;
        }
        added +=
            way.empty() ? elementsOf(feature, description, interface) : registerOf(way, name, description);
        expected.push_back(name);
    }
    if (expected.empty())
        return std::nullopt;
    edits.push_back({closingTag, closingTag, added + '\n'});
    std::string result = edited(text, std::move(edits));
    // The tag may have stood in a comment, so the result is read once more.
    const Description after(bytesOf(result));
    const bool areThere = std::all_of(expected.begin(), expected.end(),
                                      [&after](const std::string& name) { return after.node(name); });
    return areThere ? std::optional(std::move(result)) : std::nullopt;
}

} // namespace

base::Bytes completedDescription(base::Bytes file, bool hasUserName, unsigned interface, std::size_t maxSize)
{
    const bool isZipped = base::isZip(file);
    const auto unzipped = isZipped ? base::unzip(file, maxSize) : base::Unzipped();
    const base::ByteView text = isZipped ? unzipped.content : file; // None when it cannot be unpacked.
    const auto completed = completedText(withoutPadding(text), hasUserName, interface);
    if (!completed || completed->size() > maxSize)
        return file;
    return {completed->begin(), completed->end()};
}

} // namespace sdk
