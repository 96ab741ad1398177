// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <pugixml.hpp>
#include <string>

namespace genapi {

/// Has the bits of a field (of a MaskedIntReg, or of an entry and its structure) in the order in which the
/// engine finds them: real descriptions name the first and the last one in either order, which it takes for
/// bits elsewhere. A MaskedIntReg that is all of its register becomes an IntReg.
///
/// Says what is wrong with them ("its bit 32 is not in its register"); empty when nothing is, or when the
/// register's length is none or bits are missing.
std::string settleBits(pugi::xml_node field, pugi::xml_node owner);

} // namespace genapi
