// SPDX-License-Identifier: Apache-2.0
#include "site/Yaml.h"

#include "base/Utf8.h"
#include "site/SiteError.h"

#include <algorithm>
#include <map>
#include <optional>
#include <sstream>
#include <yaml-cpp/eventhandler.h>
#include <yaml-cpp/exceptions.h>
#include <yaml-cpp/parser.h>

namespace site {
namespace {

constexpr std::size_t MaxSize = std::size_t{1} << 20;
constexpr std::size_t MaxDepth = 8;
constexpr std::size_t MaxNodes = 20000;
constexpr std::size_t MaxTextSize = 4096;
constexpr std::string_view ByteOrderMark = "\xEF\xBB\xBF";

bool beginsCharacter(char c)
{
    return (static_cast<unsigned char>(c) & 0xC0) != 0x80;
}

Spot spotAt(std::string_view text, std::size_t offset)
{
    const std::string_view before = text.substr(0, offset);
    const std::size_t lineBegin = before.rfind('\n') + 1; // npos + 1 is 0
    return {static_cast<int>(std::ranges::count(before, '\n')) + 1,
            static_cast<int>(std::ranges::count_if(before.substr(lineBegin), beginsCharacter)) + 1, offset};
}

[[noreturn]] void refuse(const Spot& spot, base::Sentence sentence)
{
    throw SiteError(spot.line, spot.column, std::move(sentence));
}

/// The first character that YAML does not let stand as it is; the parser would take one of them for the end.
std::optional<std::size_t> findUnprintable(std::string_view text)
{
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        const bool isC0 = byte < 0x20 && byte != '\t' && byte != '\n' && byte != '\r';
        const bool isC1 = byte == 0xC2 && static_cast<unsigned char>(text[i + 1]) < 0xA0 &&
                          static_cast<unsigned char>(text[i + 1]) != 0x85;
        const std::string_view three = text.substr(i, 3);
        if (isC0 || byte == 0x7F || isC1 || three == "\xEF\xBF\xBE" || three == "\xEF\xBF\xBF")
            return i;
    }
    return std::nullopt;
}

void requireReadable(std::string_view text)
{
    if (text.size() > MaxSize)
        throw SiteError(0, 0, {TRANSLATABLE("Sentence", "The file is too long; a megabyte is allowed"), {}});
    if (const std::size_t nul = text.find('\0'); nul != std::string_view::npos)
        refuse(spotAt(text, nul),
               {TRANSLATABLE("Sentence", "The file has a NUL in it; text is allowed"), {}});
    if (!base::isUtf8(text)) {
        std::size_t good = 0;
        for (std::size_t i = 1; i <= text.size() && i <= good + 4; ++i)
            if (base::isUtf8(text.substr(good, i - good)))
                good = i;
        refuse(spotAt(text, good),
               {TRANSLATABLE("Sentence", "What stands here is no UTF-8, which alone is allowed"), {}});
    }
    if (const auto at = findUnprintable(text))
        refuse(spotAt(text, *at),
               {TRANSLATABLE("Sentence",
                             "A control character stands here; an escape in a text in double quotes is "
                             "allowed"),
                {}});
}

/// Makes nodes of what the parser tells, and ends it as soon as something is not allowed: so its own
/// recursion is no deeper than the nodes may be.
class Builder : public YAML::EventHandler
{
public:
    /// The text is what the parser reads, `shift` the bytes in front of it.
    Builder(std::string_view text, std::size_t shift) : m_text(text), m_shift(shift) {}

    YamlNode take() { return std::move(m_root); }

    void OnDocumentStart(const YAML::Mark&) override {}
    void OnDocumentEnd() override {}

    void OnNull(const YAML::Mark& mark, YAML::anchor_t anchor) override
    {
        requireNoAnchor(mark, anchor);
        add({YamlNode::Kind::Nothing, spotOf(mark), {}, {}});
    }

    void OnAlias(const YAML::Mark& mark, YAML::anchor_t) override
    {
        refuse(spotOf(mark), {TRANSLATABLE("Sentence", "An alias stands here; a value is allowed"), {}});
    }

    void OnScalar(const YAML::Mark& mark, const std::string& tag, YAML::anchor_t anchor,
                  const std::string& value) override
    {
        requireNoAnchor(mark, anchor);
        requireNoTag(mark, tag);
        if (value.size() > MaxTextSize)
            refuse(spotOf(mark), {TRANSLATABLE("Sentence", "This text is too long; %1 bytes are allowed"),
                                  {std::to_string(MaxTextSize)}});
        add({tag == "?" ? YamlNode::Kind::Plain : YamlNode::Kind::Quoted, spotOf(mark), value, {}});
    }

    void OnSequenceStart(const YAML::Mark& mark, const std::string&, YAML::anchor_t,
                         YAML::EmitterStyle::value) override
    {
        refuse(spotOf(mark),
               {TRANSLATABLE("Sentence", "A list stands here; members with their values are allowed"), {}});
    }
    void OnSequenceEnd() override {}

    void OnMapStart(const YAML::Mark& mark, const std::string& tag, YAML::anchor_t anchor,
                    YAML::EmitterStyle::value) override
    {
        requireNoAnchor(mark, anchor);
        requireNoTag(mark, tag);
        if (m_open.size() == MaxDepth)
            refuse(spotOf(mark), {TRANSLATABLE("Sentence", "Too many mappings are inside each other; %1 are "
                                                           "allowed"),
                                  {std::to_string(MaxDepth)}});
        if (isNameNext())
            refuse(spotOf(mark), {TRANSLATABLE("Sentence", "A member has a mapping as its name; a text is "
                                                           "allowed"),
                                  {}});
        m_open.push_back({&add({YamlNode::Kind::Mapping, spotOf(mark), {}, {}}), {}, false});
    }

    void OnMapEnd() override { m_open.pop_back(); }

private:
    struct Open
    {
        YamlNode* node = nullptr;         ///< Stays where it is: what is above it does not grow meanwhile.
        std::map<std::string, int> names; ///< And their lines.
        bool hasName = false;             ///< Its last member has no value yet.
    };

    Spot spotOf(const YAML::Mark& mark) const
    {
        const auto pos = std::min(static_cast<std::size_t>(std::max(mark.pos, 0)), m_text.size());
        const auto back = std::min(static_cast<std::size_t>(std::max(mark.column, 0)), pos);
        const std::string_view before = m_text.substr(pos - back, back);
        return {mark.line + 1, static_cast<int>(std::ranges::count_if(before, beginsCharacter)) + 1,
                pos + m_shift};
    }

    void requireNoAnchor(const YAML::Mark& mark, YAML::anchor_t anchor) const
    {
        if (anchor != YAML::NullAnchor)
            refuse(spotOf(mark), {TRANSLATABLE("Sentence", "An anchor stands here; a value is allowed"), {}});
    }

    void requireNoTag(const YAML::Mark& mark, const std::string& tag) const
    {
        const Spot spot = spotOf(mark);
        const std::size_t at = spot.offset - m_shift;
        if ((tag != "?" && tag != "!" && !tag.empty()) || (at < m_text.size() && m_text[at] == '!'))
            refuse(spot, {TRANSLATABLE("Sentence", "A tag stands here; a value is allowed"), {}});
    }

    bool isNameNext() const { return !m_open.empty() && !m_open.back().hasName; }

    YamlNode& add(YamlNode node)
    {
        if (++m_count > MaxNodes)
            refuse(node.spot, {TRANSLATABLE("Sentence", "The file has too many values; %1 are allowed"),
                               {std::to_string(MaxNodes)}});
        if (m_open.empty())
            return m_root = std::move(node);
        Open& open = m_open.back();
        if (open.hasName) {
            open.hasName = false;
            // What is not there begins nowhere: the parser would name what comes next.
            if (node.kind == YamlNode::Kind::Nothing)
                node.spot = open.node->members.back().name.spot;
            return open.node->members.back().value = std::move(node);
        }
        if (!node.isText())
            refuse(node.spot, {TRANSLATABLE("Sentence", "A member has no name; a text is allowed, in quotes "
                                                        "when it is \"null\" or \"~\""),
                               {}});
        if (const auto [first, isNew] = open.names.emplace(node.text, node.spot.line); !isNew)
            refuse(node.spot,
                   {TRANSLATABLE("Sentence", "\"%1\" is here twice, first in line %2; once is allowed"),
                    {node.text, std::to_string(first->second)}});
        open.hasName = true;
        open.node->members.push_back({std::move(node), {}});
        return open.node->members.back().name;
    }

    std::string_view m_text;
    std::size_t m_shift;
    YamlNode m_root;
    std::vector<Open> m_open;
    std::size_t m_count = 0;
};

/// Of a second document.
class Refusal : public Builder
{
public:
    using Builder::Builder;

    void OnDocumentStart(const YAML::Mark& mark) override
    {
        throw SiteError(mark.line + 1, mark.column + 1,
                        {TRANSLATABLE("Sentence", "A second document begins here; one is allowed"), {}});
    }
};

} // namespace

YamlNode readYaml(std::string_view text)
{
    requireReadable(text);
    const std::size_t shift = text.starts_with(ByteOrderMark) ? ByteOrderMark.size() : 0;
    const std::string_view body = text.substr(shift);
    Builder builder(body, shift);
    try {
        std::istringstream stream{std::string(body)};
        YAML::Parser parser(stream);
        parser.HandleNextDocument(builder);
        Refusal refusal(body, shift);
        parser.HandleNextDocument(refusal);
    } catch (const YAML::Exception& error) {
        throw SiteError(error.mark.line + 1, error.mark.column + 1,
                        {TRANSLATABLE("Sentence", "This is no YAML: %1"), {error.msg}});
    }
    return builder.take();
}

} // namespace site
