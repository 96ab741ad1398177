// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "gvcp/Bytes.h"

#include <string>
#include <vector>

struct ArchivedText
{
    std::string name;
    std::string content;
};

/// An archive of these files, compressed.
gvcp::Bytes zipped(const std::vector<ArchivedText>& files);
