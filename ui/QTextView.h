// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "widgets/QScrollAreaEx.h"

class QStaticLabel;

/// Plain text of any length, wrapped, that can be selected: no higher than it needs to be, and never higher
/// than so many pixels; what is longer is scrolled. An empty one is not shown.
class QTextView : public QScrollAreaEx
{
    Q_OBJECT

public:
    QTextView(int nGreatestHeight, QWidget* pParent);

    void SetText(const QString& strText, const char* color);
    QString Text() const;

protected:
    void resizeEvent(QResizeEvent* pEvent) override;

private:
    void FitHeight();

    QStaticLabel* const m_pLabel;
    const int m_nGreatestHeight;
};
