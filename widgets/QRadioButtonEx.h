// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QRadioButton>

/// A radio button in the kit's look.
class QRadioButtonEx : public QRadioButton
{
    Q_OBJECT

public:
    explicit QRadioButtonEx(QWidget* pParent = nullptr);
    explicit QRadioButtonEx(const QString& strText, QWidget* pParent = nullptr);

protected:
    void paintEvent(QPaintEvent* pEvent) override;
};
