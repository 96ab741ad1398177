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
/// when bits are missing or the register's length is none: others complain of that.
std::string settleBits(pugi::xml_node field, pugi::xml_node owner);

/// Writes the access mode WO into every register that may only be written, so that the engine does not read
/// it before it writes some of its bits. It is missing there when it is imposed on the register, and when
/// entries of a structure have another mode than the structure, which then becomes two.
void settleAccessModes(pugi::xml_document& document);

} // namespace genapi
