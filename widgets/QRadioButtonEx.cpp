// SPDX-License-Identifier: Apache-2.0
#include "widgets/QRadioButtonEx.h"

#include "widgets/FocusRing.h"
#include "widgets/StyleRules.h"

#include <QStyleOptionButton>

QRadioButtonEx::QRadioButtonEx(QWidget* pParent) : QRadioButton(pParent)
{
    setObjectName(QStringLiteral("QRadioButtonEx"));
    // Two rules match one that is disabled and unchecked; Qt takes the more specific, which names both
    // states.
    setStyleSheet(IndicatorRules("QRadioButtonEx", {{"unchecked", "radiobox/radiobox.png"},
                                                    {"unchecked:hover", "radiobox/radiobox_hov.png"},
                                                    {"unchecked:disabled", "radiobox/radiobox_dis.png"},
                                                    {"checked ", "radiobox/radiobox_sel.png"},
                                                    {"checked:hover", "radiobox/radiobox_sel_hov.png"},
                                                    {"disabled", "radiobox/radiobox_sel_dis.png"}}));
}

QRadioButtonEx::QRadioButtonEx(const QString& strText, QWidget* pParent) : QRadioButtonEx(pParent)
{
    setText(strText);
    setStyleSheet(styleSheet() +
                  QStringLiteral("#QRadioButtonEx{%1}").arg(TextLook(TextColor, 13, SongFamily, 33)));
}

void QRadioButtonEx::paintEvent(QPaintEvent* /*pEvent*/)
{
    QStyleOptionButton option;
    initStyleOption(&option);
    DrawButton(*this, QStyle::CE_RadioButton, option);
}
