// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>

namespace genapi {

/// When the engine or a node goes where a reference leads.
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

/// Null for elements that are no nodes, or none that evaluation knows.
const NodeKind* findNodeKind(std::string_view element);

/// Null for elements and attributes that refer to nothing.
const ReferenceKind* findReferenceKind(std::string_view name);

/// Whether the element is a node's property that evaluation uses, reference or not.
bool isProperty(std::string_view element);

/// Whether evaluation uses the attribute.
bool isAttribute(std::string_view name);

} // namespace genapi
