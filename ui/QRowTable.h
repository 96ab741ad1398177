// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "base/Sentence.h"

#include <QTableWidget>

#include <vector>

/// A table for selection only, one thing a row, in the look that the lists of cameras share. Cells show texts
/// from the network as they are; what is cut is in a tool tip.
class QRowTable : public QTableWidget
{
public:
    QRowTable(int nColumns, int nRowHeight, QWidget* pParent);

    /// What the table says while it has no rows.
    void SetEmptyText(std::vector<base::Sentence> text);

    /// What there is to say of the row beyond its cells, in its tool tips.
    virtual QString RemarkAt(int nRow) const;

protected:
    /// In the language of now.
    void TellEmptyText();
    void paintEvent(QPaintEvent* pEvent) override;

private:
    std::vector<base::Sentence> m_emptyText;
};
