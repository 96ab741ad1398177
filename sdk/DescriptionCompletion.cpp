// SPDX-License-Identifier: Apache-2.0
#include "sdk/DescriptionCompletion.h"

#include "sdk/Unzip.h"

#include <algorithm>
#include <cctype>
#include <optional>
#include <pugixml.hpp>
#include <set>
#include <string>
#include <string_view>

namespace sdk {

namespace {

constexpr std::string_view RootName = "RegisterDescription";

/// A feature that may be missing, as XML in which @feature@, @register@ and @port@ stand for names.
struct Feature
{
    std::string_view name;
    std::string_view xml;
};

// In big-endian registers GenICam counts bits from the top: 31 is 0x1, 30 is 0x2.
constexpr Feature Features[] = {
    {"GevCurrentIPConfigurationPersistentIP", R"(
<Boolean Name="@feature@" NameSpace="Standard"><pValue>@register@</pValue></Boolean>
<MaskedIntReg Name="@register@" NameSpace="Custom"><Address>0x14</Address><Length>4</Length>
<AccessMode>RW</AccessMode><pPort>@port@</pPort><Cachable>NoCache</Cachable>
<Bit>31</Bit><Sign>Unsigned</Sign><Endianess>BigEndian</Endianess></MaskedIntReg>)"},
    {"GevCurrentIPConfigurationDHCP", R"(
<Boolean Name="@feature@" NameSpace="Standard"><pValue>@register@</pValue></Boolean>
<MaskedIntReg Name="@register@" NameSpace="Custom"><Address>0x14</Address><Length>4</Length>
<AccessMode>RW</AccessMode><pPort>@port@</pPort><Cachable>NoCache</Cachable>
<Bit>30</Bit><Sign>Unsigned</Sign><Endianess>BigEndian</Endianess></MaskedIntReg>)"},
    {"DeviceUserID", R"(
<StringReg Name="@feature@" NameSpace="Standard"><Address>0xE8</Address><Length>16</Length>
<AccessMode>RW</AccessMode><pPort>@port@</pPort><Cachable>NoCache</Cachable></StringReg>)"},
    {"DeviceReset", R"(
<Command Name="@feature@" NameSpace="Standard"><pValue>@register@</pValue>
<CommandValue>1</CommandValue></Command>
<IntReg Name="@register@" NameSpace="Custom"><Address>0x100000000</Address><Length>4</Length>
<AccessMode>WO</AccessMode><pPort>@port@</pPort><Cachable>NoCache</Cachable>
<Sign>Unsigned</Sign><Endianess>BigEndian</Endianess></IntReg>)"},
};
static_assert(IpRestartAddress == 0x100000000);

/// What a description defines, as far as it matters here.
struct Contents
{
    std::set<std::string> names;
    std::string port; ///< The camera's own; empty when there is none.
};

/// As GenICam has names; others would have to be escaped.
bool isPlainName(std::string_view name)
{
    return std::all_of(name.begin(), name.end(), [](unsigned char c) {
        return c == '_' || c == '.' || (c < 0x80 && std::isalnum(c) != 0);
    });
}

/// Walks the tree without recursion: how deep it is, is the camera's choice.
class ContentsReader : public pugi::xml_tree_walker
{
public:
    bool for_each(pugi::xml_node& node) override
    {
        const std::string_view element = node.name();
        const char* const name = node.attribute("Name").value();
        // An enumeration's entries have names of their own, which are no features.
        if (*name == '\0' || element == "EnumEntry")
            return true;
        contents.names.insert(name);
        // Ports for the chunks and events of a stream have an id.
        const bool isCameras =
            element == "Port" && !node.child("ChunkID") && !node.child("EventID") && isPlainName(name);
        if (isCameras && (contents.port.empty() || std::string_view(name) == "Device"))
            contents.port = name;
        return true;
    }

    Contents contents;
};

/// Nothing when the text is no description.
std::optional<Contents> read(gvcp::ByteView text)
{
    pugi::xml_document document;
    // Entities stay unexpanded: nothing grows.
    if (!document.load_buffer(text.data(), text.size()) || document.document_element().name() != RootName)
        return std::nullopt;
    ContentsReader reader;
    document.traverse(reader);
    return std::move(reader.contents);
}

void replaceAll(std::string& text, std::string_view from, std::string_view to)
{
    for (auto at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size()))
        text.replace(at, from.size(), to);
}

std::vector<Feature> missingFeatures(const Contents& contents, bool hasUserName)
{
    std::vector<Feature> missing;
    std::copy_if(std::begin(Features), std::end(Features), std::back_inserter(missing),
                 [&](const Feature& feature) {
                     return contents.names.count(std::string(feature.name)) == 0 &&
                            (hasUserName || feature.name != "DeviceUserID");
                 });
    return missing;
}

std::string elementsOf(const std::vector<Feature>& features, const Contents& contents)
{
    std::string all;
    for (const Feature& feature : features) {
        std::string registerName = std::string(feature.name) + "Reg";
        while (contents.names.count(registerName) > 0)
            registerName += '_';
        std::string xml(feature.xml);
        replaceAll(xml, "@feature@", feature.name);
        replaceAll(xml, "@register@", registerName);
        replaceAll(xml, "@port@", contents.port);
        all += xml;
    }
    return all + '\n';
}

/// The text's end without the NULs that some cameras fill their files up with.
gvcp::ByteView withoutPadding(gvcp::ByteView text)
{
    while (!text.empty() && text.back() == 0)
        text = text.first(text.size() - 1);
    return text;
}

/// Nothing when the text lacks nothing, or nothing can be done about it.
std::optional<gvcp::Bytes> completedText(gvcp::ByteView text, bool hasUserName)
{
    text = withoutPadding(text);
    const auto contents = read(text);
    if (!contents || contents->port.empty())
        return std::nullopt;
    const auto missing = missingFeatures(*contents, hasUserName);
    const std::string_view chars(reinterpret_cast<const char*>(text.data()), text.size());
    const auto closingTag = chars.rfind("</" + std::string(RootName));
    if (missing.empty() || closingTag == std::string_view::npos)
        return std::nullopt;

    const std::string added = elementsOf(missing, *contents);
    gvcp::Bytes result(text.begin(), text.end());
    result.insert(result.begin() + static_cast<std::ptrdiff_t>(closingTag), added.begin(), added.end());
    // What looked like the closing tag may have stood in a comment.
    const auto after = read(result);
    if (!after || !missingFeatures(*after, hasUserName).empty())
        return std::nullopt;
    return result;
}

} // namespace

gvcp::Bytes completedDescription(gvcp::Bytes file, bool hasUserName, std::size_t maxSize)
{
    const auto text = isZip(file) ? unzip(file, maxSize) : std::optional(file);
    auto completed = text ? completedText(*text, hasUserName) : std::nullopt;
    return completed && completed->size() <= maxSize ? std::move(*completed) : std::move(file);
}

} // namespace sdk
