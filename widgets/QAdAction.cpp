// SPDX-License-Identifier: Apache-2.0
#include "widgets/QAdAction.h"

QAdAction::QAdAction(const QString& strText, QObject* pParent, int nActionIndex)
    : QAdAction(QIcon(), strText, pParent, nActionIndex)
{}

QAdAction::QAdAction(const QIcon& icon, const QString& strText, QObject* pParent, int nActionIndex)
    : QAction(icon, strText, pParent),
      m_nActionIndex(nActionIndex)
{
    connect(this, &QAction::triggered, this, &QAdAction::OnTriggered);
}

void QAdAction::SetChannelID(long lChannelID)
{
    m_lChannelID = lChannelID;
}

long QAdAction::GetChannelID() const
{
    return m_lChannelID;
}

void QAdAction::SetActionIndex(int nActionIndex)
{
    m_nActionIndex = nActionIndex;
}

int QAdAction::GetActionIndex() const
{
    return m_nActionIndex;
}

void QAdAction::OnTriggered()
{
    emit SigActionTriggered(m_nActionIndex, m_lChannelID, isChecked());
}
