// SPDX-License-Identifier: Apache-2.0
#include "genapi/description/Registers.h"

#include "genapi/description/Numbers.h"
#include "genapi/description/Vocabulary.h"

#include <algorithm>
#include <string_view>

namespace genapi {
namespace {

constexpr std::int64_t BitsInByte = 8;
constexpr std::int64_t MaxLength = 8; ///< Bytes.

bool isThereTwice(pugi::xml_node field, const char* property)
{
    const auto first = field.child(property);
    return first && first.next_sibling(property);
}

constexpr char Mode[] = "AccessMode";

/// The access mode of a register or of a structure's entry; of an entry without one it is the structure's. RW
/// with an imposed WO is WO. Empty when there is none.
std::string_view modeOf(pugi::xml_node element)
{
    auto property = element.child(Mode);
    if (!property && element.name() == std::string_view("StructEntry"))
        property = element.parent().child(Mode);
    const std::string_view mode = property.child_value();
    const bool isImposed = element.child_value("ImposedAccessMode") == std::string_view("WO");
    return mode == "RW" && isImposed ? "WO" : mode;
}

bool isWriteOnly(pugi::xml_node element)
{
    return modeOf(element) == "WO";
}

void setMode(pugi::xml_node element, const std::string& mode)
{
    auto property = element.child(Mode);
    if (!property)
        property = element.append_child(Mode);
    property.text().set(mode.c_str());
}

void removeEntries(pugi::xml_node structure, bool areWriteOnly)
{
    for (auto entry = structure.child("StructEntry"); entry;) {
        const auto next = entry.next_sibling("StructEntry");
        if (isWriteOnly(entry) == areWriteOnly)
            structure.remove_child(entry);
        entry = next;
    }
}

/// Moves the entries that may only be written into a structure of their own when others may be read.
void settleStructure(pugi::xml_node structure)
{
    const bool isWhole = isWriteOnly(structure);
    const auto entries = structure.children("StructEntry");
    if (std::none_of(entries.begin(), entries.end(),
                     [isWhole](pugi::xml_node entry) { return isWriteOnly(entry) != isWhole; }))
        return;
    for (auto entry : entries)
        if (const std::string mode(modeOf(entry)); !mode.empty())
            setMode(entry, mode);
    auto others = structure.parent().insert_copy_after(structure, structure);
    others.remove_attribute("Name");
    setMode(others, isWhole ? "RW" : "WO");
    removeEntries(structure, !isWhole);
    removeEntries(others, isWhole);
}

} // namespace

std::string settleBits(pugi::xml_node field, pugi::xml_node owner)
{
    const bool isOne = field.child("Bit");
    auto lsb = field.child(isOne ? "Bit" : "LSB");
    auto msb = field.child(isOne ? "Bit" : "MSB");
    if (isThereTwice(field, lsb.name()) || isThereTwice(field, msb.name()) ||
        (isOne && (field.child("LSB") || field.child("MSB"))))
        return "it says twice which bits it has";
    const auto length = parseInteger(owner.child_value("Length"));
    const auto least = parseInteger(lsb.child_value());
    const auto most = parseInteger(msb.child_value());
    if (!length || *length < 1 || *length > MaxLength || !least || !most)
        return {};
    const auto size = *length * BitsInByte;
    for (const auto bit : {*least, *most})
        if (bit < 0 || bit >= size)
            return "its bit " + std::to_string(bit) + " is not in its register";

    const auto [lowest, highest] = std::minmax(*least, *most);
    if (field == owner && highest - lowest + 1 == size) {
        field.set_name("IntReg");
        field.remove_child(lsb);
        if (!isOne)
            field.remove_child(msb);
        return {};
    }
    // In a big-endian register bit 0 is the highest one.
    const bool isBigEndian = owner.child_value("Endianess") == std::string_view("BigEndian");
    lsb.text().set(std::to_string(isBigEndian ? highest : lowest).c_str());
    msb.text().set(std::to_string(isBigEndian ? lowest : highest).c_str());
    return {};
}

void settleAccessModes(pugi::xml_document& document)
{
    for (auto element = document.document_element().first_child(); element;) {
        const auto next = element.next_sibling();
        if (findNodeKind(element.name())->isRegister && isWriteOnly(element))
            setMode(element, "WO");
        if (element.name() == std::string_view("StructReg"))
            settleStructure(element);
        element = next;
    }
}

} // namespace genapi
