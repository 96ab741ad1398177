// SPDX-License-Identifier: Apache-2.0
#include "cli/cameras/ListenerHint.h"
#include "cli/cameras/SeenCamera.h"
#include "cli/commands/Command.h"
#include "cli/line/LineRun.h"
#include "cli/session/Session.h"
#include "cli/text/DisplayText.h"
#include "inventory/Inventory.h"
#include "site/Export.h"

#include <ostream>

namespace cli {
namespace {

site::MatchBy matchBy(const Arguments& arguments)
{
    if (!arguments.has("--by"))
        return site::MatchBy::Mac;
    const std::string& text = arguments.options.at("--by");
    if (text == "mac")
        return site::MatchBy::Mac;
    if (text == "serial")
        return site::MatchBy::Serial;
    if (text == "adapter")
        return site::MatchBy::Adapter;
    refuseArguments("--by \"" + displayText(text) + "\": mac, serial and adapter are allowed");
}

void exportLine(const Arguments& arguments, Session& session)
{
    const site::MatchBy by = matchBy(arguments);
    const inventory::Inventory found = surveyLine(
        {}, {}, [] { return false; }, session);
    session.err << listenerHint(listenerReport(found));
    session.out << exportSite(found, by) << std::flush;
    if (!found.notSearched.empty())
        throw Failure(ExitStatus::Failed, "cameras may be missing in it, as not all networks were searched");
}

} // namespace

Command exportCommand()
{
    return {
        "export",
        "[--by mac|serial|adapter]",
        "prints what is there now as a site file",
        R"(Prints the cameras that are there now, with their settings, as a site file. To apply that right afterwards changes
nothing; to apply it later brings everything back to what it is now.

  --by    by what the file knows each camera: mac, its MAC address, as when this is not given; serial, its serial number;
          or adapter, the network adapter that hears it, for a file that serves every computer of the same kind
)",
        {{}, {{"--by", "mac|serial|adapter"}}},
        exportLine,
    };
}

} // namespace cli
