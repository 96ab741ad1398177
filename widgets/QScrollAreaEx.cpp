// SPDX-License-Identifier: Apache-2.0
#include "widgets/QScrollAreaEx.h"

QScrollAreaEx::QScrollAreaEx(QWidget* pParent) : QScrollArea(pParent)
{
    QString strSheet =
        QStringLiteral("QScrollBar:vertical{border-image: "
                       "url(:/Dorn/Resources/scrollbar/scrollbar.png);width: 10px;margin: 0px;}"
                       "QScrollBar::handle:vertical{border-image: "
                       "url(:/Dorn/Resources/scrollbar/scrollbar_sel.png);border-radius: 0px;}"
                       "QScrollBar::handle:vertical:hover{border-image: "
                       "url(:/Dorn/Resources/scrollbar/scrollbar_hov.png);border-radius: 0px;}");
    for (const char* const part : {"add-line", "sub-line", "up-arrow", "down-arrow"}) {
        for (const char* const state : {"", ":hover"})
            strSheet += QStringLiteral("QScrollBar::%1:vertical%2{width: 0px;height: 0px;}")
                            .arg(QLatin1String(part), QLatin1String(state));
    }
    setStyleSheet(strSheet);
}
