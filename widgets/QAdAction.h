// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QAction>

/// A menu item that says by number which one it is and to which group it belongs.
class QAdAction : public QAction
{
    Q_OBJECT

public:
    QAdAction(const QString& strText, QObject* pParent, int nActionIndex);
    QAdAction(const QIcon& icon, const QString& strText, QObject* pParent, int nActionIndex);

    /// What the ID means is up to the owner; 0 until it is set.
    void SetChannelID(long lChannelID);
    long GetChannelID() const;

    void SetActionIndex(int nActionIndex);
    int GetActionIndex() const;

signals:
    /// Comes whenever the action is triggered, with the state it has then.
    void SigActionTriggered(int iIndex, long lChanID, bool bChecked);

public slots:
    void OnTriggered();

private:
    long m_lChannelID = 0;
    int m_nActionIndex;
};
