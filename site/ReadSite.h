// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "site/Site.h"
#include "site/SiteError.h"

#include <string_view>

namespace site {

/// Reads the text of a site file: YAML of a megabyte at most, as docs/site.schema.json describes it. Throws
/// SiteError.
Site readSite(std::string_view text);

} // namespace site
