// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "widgets/QIndexedButton.h"

/// The kit's push button on a coloured ground, for a window's first action. Only the constructor from a text
/// alone makes the text white; the others leave it in the default colour and font.
class QPushButtonExColor : public QIndexedButton
{
    Q_OBJECT

public:
    explicit QPushButtonExColor(QWidget* pParent = nullptr);
    explicit QPushButtonExColor(const QString& strText, QWidget* pParent = nullptr);
    QPushButtonExColor(const QIcon& icon, const QString& strText, QWidget* pParent = nullptr);

private:
    QPushButtonExColor(const QIcon& icon, const QString& strText, QWidget* pParent,
                       const QString& strNormalText, const QString& strLastRule);
};
