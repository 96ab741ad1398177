// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "genapi/Base/GCException.h"

#include <source_location>
#include <string>

namespace genapi {

/// Throws what says that a camera's description is not taken, and why ("it is empty").
[[noreturn]] inline void
refuseDescription(const std::string& reason,
                  const std::source_location& where = std::source_location::current())
{
    throw GenICam::RuntimeException("The camera's description cannot be used: " + reason + ".",
                                    where.file_name(), where.line());
}

} // namespace genapi
