// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// The part of YAML that site files are made of: mappings and texts.
namespace site {

/// Where a value begins.
struct Spot
{
    int line = 1; ///< From 1, as the column, which counts characters.
    int column = 1;
    std::size_t offset = 0; ///< In the text, in bytes.
};

struct YamlMember;

struct YamlNode
{
    enum class Kind
    {
        Nothing, ///< No value, or one that means so, such as "null".
        Plain,
        Quoted, ///< Or a block of text.
        Mapping
    };
    Kind kind = Kind::Nothing;
    Spot spot;
    std::string text;
    std::vector<YamlMember> members; ///< In the order of the text.

    bool isText() const { return kind == Kind::Plain || kind == Kind::Quoted; }
};

struct YamlMember
{
    YamlNode name; ///< A text.
    YamlNode value;
};

/// The text's only document. Throws SiteError for what is no YAML, lists, aliases, tags, a member that is
/// there twice, and what is too long or too deep for a site file.
YamlNode readYaml(std::string_view text);

} // namespace site
