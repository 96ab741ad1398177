// SPDX-License-Identifier: Apache-2.0
#include "cli/line/ApplyReport.h"

#include "cli/text/DisplayText.h"
#include "cli/text/Json.h"
#include "cli/text/TextTable.h"
#include "site/Words.h"

#include <algorithm>

namespace cli {
namespace {

using inventory::IpMethod;
using site::Action;
using site::Outcome;
using site::Plan;
using site::Result;
using site::Settings;
using site::Task;

constexpr const char* Red = "\x1B[31m";
constexpr const char* Green = "\x1B[32m";
constexpr const char* Yellow = "\x1B[33m";

const char* nameOf(Result result)
{
    switch (result) {
    case Result::Ok:
        return "ok";
    case Result::Changed:
        return "changed";
    case Result::WouldChange:
        return "would-change";
    case Result::Failed:
        return "failed";
    case Result::PutBack:
        return "put-back";
    case Result::Missing:
        return "missing";
    case Result::NotBegun:
        return "not-begun";
    }
    return nullptr;
}

const char* nameOf(Action action)
{
    switch (action) {
    case Action::Force:
        return "force";
    case Action::Store:
        return "store";
    case Action::Configure:
        return "configure";
    case Action::Name:
        return "name";
    case Action::Restart:
        return "restart";
    }
    return nullptr;
}

const char* nameOf(IpMethod method)
{
    return method == IpMethod::Static ? "static" : method == IpMethod::Dhcp ? "dhcp" : "lla";
}

std::string colourOf(Result result)
{
    switch (result) {
    case Result::Ok:
    case Result::Changed:
        return Green;
    case Result::Failed:
    case Result::PutBack:
    case Result::Missing:
        return Red;
    case Result::WouldChange:
    case Result::NotBegun:
        break;
    }
    return Yellow;
}

/// What the camera has, or is going to have.
std::optional<Settings> afterwards(const Task& task, const Outcome& outcome)
{
    return outcome.result == Result::WouldChange ? task.after : outcome.now;
}

std::string actionsText(const Outcome& outcome, const Settings& after)
{
    std::string text;
    for (const Action action : outcome.actions)
        text += (text.empty() ? "" : ", ") + displayText(actionInWords(action, after).english());
    return text.empty() ? "-" : text;
}

std::string wantedText(const Task& task)
{
    if (!task.isMissing())
        return settingsText(task.after);
    return settingsText({task.place.method, task.place.ip, task.place.userName.value_or("")});
}

Json settingsJson(const std::optional<Settings>& settings)
{
    if (!settings)
        return nullptr;
    const bool isKnown = !settings->ip.address.isUnspecified();
    const auto ifKnown = [isKnown](base::Ipv4 address) { return isKnown ? Json(address.toText()) : Json(); };
    return {{"Mode", nameOf(settings->method)},
            {"Address", ifKnown(settings->ip.address)},
            {"Mask", ifKnown(settings->ip.mask)},
            {"Gateway", ifKnown(settings->ip.gateway)},
            {"Name", settings->userName}};
}

/// Whether it is other than before, or may be.
bool hasChanged(const Task& task, const Outcome& outcome)
{
    switch (outcome.result) {
    case Result::Changed:
    case Result::WouldChange:
        return true;
    case Result::Failed:
        return !outcome.actions.empty() || outcome.now != task.before;
    default:
        return false;
    }
}

} // namespace

std::string settingsText(const Settings& settings)
{
    const std::string text = displayText(settingsInWords(settings).english());
    return settings.userName.empty() ? text : text + " \"" + displayText(settings.userName) + "\"";
}

std::string shown(const std::vector<base::Sentence>& sentences)
{
    return displayText(base::english(sentences));
}

std::string applyText(const Plan& plan, const std::vector<Outcome>& outcomes, bool coloured)
{
    std::string losses;
    for (std::size_t i = 0; i < outcomes.size(); ++i)
        if (outcomes[i].result == Result::Failed)
            losses += (coloured ? Red : std::string()) +
                      "NOT PUT BACK: " + shown({lossOf(plan.tasks[i], outcomes[i])}) +
                      (coloured ? "\x1B[0m\n" : "\n");

    TextTable table;
    table.addRow(
        {{"PLACE", {}}, {"CAMERA", {}}, {"BEFORE", {}}, {"WANTED", {}}, {"DONE", {}}, {"RESULT", {}}});
    std::string reasons;
    for (std::size_t i = 0; i < outcomes.size(); ++i) {
        const Task& task = plan.tasks[i];
        const Outcome& outcome = outcomes[i];
        table.addRow({{displayText(task.place.name), {}},
                      {task.camera ? task.camera->mac.toText() : "-", {}},
                      {task.camera ? settingsText(task.before) : "-", {}},
                      {wantedText(task), {}},
                      {actionsText(outcome, task.after), {}},
                      {displayText(resultInWords(outcome.result).english()),
                       coloured ? colourOf(outcome.result) : std::string()}});
        if (!outcome.reason.empty())
            reasons += displayText(task.place.name) + ": " + shown(outcome.reason) + '\n';
    }
    return losses + table.text() + reasons;
}

std::string applyJson(const Plan& plan, const std::vector<Outcome>& outcomes)
{
    auto array = Json::array();
    for (std::size_t i = 0; i < outcomes.size(); ++i) {
        const Task& task = plan.tasks[i];
        const Outcome& outcome = outcomes[i];
        auto actions = Json::array();
        for (const Action action : outcome.actions)
            actions.push_back(nameOf(action));
        array.push_back({
            {"Place", task.place.name},
            {"GevMACAddress", task.camera ? Json(task.camera->mac.toText()) : Json()},
            {"DeviceSerialNumber", task.camera ? Json(task.camera->serial) : Json()},
            {"Before", settingsJson(task.camera ? std::optional(task.before) : std::nullopt)},
            {"After", settingsJson(afterwards(task, outcome))},
            {"Changed", hasChanged(task, outcome)},
            {"Actions", actions},
            {"Result", nameOf(outcome.result)},
            {"Reason", base::english(outcome.reason)},
        });
    }
    return jsonText(array);
}

} // namespace cli
