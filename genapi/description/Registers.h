// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <pugixml.hpp>
#include <string>

namespace genapi {

/// Puts the first and the last bit of a field (of a MaskedIntReg, or of an entry and its structure) into the
/// order that the engine expects. Real descriptions name them in either order, and the engine would take the
/// wrong order for other bits. A MaskedIntReg that is all of its register becomes an IntReg.
///
/// Says what is wrong with the bits ("its bit 32 is not in its register"). Empty when nothing is, and also
/// when bits are missing or the length is no length, which ReferenceGraph finds.
std::string settleBits(pugi::xml_node field, pugi::xml_node owner);

/// Writes the access mode WO into every register that may only be written, also where it was imposed: it
/// keeps the engine from reading the register before it writes some of its bits. A structure becomes two when
/// some of its entries may only be written and others not.
void settleAccessModes(pugi::xml_document& document);

} // namespace genapi
