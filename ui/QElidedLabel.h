// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "widgets/QStaticLabel.h"

/// A label for a text of any length, from the network maybe: takes one line and no more width than there is,
/// shows what fits with an ellipsis, and the whole text as a tool tip.
class QElidedLabel : public QStaticLabel
{
    Q_OBJECT

public:
    explicit QElidedLabel(QWidget* pParent);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    bool event(QEvent* pEvent) override;
    void paintEvent(QPaintEvent* pEvent) override;
};
