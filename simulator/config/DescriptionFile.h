// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "base/Bytes.h"

#include <string>

namespace simulator {

/// A description file as a camera holds it: XML, or a zip archive of it.
struct DescriptionFile
{
    std::string name;
    base::Bytes bytes;

    /// A zip archive of this file, called likewise but for its ".zip". Throws std::runtime_error.
    DescriptionFile zipped() const;
};

} // namespace simulator
