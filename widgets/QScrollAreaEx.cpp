// SPDX-License-Identifier: Apache-2.0
#include "widgets/QScrollAreaEx.h"

#include "widgets/StyleRules.h"

QScrollAreaEx::QScrollAreaEx(QWidget* pParent) : QScrollArea(pParent)
{
    QString strSheet = ScrollBarRules(Qt::Vertical);
    for (const char* const part : {"add-line", "sub-line", "up-arrow", "down-arrow"}) {
        for (const char* const state : {"", ":hover"})
            strSheet += QStringLiteral("QScrollBar::%1:vertical%2{width: 0px;height: 0px;}")
                            .arg(QLatin1String(part), QLatin1String(state));
    }
    setStyleSheet(strSheet);
}
