// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <string_view>

namespace genapi {

/// What makes the engine or a node follow a reference.
enum class Follow
{
    Value,  ///< To read or write the value.
    Range,  ///< To learn bounds and increment.
    Access, ///< To learn what may be done now.
};

/// What a node can stand for in a reference.
enum class Role
{
    None,
    Number,
    Boolean,
    Text,
    Bytes,
    Port,
};

struct NodeKind
{
    std::string_view name; ///< The element's name.
    Role role;
    bool isRegister;
    bool isInteger;         ///< Its value is a whole number.
    std::string_view needs; ///< Properties it cannot do without: "A|B C" is one of A and B, and C.
};

struct ReferenceKind
{
    std::string_view name;
    Follow follow;
};

/// What a property that is no reference says.
enum class Content
{
    Text,
    Word,      ///< One of a few.
    Integer,   ///< A whole number.
    OwnNumber, ///< What the node itself is: a whole number or any, or the text of a node that is a text.
};

struct PropertyKind
{
    std::string_view name;
    Content content = Content::Text;
    std::array<std::string_view, 3> words{}; ///< Those allowed; the rest of the array is empty.
};

/// Null for elements that are no nodes, and for nodes that evaluation does not know.
const NodeKind* findNodeKind(std::string_view element);

/// Null for references, and for elements that evaluation does not use as properties.
const PropertyKind* findPropertyKind(std::string_view name);

/// Null for elements and attributes that refer to nothing.
const ReferenceKind* findReferenceKind(std::string_view name);

/// Whether the element is a node's property that evaluation uses, reference or not.
bool isProperty(std::string_view element);

/// Whether evaluation uses the attribute.
bool isAttribute(std::string_view name);

} // namespace genapi
