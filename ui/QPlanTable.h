// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ui/PlanWork.h"
#include "ui/QRowTable.h"

#include <QCoreApplication>

#include <memory>

/// The places of a site file, one a row: the camera that is there, what it has and is to have, what will be
/// done, and what stands in the way of that or became of it.
class QPlanTable : public QRowTable
{
    Q_DECLARE_TR_FUNCTIONS(QPlanTable)

public:
    explicit QPlanTable(QWidget* pParent);

    /// Sets every text again, in the language of now.
    void RefreshTexts();

    /// Shows this plan in place of the one before. The list stays scrolled to where it was, with the same row
    /// selected.
    void ShowPlan(std::shared_ptr<const PlanWork> pWork);
    /// Nothing of it is known from now on but what is told.
    void ShowStep(int nRow, const PlanStep& step);

    /// Selected; -1 when none is.
    int SelectedRow() const;
    /// All that there is to say of the row, in several lines.
    QString DetailsAt(int nRow) const;
    /// Whether the newcomer shall have the row's place, for which there is one.
    QString QuestionAt(int nRow) const;
    /// How many places have their outcome.
    int DoneCount() const;

private:
    void FillRow(int nRow);
    void SetCell(int nRow, int nColumn, const QString& strText, const char* color = nullptr);
    const site::Task& TaskAt(int nRow) const;
    /// What it has now, as far as is known.
    QString NowAt(int nRow) const;
    /// How far it is, or what stands in the way.
    QString StateAt(int nRow) const;
    const char* StateColorAt(int nRow) const;

    std::shared_ptr<const PlanWork> m_pWork;
    std::map<std::size_t, PlanStep> m_steps; ///< Those of the work, and those since.
};
