// SPDX-License-Identifier: Apache-2.0
#include "ui/QPlanTable.h"

#include "site/Words.h"
#include "ui/Spoken.h"
#include "widgets/StyleRules.h"

#include <QHeaderView>
#include <QScrollBar>
#include <QSignalBlocker>

#include <algorithm>
#include <array>

namespace {

enum Column
{
    PlaceName,
    Camera,
    Now,
    Wanted,
    ToDo,
    Progress,
    ColumnCount
};

constexpr std::array<int, ColumnCount> ColumnWidths = {110, 150, 190, 190, 200, 200};
constexpr int RowHeight = 46; // Two lines, Chinese ones too.
constexpr const char* BadColor = "#a83025";
constexpr const char* GoodColor = "#1f7a43";

QString Shown(const std::string& text)
{
    return QString::fromStdString(Harmless(text));
}

/// "RZ-1300GM 01A2093471"; the MAC address for a serial number that it does not tell.
QString CameraInShort(const inventory::Camera& camera)
{
    return Shown(camera.model) + QLatin1Char(' ') +
           (camera.serial.empty() ? QString::fromStdString(camera.mac.toText()) : Shown(camera.serial));
}

/// With its name where that matters.
QString InWords(const site::Settings& settings, const site::Settings& other)
{
    QString strSettings = Spoken(site::settingsInWords(settings));
    if (settings.userName == other.userName)
        return strSettings;
    return QPlanTable::tr("%1, name \"%2\"").arg(strSettings, Shown(settings.userName));
}

/// What the place's camera is to have, whether or not there is one.
site::Settings WantedOf(const site::Task& task)
{
    if (!task.isMissing())
        return task.after;
    return {task.place.method, task.place.ip, task.place.userName.value_or(std::string())};
}

/// By what the file knows the place's camera.
QString InWords(const site::Place& place)
{
    QStringList texts;
    if (place.model)
        texts << QPlanTable::tr("model %1").arg(Shown(*place.model));
    if (place.match.serial)
        texts << QPlanTable::tr("serial number %1").arg(Shown(*place.match.serial));
    if (place.match.mac)
        texts << QPlanTable::tr("MAC address %1").arg(QString::fromStdString(place.match.mac->toText()));
    if (place.match.userName)
        texts << QPlanTable::tr("name \"%1\"").arg(Shown(*place.match.userName));
    if (place.match.adapter)
        texts << QPlanTable::tr("on %1").arg(Shown(*place.match.adapter));
    return texts.join(QPlanTable::tr(", "));
}

QString InWords(const std::vector<site::Action>& actions, const site::Settings& after)
{
    QStringList texts;
    for (const site::Action action : actions)
        texts << Spoken(site::actionInWords(action, after));
    return texts.join(QPlanTable::tr(", "));
}

} // namespace

QPlanTable::QPlanTable(QWidget* pParent) : QRowTable(ColumnCount, RowHeight, pParent)
{
    setWordWrap(true);
    for (int nColumn = 0; nColumn < ColumnCount; ++nColumn)
        setColumnWidth(nColumn, ColumnWidths[static_cast<std::size_t>(nColumn)]);
    RefreshTexts();
}

void QPlanTable::RefreshTexts()
{
    setHorizontalHeaderLabels(
        {tr("Place"), tr("Camera"), tr("Now"), tr("Wanted"), tr("What will be done"), tr("State")});
    setAccessibleName(tr("Places"));
    for (int nRow = 0; nRow < rowCount(); ++nRow)
        FillRow(nRow);
    TellEmptyText();
}

void QPlanTable::ShowPlan(std::shared_ptr<const PlanWork> pWork)
{
    const int nSelected = std::max(0, SelectedRow());
    const int nScrolledTo = verticalScrollBar()->value();
    m_pWork = std::move(pWork);
    m_steps = m_pWork->steps;
    {
        // Neither the removal of rows nor what Qt selects meanwhile is a choice of the user's.
        const QSignalBlocker blocker(this);
        clearContents();
        setRowCount(m_pWork->plan ? static_cast<int>(m_pWork->plan->tasks.size()) : 0);
    }
    RefreshTexts();
    if (rowCount() == 0)
        return;
    selectRow(std::min(nSelected, rowCount() - 1));
    verticalScrollBar()->setValue(nScrolledTo);
}

void QPlanTable::ShowStep(int nRow, const PlanStep& step)
{
    if (nRow >= rowCount())
        return;
    m_steps[static_cast<std::size_t>(nRow)] = step;
    FillRow(nRow);
}

int QPlanTable::SelectedRow() const
{
    const QModelIndexList rows = selectionModel()->selectedRows();
    return rows.isEmpty() ? -1 : rows.front().row();
}

const site::Task& QPlanTable::TaskAt(int nRow) const
{
    return m_pWork->plan->tasks[static_cast<std::size_t>(nRow)];
}

void QPlanTable::FillRow(int nRow)
{
    const site::Task& task = TaskAt(nRow);
    SetCell(nRow, PlaceName, Shown(task.place.name));
    SetCell(nRow, Camera, task.camera ? CameraInShort(*task.camera) : QString());
    SetCell(nRow, Now, NowAt(nRow));
    SetCell(nRow, Wanted, InWords(WantedOf(task), task.camera ? task.before : WantedOf(task)));
    SetCell(nRow, ToDo, InWords(task.actions, task.after));
    SetCell(nRow, Progress, StateAt(nRow), StateColorAt(nRow));
}

void QPlanTable::SetCell(int nRow, int nColumn, const QString& strText, const char* color)
{
    QTableWidgetItem* pItem = item(nRow, nColumn);
    if (!pItem) {
        pItem = new QTableWidgetItem;
        pItem->setFlags(pItem->flags() & ~Qt::ItemIsEditable);
        setItem(nRow, nColumn, pItem);
    }
    pItem->setText(strText);
    pItem->setForeground(QColor(QLatin1String(color ? color : TextColor)));
}

QString QPlanTable::NowAt(int nRow) const
{
    const site::Task& task = TaskAt(nRow);
    const auto step = m_steps.find(static_cast<std::size_t>(nRow));
    if (step != m_steps.end() && step->second.outcome) {
        const auto& now = step->second.outcome->now;
        return now ? InWords(*now, task.after) : QString();
    }
    return task.camera ? InWords(task.before, task.after) : QString();
}

QString QPlanTable::StateAt(int nRow) const
{
    const site::Task& task = TaskAt(nRow);
    const auto step = m_steps.find(static_cast<std::size_t>(nRow));
    if (step != m_steps.end() && !step->second.outcome)
        return tr("%1 ...").arg(Spoken(step->second.doing));
    if (step != m_steps.end()) {
        const site::Outcome& outcome = *step->second.outcome;
        const QString strResult = Spoken(site::resultInWords(outcome.result));
        return outcome.reason.empty() ? strResult : tr("%1: %2").arg(strResult, Spoken(outcome.reason));
    }
    if (!task.obstacles.empty())
        return Spoken(task.obstacles);
    if (task.isMissing())
        return Spoken(site::resultInWords(site::Result::Missing));
    return task.actions.empty() ? Spoken(site::resultInWords(site::Result::Ok)) : QString();
}

const char* QPlanTable::StateColorAt(int nRow) const
{
    const site::Task& task = TaskAt(nRow);
    const auto step = m_steps.find(static_cast<std::size_t>(nRow));
    if (step == m_steps.end())
        return task.obstacles.empty() && !task.isMissing() ? TextColor : BadColor;
    if (!step->second.outcome)
        return HighlightColor;
    switch (step->second.outcome->result) {
    case site::Result::Changed:
        return GoodColor;
    case site::Result::Failed:
    case site::Result::PutBack:
    case site::Result::Missing:
        return BadColor;
    case site::Result::Ok:
    case site::Result::WouldChange:
    case site::Result::NotBegun:
        break;
    }
    return TextColor;
}

QString QPlanTable::DetailsAt(int nRow) const
{
    if (nRow < 0 || nRow >= rowCount())
        return {};
    const site::Task& task = TaskAt(nRow);
    QStringList lines;
    const QString strPlace = Shown(task.place.name);
    if (task.camera)
        lines << tr("%1: %2, MAC address %3, on %4")
                     .arg(strPlace, CameraInShort(*task.camera),
                          QString::fromStdString(task.camera->mac.toText()), Shown(task.camera->adapterName));
    else
        lines << tr("%1: no camera").arg(strPlace);
    const QString strNow = NowAt(nRow);
    const QString strWanted = item(nRow, Wanted)->text();
    lines << (strNow.isEmpty() ? tr("Wanted: %1").arg(strWanted)
                               : tr("Now: %1; wanted: %2").arg(strNow, strWanted));
    if (!task.actions.empty())
        lines << tr("What will be done: %1").arg(item(nRow, ToDo)->text());
    if (const QString strState = StateAt(nRow); !strState.isEmpty())
        lines << strState;
    const auto replacement = m_pWork->replacements.find(task.place.name);
    if (task.isMissing() && replacement != m_pWork->replacements.end()) {
        if (const auto& newcomer = replacement->second.newcomer)
            lines << tr("This camera can take its place: %1, MAC address %2")
                         .arg(CameraInShort(*newcomer), QString::fromStdString(newcomer->mac.toText()));
        else
            lines << Spoken(replacement->second.reason);
    }
    return lines.join(QLatin1Char('\n'));
}

QString QPlanTable::QuestionAt(int nRow) const
{
    const site::Task& task = TaskAt(nRow);
    const inventory::Camera& newcomer = *m_pWork->ReplacementOf(static_cast<std::size_t>(nRow))->newcomer;
    QString strQuestion = tr("Shall %1 get the camera that is new?\nOld: %2\nNew: %3 (%4)\nIt gets: %5")
                              .arg(Shown(task.place.name), InWords(task.place), CameraInShort(newcomer),
                                   QString::fromStdString(newcomer.mac.toText()),
                                   Spoken(site::settingsInWords(WantedOf(task))));
    if (task.place.match.serial || task.place.match.mac)
        strQuestion += QLatin1Char('\n') + tr("The file will name the new one.");
    return strQuestion;
}

int QPlanTable::DoneCount() const
{
    return static_cast<int>(
        std::ranges::count_if(m_steps, [](const auto& step) { return step.second.outcome.has_value(); }));
}
