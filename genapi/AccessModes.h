// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <pugixml.hpp>

namespace genapi {

/// Has every register that may only be written say so itself, which is what keeps the engine from reading it
/// before it writes some of its bits: also where the mode is imposed on it, and where entries of a structure
/// have another mode than the structure, which then becomes two.
void settleAccessModes(pugi::xml_document& document);

} // namespace genapi
