// SPDX-License-Identifier: Apache-2.0
#include "ui/PlanWork.h"

#include "site/ReadSite.h"
#include "site/Survey.h"
#include "site/Words.h"

#include <QFile>
#include <QSaveFile>

#include <algorithm>
#include <tuple>

namespace {

constexpr qint64 LongestFile = (1 << 20) + 1; // One that is too long is told from one that is not.

base::Sentence About(const char* format, const QString& strFile, const QString& strReason)
{
    return {format, {strFile.toStdString(), strReason.toStdString()}};
}

/// Nothing, and the reason, when it cannot be read.
std::optional<QByteArray> Read(const QString& strFile, std::vector<base::Sentence>& failure)
{
    QFile file(strFile);
    if (file.open(QIODevice::ReadOnly)) {
        const QByteArray text = file.read(LongestFile);
        if (file.error() == QFileDevice::NoError)
            return text;
    }
    failure = {About(TRANSLATABLE("Sentence", "%1 cannot be read: %2."), strFile, file.errorString())};
    return std::nullopt;
}

std::vector<base::Sentence> WhyNotWritten(const QSaveFile& file)
{
    return {
        About(TRANSLATABLE("Sentence", "%1 cannot be written: %2."), file.fileName(), file.errorString())};
}

/// As a whole or not at all, into a file that was opened; tells why not.
std::vector<base::Sentence> Write(QSaveFile& file, const std::string& text)
{
    file.write(text.data(), static_cast<qint64>(text.size()));
    return file.commit() ? std::vector<base::Sentence>() : WhyNotWritten(file);
}

std::vector<base::Sentence> InWords(const site::SiteError& error)
{
    if (error.line() == 0)
        return {{TRANSLATABLE("Sentence", "The file is wrong:"), {}}, error.sentence()};
    return {{TRANSLATABLE("Sentence", "The file is wrong in line %1, column %2:"),
             {std::to_string(error.line()), std::to_string(error.column())}},
            error.sentence()};
}

std::string_view ViewOf(const QByteArray& text)
{
    return {text.constData(), static_cast<std::size_t>(text.size())};
}

/// What there is to do by the site of that work.
void Plan(PlanWork& work, const inventory::Inventory& inventory)
{
    work.plan = site::makePlan(work.site, inventory);
    for (const site::Task& task : work.plan->tasks) {
        if (task.isMissing())
            work.replacements[task.place.name] = site::findReplacement(work.site, task.place.name, inventory);
    }
}

/// Whether both say the same to whoever decides. Which free address opens a circle is left to the moment.
bool DoTheSame(const site::Plan& left, const site::Plan& right)
{
    const auto decisive = [](const site::Task& task) {
        return std::tie(task.place, task.before, task.after, task.actions, task.obstacles);
    };
    const auto mac = [](const site::Task& task) {
        return task.camera ? task.camera->mac : base::MacAddress{};
    };
    return left.obstacles == right.obstacles &&
           std::ranges::equal(left.tasks, right.tasks, [&](const site::Task& one, const site::Task& other) {
               return decisive(one) == decisive(other) && mac(one) == mac(other);
           });
}

/// Applies a plan whose tasks are those of the rows; what became of them.
std::vector<site::Outcome> Apply(const site::Plan& plan, const std::vector<std::size_t>& rows,
                                 const PlanSurroundings& surroundings)
{
    site::Progress progress;
    progress.onAction = [&](std::size_t nTask, site::Action action) {
        surroundings.onStep(rows[nTask], {site::actionInWords(action, plan.tasks[nTask].after), {}});
    };
    progress.onReturn = [&](std::size_t nTask) {
        surroundings.onStep(rows[nTask], {{TRANSLATABLE("Sentence", "putting it back"), {}}, {}});
    };
    progress.onOutcome = [&](std::size_t nTask, const site::Outcome& outcome) {
        surroundings.onStep(rows[nTask], {{}, outcome});
    };
    progress.isInterrupted = surroundings.isOver;
    return site::apply(plan, {}, progress);
}

base::Sentence ChangedMeanwhile()
{
    return {TRANSLATABLE("Sentence",
                         "What is there has changed meanwhile, and nothing was done: this is the plan now."),
            {}};
}

} // namespace

Surveyor NetworksSurveyor()
{
    return
        [](const site::Site& site, const std::set<std::string>& only, const std::function<bool()>& isOver) {
            return std::make_shared<const inventory::Inventory>(site::survey(site, only, isOver));
        };
}

bool PlanWork::IsApplicable() const
{
    return plan && steps.empty() && !plan->isRefused() && !plan->hasMissing() && plan->hasActions();
}

const site::Replacement* PlanWork::ReplacementOf(std::size_t nTask) const
{
    if (!plan || nTask >= plan->tasks.size() || !steps.empty())
        return nullptr;
    const auto found = replacements.find(plan->tasks[nTask].place.name);
    const bool bFound =
        found != replacements.end() && found->second.verdict == site::Replacement::Verdict::Found;
    return bFound ? &found->second : nullptr;
}

PlanWork LookAtPlan(const QString& strFile, const PlanSurroundings& surroundings)
{
    PlanWork work;
    work.strFile = strFile;
    const auto text = Read(strFile, work.failure);
    if (!text)
        return work;
    try {
        work.site = site::readSite(ViewOf(*text));
    } catch (const site::SiteError& error) {
        work.failure = InWords(error);
        return work;
    }
    Plan(work, *surroundings.survey(work.site, {}, surroundings.isOver));
    return work;
}

PlanWork ApplyPlan(const PlanWork& shown, const PlanSurroundings& surroundings)
{
    PlanWork work;
    work.strFile = shown.strFile;
    work.site = shown.site;
    const auto inventory = surroundings.survey(work.site, {}, surroundings.isOver);
    if (surroundings.isOver())
        return shown;
    Plan(work, *inventory);
    if (!DoTheSame(*work.plan, *shown.plan)) {
        work.notice = {ChangedMeanwhile()};
        return work;
    }
    std::vector<std::size_t> rows(work.plan->tasks.size());
    for (std::size_t nTask = 0; nTask < rows.size(); ++nTask)
        rows[nTask] = nTask;
    work.bChangedCameras = true;
    const std::vector<site::Outcome> outcomes = Apply(*work.plan, rows, surroundings);
    for (std::size_t nTask = 0; nTask < outcomes.size(); ++nTask)
        work.steps[nTask].outcome = outcomes[nTask];
    work.notice = site::summaryOf(*work.plan, outcomes);
    return work;
}

PlanWork ReplaceCamera(const PlanWork& shown, std::size_t nTask, const PlanSurroundings& surroundings)
{
    const std::string place = shown.plan->tasks[nTask].place.name;
    const site::Replacement& chosen = *shown.ReplacementOf(nTask);
    PlanWork work = shown;
    const auto text = Read(shown.strFile, work.failure);
    if (!text)
        return work;

    const auto inventory = surroundings.survey(chosen.site, {place}, surroundings.isOver);
    if (surroundings.isOver())
        return work;
    const site::Replacement found = site::findReplacement(shown.site, place, *inventory);
    if (found.verdict != site::Replacement::Verdict::Found || found.newcomer->mac != chosen.newcomer->mac) {
        work.failure = found.reason.empty() ? std::vector{ChangedMeanwhile()} : found.reason;
        return work;
    }
    const site::Plan plan = site::planFor(found, place, *inventory);
    work.plan->tasks[nTask] = plan.tasks.at(0);
    if (plan.isRefused() || plan.hasMissing()) {
        work.failure = plan.obstacles;
        return work;
    }
    std::string rewritten;
    try {
        rewritten = site::withNewcomer(ViewOf(*text), place, *found.newcomer);
    } catch (const site::SiteError& error) {
        work.failure = InWords(error);
        return work;
    }
    QSaveFile file(shown.strFile);
    const bool bRewrites = rewritten != ViewOf(*text);
    if (bRewrites && !file.open(QIODevice::WriteOnly)) {
        work.failure = WhyNotWritten(file); // Before the camera is changed.
        return work;
    }
    work.bChangedCameras = true;
    const std::vector<site::Outcome> outcomes = Apply(plan, {nTask}, surroundings);
    work.steps[nTask].outcome = outcomes.at(0);
    work.notice = site::summaryOf(plan, outcomes);
    if (outcomes[0].result != site::Result::Changed && outcomes[0].result != site::Result::Ok)
        return work;
    if (bRewrites)
        work.failure = Write(file, rewritten);
    work.bHasReplaced = work.failure.empty();
    return work;
}

PlanWork SaveAsPlan(const QString& strFile, site::MatchBy by, const PlanSurroundings& surroundings)
{
    PlanWork work;
    const auto inventory = surroundings.survey({}, {}, surroundings.isOver);
    if (surroundings.isOver())
        return work;
    QSaveFile file(strFile);
    work.failure =
        file.open(QIODevice::WriteOnly) ? Write(file, site::exportSite(*inventory, by)) : WhyNotWritten(file);
    if (work.failure.empty())
        work.notice = {
            {TRANSLATABLE("Sentence", "What is there now is written to %1."), {strFile.toStdString()}}};
    return work;
}
