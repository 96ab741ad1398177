// SPDX-License-Identifier: Apache-2.0
#include "widgets/QRadioButtonEx.h"

#include "widgets/StyleRules.h"

namespace {

QString Indicator(const char* state, const char* picture)
{
    return ImageRule(QStringLiteral("QRadioButtonEx::indicator:") + QLatin1String(state),
                     QStringLiteral("radiobox/") + QLatin1String(picture));
}

} // namespace

QRadioButtonEx::QRadioButtonEx(QWidget* pParent) : QRadioButton(pParent)
{
    setObjectName(QStringLiteral("QRadioButtonEx"));
    // A disabled one that is not checked has two rules: the one that names both states is the more specific.
    setStyleSheet(
        Indicator("unchecked", "radiobox.png") + Indicator("unchecked:hover", "radiobox_hov.png") +
        Indicator("unchecked:disabled", "radiobox_dis.png") + Indicator("checked ", "radiobox_sel.png") +
        Indicator("checked:hover", "radiobox_sel_hov.png") + Indicator("disabled", "radiobox_sel_dis.png"));
}

QRadioButtonEx::QRadioButtonEx(const QString& strText, QWidget* pParent) : QRadioButtonEx(pParent)
{
    setText(strText);
    setStyleSheet(styleSheet() +
                  QStringLiteral("#QRadioButtonEx{color:#666666;                                 "
                                 "font-size:13px;                                 "
                                 "font-family: FZShuSong-Z01S;}"));
}
