// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "gvcp/Bytes.h"

#include <string>

namespace simulator {

/// A zip archive of one file of that name. Throws std::runtime_error.
gvcp::Bytes zipped(const std::string& name, gvcp::ByteView contents);

} // namespace simulator
