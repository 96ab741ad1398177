// SPDX-License-Identifier: Apache-2.0
#include "cli/arguments/AddressArguments.h"
#include "cli/cameras/HoldingReport.h"
#include "cli/cameras/SeenCamera.h"
#include "cli/commands/Command.h"
#include "cli/session/Failure.h"
#include "cli/session/Session.h"

#include <ostream>

namespace cli {
namespace {

void who(const Arguments& arguments, Session& session)
{
    const base::MacAddress mac = parseMacAddress(arguments.operands[0]);
    const SeenCamera seen = seeCamera(mac, session);
    const inventory::Holding holding = whoHolds(seen.camera, seen.inventory.adapters);
    session.out << (arguments.has("--json") ? holdingJson(seen.camera, holding)
                                            : holdingText(seen.camera, holding))
                << std::flush;
    if (!seen.camera.privilege && !holding.process)
        throw Failure(ExitStatus::Failed, describe(seen.camera) +
                                              ": neither the camera nor a socket of this computer tells "
                                              "whether an application holds it");
}

} // namespace

Command whoCommand()
{
    return {
        "who",
        "MAC [--json]",
        "tells who holds a camera",
        R"(Tells which application holds the camera with this MAC address: what the camera says of it, and which program of this
computer that is. Only root sees the programs of all users. What is a guess is called one. Nothing is changed, and the
camera is left as it is.

  MAC       as the list command shows it; colons, dashes or nothing between the pairs
  --json    prints a JSON object
)",
        {{"MAC"}, {{"--json", {}}}},
        who,
    };
}

} // namespace cli
