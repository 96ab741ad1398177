// SPDX-License-Identifier: Apache-2.0
#include "widgets/QIndexedButton.h"

#include "widgets/FocusRing.h"

#include <QStyleOptionButton>

QIndexedButton::QIndexedButton(const QIcon& icon, const QString& strText, QWidget* pParent)
    : QPushButton(icon, strText, pParent)
{
    connect(this, &QPushButton::clicked, this, &QIndexedButton::OnClickedBtn);
}

void QIndexedButton::SetIndex(int nIndex)
{
    m_nIndex = nIndex;
}

void QIndexedButton::OnClickedBtn()
{
    emit SigOnClickedButton(m_nIndex);
}

void QIndexedButton::paintEvent(QPaintEvent* /*pEvent*/)
{
    QStyleOptionButton option;
    initStyleOption(&option);
    DrawButton(*this, QStyle::CE_PushButton, option);
}
