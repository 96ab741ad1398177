// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "genapi/Base/GCException.h"

#include <map>
#include <string>

namespace genapi {

/// Why nodes cannot be used, whatever the camera says ("its length is not fixed"), by their names.
using Faults = std::map<std::string, std::string, std::less<>>;

/// Throws what says that a camera's description is not taken, and why ("it is empty").
[[noreturn]] inline void refuseDescription(const std::string& reason)
{
    throw GenICam::RuntimeException("The camera's description cannot be used: " + reason + ".", __FILE_NAME__,
                                    __LINE__);
}

} // namespace genapi
