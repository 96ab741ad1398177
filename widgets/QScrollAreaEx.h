// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QScrollArea>

/// A scroll area with a slim vertical bar; the horizontal bar has the default look.
class QScrollAreaEx : public QScrollArea
{
    Q_OBJECT

public:
    explicit QScrollAreaEx(QWidget* pParent = nullptr);
};
