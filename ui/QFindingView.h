// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QFrame>

namespace doctor {
struct Finding;
}

/// One finding, to be read: how bad it is and where, what is wrong, why, and the commands that repair it,
/// which can be copied.
class QFindingView : public QFrame
{
    Q_OBJECT

public:
    explicit QFindingView(const doctor::Finding& finding, QWidget* pParent = nullptr);

signals:
    /// The user wants this text in the clipboard.
    void SigCopy(QString strText);
};
