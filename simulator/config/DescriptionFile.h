// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "base/Bytes.h"

#include <string>

namespace simulator {

/// A zip archive of one file of that name. Throws std::runtime_error.
base::Bytes zipped(const std::string& name, base::ByteView contents);

} // namespace simulator
