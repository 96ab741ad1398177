// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "widgets/QIndexedButton.h"

/// The kit's ordinary push button.
class QPushButtonEx : public QIndexedButton
{
    Q_OBJECT

public:
    explicit QPushButtonEx(QWidget* pParent = nullptr);
    explicit QPushButtonEx(const QString& strText, QWidget* pParent = nullptr);
    QPushButtonEx(const QIcon& icon, const QString& strText, QWidget* pParent = nullptr);

private:
    QPushButtonEx(const QIcon& icon, const QString& strText, QWidget* pParent, const char* normalSlices,
                  bool bHoverFont);
};
