// SPDX-License-Identifier: Apache-2.0
#include "doctor/Families.h"
#include "doctor/Words.h"

namespace doctor {
namespace {

using base::Sentence;
using inventory::Camera;
using inventory::Holding;
using inventory::Privilege;

Sentence whatHolds(const Camera& camera, const Holding& holding)
{
    if (holding.process && !holding.isGuess)
        return {TRANSLATABLE("Sentence", "The camera %1 is in use by %2 on this computer, process %3 of the "
                                         "user %4."),
                {nameOf(camera), holding.process->name, std::to_string(holding.process->pid),
                 holding.process->user}};
    if (holding.process)
        return {TRANSLATABLE("Sentence", "The camera %1 is in use, perhaps by %2 on this computer, process "
                                         "%3 of the user %4."),
                {nameOf(camera), holding.process->name, std::to_string(holding.process->pid),
                 holding.process->user}};
    if (camera.holder && !camera.holder->address.isUnspecified())
        return {TRANSLATABLE("Sentence", "The camera %1 is in use by an application at %2."),
                {nameOf(camera), camera.holder->address.toText()}};
    return {TRANSLATABLE("Sentence", "The camera %1 is in use by some application."), {nameOf(camera)}};
}

void addForEver(const Camera& camera, const Holding& holding, std::vector<Finding>& findings)
{
    Finding finding = newFinding("in-use-for-ever", Severity::Warning, camera);
    finding.text = {whatHolds(camera, holding),
                    {TRANSLATABLE("Sentence", "It may never become free by itself: end that application in "
                                              "an orderly way; if it is gone already, switch the camera off "
                                              "and on."),
                     {}}};
    finding.reason = {{TRANSLATABLE("Sentence", "The camera says that its heartbeat is switched off, so it "
                                                "does not notice when the application dies."),
                       {}}};
    findings.push_back(std::move(finding));
}

void addInUse(const Camera& camera, const Holding& holding, std::vector<Finding>& findings)
{
    Finding finding = newFinding("in-use", Severity::Note, camera);
    finding.text = {whatHolds(camera, holding),
                    {TRANSLATABLE("Sentence", "To change it, close that application first."), {}}};
    finding.reason = holding.reason;
    if (finding.reason.empty())
        finding.reason = {
            camera.privilege == Privilege::Exclusive
                ? Sentence{TRANSLATABLE("Sentence", "An application has exclusive control of it, "
                                                    "as the camera says."),
                           {}}
                : Sentence{TRANSLATABLE("Sentence", "An application has control of it, as the "
                                                    "camera says; others may read."),
                           {}}};
    findings.push_back(std::move(finding));
}

} // namespace

bool isHeld(const Camera& camera)
{
    return camera.privilege && *camera.privilege != Privilege::None;
}

void findInUse(const Evidence& evidence, std::vector<Finding>& findings)
{
    for (const Camera& camera : evidence.inventory.cameras) {
        // One that two adapters reach is spoken of once.
        if (!isHeld(camera) || evidence.inventory.cameraWith(camera.mac) != &camera)
            continue;
        const auto known = evidence.holdings.find(camera.mac);
        const Holding holding = known == evidence.holdings.end() ? Holding() : known->second;
        if (camera.isHeartbeatOff.value_or(false))
            addForEver(camera, holding, findings);
        addInUse(camera, holding, findings);
    }
}

} // namespace doctor
