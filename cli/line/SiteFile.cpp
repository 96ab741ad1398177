// SPDX-License-Identifier: Apache-2.0
#include "cli/line/SiteFile.h"

#include "cli/line/FileText.h"
#include "cli/session/Failure.h"
#include "cli/text/DisplayText.h"

#include <algorithm>
#include <system_error>

namespace cli {
namespace {

/// readSite() refuses what is as long.
constexpr std::size_t Limit = (std::size_t{1} << 20) + 1;

} // namespace

const site::Place* SiteFile::placeNamed(const std::string& name) const
{
    const auto found = std::ranges::find(site.places, name, &site::Place::name);
    return found == site.places.end() ? nullptr : &*found;
}

void SiteFile::requirePlace(const std::string& name) const
{
    if (placeNamed(name))
        return;
    constexpr std::size_t enough = 20;
    std::string others;
    for (std::size_t i = 0; i < std::min(site.places.size(), enough); ++i)
        others += (i == 0 ? "" : ", ") + displayText(site.places[i].name);
    if (site.places.size() > enough)
        others += " and " + std::to_string(site.places.size() - enough) + " more";
    throw Failure(ExitStatus::WrongArguments, displayText(path) + ": has no place \"" + displayText(name) +
                                                  "\"" + (others.empty() ? "" : "; it has " + others));
}

std::string located(const std::string& path, const site::SiteError& error)
{
    const std::string position =
        error.line() == 0 ? "" : std::to_string(error.line()) + ":" + std::to_string(error.column()) + ":";
    return displayText(path) + ":" + position + " " + displayText(error.sentence().english());
}

SiteFile readSiteFile(const std::string& path)
{
    SiteFile file{path, {}, {}};
    try {
        file.text = readText(path, Limit);
        file.site = site::readSite(file.text);
    } catch (const site::SiteError& error) {
        throw Failure(ExitStatus::WrongArguments, located(path, error));
    } catch (const std::system_error& error) {
        throw Failure(ExitStatus::WrongArguments,
                      displayText(path) + ": cannot be read: " + error.code().message());
    }
    return file;
}

} // namespace cli
