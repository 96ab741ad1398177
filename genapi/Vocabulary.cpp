// SPDX-License-Identifier: Apache-2.0
#include "genapi/Vocabulary.h"

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

constexpr std::array<std::string_view, 25> plainProperties{
    "Value",        "Address",    "Length",       "AccessMode",   "ImposedAccessMode",
    "Min",          "Max",        "Inc",          "OnValue",      "OffValue",
    "CommandValue", "LSB",        "MSB",          "Bit",          "Sign",
    "Endianess",    "Slope",      "Formula",      "FormulaTo",    "FormulaFrom",
    "Constant",     "Expression", "ValueIndexed", "ValueDefault", "ChunkID",
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

bool isProperty(std::string_view element)
{
    return findReferenceKind(element) || contains(plainProperties, element);
}

bool isAttribute(std::string_view name)
{
    return contains(attributes, name);
}

} // namespace genapi
