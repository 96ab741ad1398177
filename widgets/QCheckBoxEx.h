// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QCheckBox>

/// A check box in the kit's look that tells by number which one it is.
class QCheckBoxEx : public QCheckBox
{
    Q_OBJECT

public:
    explicit QCheckBoxEx(QWidget* pParent = nullptr);
    explicit QCheckBoxEx(const QString& strText, QWidget* pParent = nullptr);

    /// -1 until it is set.
    void SetIndex(int nIndex);

signals:
    void Toggled(int iIndex, bool bChecked);

public slots:
    void OnToggled(bool bChecked);

protected:
    void paintEvent(QPaintEvent* pEvent) override;

private:
    int m_nIndex = -1;
};
