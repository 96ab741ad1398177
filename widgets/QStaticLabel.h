// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QLabel>

/// A label in the kit's look. It shows its text as it is: what a camera calls itself is not taken for markup.
class QStaticLabel : public QLabel
{
    Q_OBJECT

public:
    explicit QStaticLabel(QWidget* pParent = nullptr, Qt::WindowFlags f = Qt::WindowFlags());
    explicit QStaticLabel(const QString& strText, QWidget* pParent = nullptr,
                          Qt::WindowFlags f = Qt::WindowFlags());
};
