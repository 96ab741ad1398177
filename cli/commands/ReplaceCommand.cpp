// SPDX-License-Identifier: Apache-2.0
#include "cli/cameras/ListenerHint.h"
#include "cli/cameras/SeenCamera.h"
#include "cli/commands/Command.h"
#include "cli/line/ApplyReport.h"
#include "cli/line/FileText.h"
#include "cli/line/LineRun.h"
#include "cli/line/SiteFile.h"
#include "cli/session/Interruption.h"
#include "cli/session/Session.h"
#include "cli/text/DisplayText.h"
#include "inventory/Inventory.h"
#include "site/ReadSite.h"
#include "site/Replacement.h"
#include "site/Words.h"

#include <memory>
#include <ostream>
#include <system_error>

namespace cli {
namespace {

using site::Plan;
using site::Replacement;

const auto Never = [] { return false; };

void requireNewcomer(const Replacement& replacement)
{
    if (replacement.verdict == Replacement::Verdict::Found)
        return;
    throw Failure(replacement.verdict == Replacement::Verdict::NobodyThere ? ExitStatus::NoSuchCamera
                                                                           : ExitStatus::Failed,
                  shown(replacement.reason));
}

std::string matchText(const site::Match& match)
{
    std::string text;
    const auto add = [&text](const char* name, const std::string& value) {
        text += (text.empty() ? "" : ", ") + std::string(name) + " " + displayText(value);
    };
    if (match.adapter)
        add("adapter", *match.adapter);
    if (match.serial)
        add("serial", *match.serial);
    if (match.mac)
        add("mac", match.mac->toText());
    if (match.userName)
        add("name", *match.userName);
    return text;
}

void show(const site::Place& place, const site::Task& task, Session& session)
{
    const inventory::Camera& camera = *task.camera;
    session.err << displayText(place.name) << ", the camera that is gone: " << matchText(place.match) << '\n'
                << "the new one: " << displayText(camera.model) << ", serial " << displayText(camera.serial)
                << ", mac " << camera.mac.toText() << ", on " << displayText(camera.adapterName) << '\n'
                << "    now:  " << settingsText(task.before) << '\n'
                << "    then: " << settingsText(task.after) << '\n'
                << std::flush;
}

void requireYes(const Arguments& arguments, const Session& session)
{
    if (arguments.has("--yes"))
        return;
    if (!session.ask)
        throw Failure(ExitStatus::Failed, "nobody is there to say yes; --yes says so beforehand");
    if (!session.ask("Give it this place?"))
        throw Failure(ExitStatus::Failed, "nothing was changed");
}

std::string rewritten(const SiteFile& file, const std::string& place, const inventory::Camera& newcomer)
{
    try {
        return site::withNewcomer(file.text, place, newcomer);
    } catch (const site::SiteError& error) {
        throw Failure(ExitStatus::Failed, located(file.path, error) +
                                              "; the line has to be written by hand, nothing was changed");
    }
}

/// The file as it is to be, ready to take the old one's place; null when that stays.
std::unique_ptr<FileReplacement> prepare(const SiteFile& file, const std::string& text)
{
    try {
        return text == file.text ? nullptr : std::make_unique<FileReplacement>(file.path);
    } catch (const std::system_error& error) {
        throw Failure(ExitStatus::Failed, displayText(file.path) + ": cannot be written (" +
                                              displayText(std::string(error.what())) +
                                              "); nothing was changed");
    }
}

void rewrite(FileReplacement& replacement, const SiteFile& file, const std::string& text)
{
    try {
        replacement.commit(text);
    } catch (const std::system_error& error) {
        throw Failure(ExitStatus::Failed,
                      displayText(file.path) + ": could not be written (" +
                          displayText(std::string(error.what())) +
                          "); the camera has its settings, but the file still names the old one");
    }
}

void replace(const Arguments& arguments, Session& session)
{
    const std::string& name = arguments.operands[0];
    const SiteFile file = readSiteFile(arguments.operands[1]);
    file.requirePlace(name);

    const inventory::Inventory found = surveyLine(file.site, {name}, Never, session);
    session.err << listenerHint(listenerReport(found));
    const Replacement replacement = findReplacement(file.site, name, found);
    requireNewcomer(replacement);
    // Now that it is known who gets the address, that it is free for him.
    const Plan plan = planFor(replacement, name, surveyLine(replacement.site, {name}, Never, session));
    tellOfPlan(plan, session);
    if (plan.isRefused() || plan.hasMissing()) {
        session.err << applyText(plan, notBegun(plan), false);
        throw Failure(plan.isRefused() ? ExitStatus::Failed : ExitStatus::NoSuchCamera,
                      "nothing was changed");
    }
    const std::string text = rewritten(file, name, *replacement.newcomer);
    const std::unique_ptr<FileReplacement> newFile = prepare(file, text);
    show(*file.placeNamed(name), plan.tasks.at(0), session);
    requireYes(arguments, session);

    Interruption interruption;
    const LineRun run = runLine(plan, {.patience = session.restartPatience}, interruption, session);
    session.out << applyText(plan, run.outcomes, session.coloured) << std::flush;
    const site::Result result = run.outcomes.at(0).result;
    if (newFile && (result == site::Result::Ok || result == site::Result::Changed)) {
        rewrite(*newFile, file, text);
        session.err << displayText(file.path) << ": has the new camera at " << displayText(name) << '\n';
    }
    requireDone(plan, run);
}

} // namespace

Command replaceCommand()
{
    return {
        "replace",
        "PLACE FILE [--yes]",
        "gives a place of a site file to the camera that was put in for a broken one",
        R"(Gives a place of the site file to the one camera that is there and belongs to no place, when the place's own camera
does not answer any more: shows both, asks, and gives the new one the settings of the place. Where the file knows the
place's camera by its serial number or MAC address, that line of the file is rewritten, and nothing else of it. Refuses when
the old camera still answers, when more than one could be the new one, and when nobody says yes.

  PLACE    a place of the file
  FILE     the site file
  --yes    does not ask
)",
        {{"PLACE", "FILE"}, {{"--yes", {}}}},
        replace,
    };
}

} // namespace cli
