// SPDX-License-Identifier: Apache-2.0
#include "genapi/BitField.h"

#include "genapi/Numbers.h"

#include <algorithm>

namespace genapi {
namespace {

constexpr std::int64_t BitsInByte = 8;
constexpr std::int64_t MaxLength = 8; ///< Bytes.

bool isThereTwice(pugi::xml_node field, const char* property)
{
    const auto first = field.child(property);
    return first && first.next_sibling(property);
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
    // Where the first byte is the highest, bits are counted from the highest down.
    const bool isBigEndian = owner.child_value("Endianess") == std::string_view("BigEndian");
    lsb.text().set(std::to_string(isBigEndian ? highest : lowest).c_str());
    msb.text().set(std::to_string(isBigEndian ? lowest : highest).c_str());
    return {};
}

} // namespace genapi
