// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <pugixml.hpp>
#include <string>

namespace genapi {

struct FormulaVerdict
{
    std::string fault;    ///< Why the formulas cannot be computed ("its formula ..."); empty when they can.
    std::size_t size = 0; ///< Of all formulas, named expressions inserted (characters).
};

/// Looks at the formulas of a node, tries them, settles their numbers and makes their divisions safe.
/// Formulas that are too long, too deep or insert themselves throw a GenICam::RuntimeException.
FormulaVerdict checkFormulas(pugi::xml_node node, bool isInteger);

} // namespace genapi
