// SPDX-License-Identifier: Apache-2.0
#include "genapi/description/Vocabulary.h"

#include <algorithm>
#include <array>

namespace genapi {
namespace {

constexpr std::array nodeKinds{
    NodeKind{"Integer", Role::Number, false, true, "Value|pValue|pIndex"},
    NodeKind{"IntReg", Role::Number, true, true, "pPort"},
    NodeKind{"MaskedIntReg", Role::Number, true, true, "pPort Bit|LSB Bit|MSB"},
    NodeKind{"StructReg", Role::None, true, true, "pPort"},
    NodeKind{"StructEntry", Role::Number, false, true, "Bit|LSB Bit|MSB"},
    NodeKind{"Enumeration", Role::Number, false, true, "Value|pValue"},
    NodeKind{"IntSwissKnife", Role::Number, false, true, "Formula"},
    NodeKind{"IntConverter", Role::Number, false, true, "FormulaTo FormulaFrom pValue"},
    NodeKind{"SwissKnife", Role::Number, false, false, "Formula"},
    NodeKind{"Converter", Role::Number, false, false, "FormulaTo FormulaFrom pValue"},
    NodeKind{"Float", Role::Number, false, false, "Value|pValue|pIndex"},
    NodeKind{"FloatReg", Role::Number, true, false, "pPort"},
    NodeKind{"Boolean", Role::Boolean, false, false, "Value|pValue"},
    NodeKind{"Command", Role::None, false, false, "Value|pValue CommandValue|pCommandValue"},
    NodeKind{"String", Role::Text, false, false, "Value|pValue"},
    NodeKind{"StringReg", Role::Text, true, false, "pPort"},
    NodeKind{"Register", Role::Bytes, true, false, "pPort"},
    NodeKind{"Port", Role::Port, false, false, ""},
};

constexpr std::array referenceKinds{
    ReferenceKind{"pValue", Follow::Value},        ReferenceKind{"pVariable", Follow::Value},
    ReferenceKind{"pAddress", Follow::Value},      ReferenceKind{"pIndex", Follow::Value},
    ReferenceKind{"pOffset", Follow::Value},       ReferenceKind{"pLength", Follow::Value},
    ReferenceKind{"pPort", Follow::Value},         ReferenceKind{"pValueIndexed", Follow::Value},
    ReferenceKind{"pValueDefault", Follow::Value}, ReferenceKind{"pCommandValue", Follow::Value},
    ReferenceKind{"pMin", Follow::Range},          ReferenceKind{"pMax", Follow::Range},
    ReferenceKind{"pInc", Follow::Range},          ReferenceKind{"pIsImplemented", Follow::Access},
    ReferenceKind{"pIsAvailable", Follow::Access}, ReferenceKind{"pIsLocked", Follow::Access},
};

constexpr std::array propertyKinds{
    PropertyKind{"Address", Content::Integer},
    PropertyKind{"Length", Content::Integer},
    PropertyKind{"LSB", Content::Integer},
    PropertyKind{"MSB", Content::Integer},
    PropertyKind{"Bit", Content::Integer},
    PropertyKind{"OnValue", Content::Integer},
    PropertyKind{"OffValue", Content::Integer},
    PropertyKind{"CommandValue", Content::Integer},
    PropertyKind{"Value", Content::OwnNumber},
    PropertyKind{"Min", Content::OwnNumber},
    PropertyKind{"Max", Content::OwnNumber},
    PropertyKind{"Inc", Content::OwnNumber},
    PropertyKind{"ValueIndexed", Content::OwnNumber},
    PropertyKind{"ValueDefault", Content::OwnNumber},
    PropertyKind{"Constant", Content::OwnNumber},
    PropertyKind{"AccessMode", Content::Word, {"RW", "RO", "WO"}},
    PropertyKind{"ImposedAccessMode", Content::Word, {"RW", "RO", "WO"}},
    PropertyKind{"Sign", Content::Word, {"Signed", "Unsigned"}},
    PropertyKind{"Endianess", Content::Word, {"BigEndian", "LittleEndian"}},
    PropertyKind{"Formula"},
    PropertyKind{"FormulaTo"},
    PropertyKind{"FormulaFrom"},
    PropertyKind{"Expression"},
    PropertyKind{"Slope"},
    PropertyKind{"ChunkID"},
};

constexpr std::array<std::string_view, 4> attributes{"Name", "Index", "Offset", "pOffset"};

template <typename Table>
auto find(const Table& table, std::string_view name) -> decltype(table.data())
{
    const auto found =
        std::find_if(table.begin(), table.end(), [name](const auto& row) { return row.name == name; });
    return found == table.end() ? nullptr : &*found;
}

template <typename Names>
bool contains(const Names& names, std::string_view name)
{
    return std::find(names.begin(), names.end(), name) != names.end();
}

} // namespace

const NodeKind* findNodeKind(std::string_view element)
{
    return find(nodeKinds, element);
}

const ReferenceKind* findReferenceKind(std::string_view name)
{
    return find(referenceKinds, name);
}

const PropertyKind* findPropertyKind(std::string_view name)
{
    return find(propertyKinds, name);
}

bool isProperty(std::string_view element)
{
    return findReferenceKind(element) || findPropertyKind(element);
}

bool isAttribute(std::string_view name)
{
    return contains(attributes, name);
}

} // namespace genapi
