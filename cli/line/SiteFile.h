// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "site/Export.h"
#include "site/ReadSite.h"

#include <string>

namespace cli {

/// A site file as it was read.
struct SiteFile
{
    std::string path;
    std::string text;
    site::Site site;

    /// It was printed by the export command: it is the way back itself.
    bool isExport() const { return text.starts_with(site::ExportMark); }
    const site::Place* placeNamed(const std::string& name) const;
    /// Throws a Failure (wrong arguments) when there is no place of that name; the text says which there are.
    void requirePlace(const std::string& name) const;
};

/// "FILE:LINE:COLUMN: " and what is wrong there.
std::string located(const std::string& path, const site::SiteError& error);

/// Throws a Failure (wrong arguments): "FILE:LINE:COLUMN: " and what is wrong there.
SiteFile readSiteFile(const std::string& path);

} // namespace cli
