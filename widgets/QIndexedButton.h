// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QPushButton>

/// A push button that tells by number which one it is; the base of those that differ in their look only.
class QIndexedButton : public QPushButton
{
    Q_OBJECT

public:
    /// 0 until it is set.
    void SetIndex(int nIndex);

signals:
    void SigOnClickedButton(int nIndex);

public slots:
    void OnClickedBtn();

protected:
    QIndexedButton(const QIcon& icon, const QString& strText, QWidget* pParent);

    void paintEvent(QPaintEvent* pEvent) override;

private:
    int m_nIndex = 0;
};
