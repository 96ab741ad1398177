// SPDX-License-Identifier: Apache-2.0
#include "genapi/AccessModes.h"

#include "genapi/Vocabulary.h"

namespace genapi {
namespace {

constexpr char Mode[] = "AccessMode";

bool isWriteOnly(pugi::xml_node element)
{
    return element.child_value(Mode) == std::string_view("WO");
}

void setMode(pugi::xml_node element, const char* mode)
{
    auto property = element.child(Mode);
    if (!property)
        property = element.append_child(Mode);
    property.text().set(mode);
}

/// Gives a register or an entry the mode that is imposed on it, if it may then only be written.
void applyImposed(pugi::xml_node element)
{
    if (element.child_value("ImposedAccessMode") == std::string_view("WO") &&
        element.child_value(Mode) == std::string_view("RW"))
        setMode(element, "WO");
}

/// Takes those entries out of a structure of which that can, or cannot, be said.
void removeEntries(pugi::xml_node structure, bool areWriteOnly)
{
    for (auto entry = structure.child("StructEntry"); entry;) {
        const auto next = entry.next_sibling("StructEntry");
        if (isWriteOnly(entry) == areWriteOnly)
            structure.remove_child(entry);
        entry = next;
    }
}

void settleStructure(pugi::xml_node structure)
{
    const bool isWhollyWriteOnly = isWriteOnly(structure);
    bool hasOthers = false;
    for (auto entry : structure.children("StructEntry")) {
        if (!entry.child(Mode) && structure.child(Mode))
            setMode(entry, structure.child_value(Mode));
        applyImposed(entry);
        hasOthers = hasOthers || isWriteOnly(entry) != isWhollyWriteOnly;
    }
    if (!hasOthers)
        return;
    auto others = structure.parent().insert_copy_after(structure, structure);
    others.remove_attribute("Name");
    setMode(others, isWhollyWriteOnly ? "RW" : "WO");
    removeEntries(structure, !isWhollyWriteOnly);
    removeEntries(others, isWhollyWriteOnly);
}

} // namespace

void settleAccessModes(pugi::xml_document& document)
{
    for (auto element = document.document_element().first_child(); element;) {
        const auto next = element.next_sibling();
        if (findNodeKind(element.name())->isRegister)
            applyImposed(element);
        if (element.name() == std::string_view("StructReg"))
            settleStructure(element);
        element = next;
    }
}

} // namespace genapi
