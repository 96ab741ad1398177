// SPDX-License-Identifier: Apache-2.0
#include "widgets/QCheckBoxEx.h"

#include "widgets/FocusRing.h"
#include "widgets/StyleRules.h"

#include <QStyleOptionButton>

QCheckBoxEx::QCheckBoxEx(QWidget* pParent) : QCheckBox(pParent)
{
    setObjectName(QStringLiteral("QCheckBoxEx"));
    setStyleSheet(IndicatorRules("QCheckBoxEx", {{"unchecked", "checkbox/checkbox.png"},
                                                 {"unchecked:hover", "checkbox/checkbox_hov.png"},
                                                 {"unchecked:disabled", "checkbox/checkbox_dis.png"},
                                                 {"checked", "checkbox/checkbox_sel.png"},
                                                 {"checked:hover", "checkbox/checkbox_sel_hov.png"},
                                                 {"checked:disabled", "checkbox/checkbox_sel_dis.png"}}));
    connect(this, &QCheckBox::toggled, this, &QCheckBoxEx::OnToggled);
}

QCheckBoxEx::QCheckBoxEx(const QString& strText, QWidget* pParent) : QCheckBoxEx(pParent)
{
    setText(strText);
    setStyleSheet(styleSheet() +
                  QStringLiteral("#QCheckBoxEx{%1}").arg(TextLook(TextColor, 13, SegoeFamily, 16)));
}

void QCheckBoxEx::SetIndex(int nIndex)
{
    m_nIndex = nIndex;
}

void QCheckBoxEx::OnToggled(bool bChecked)
{
    emit Toggled(m_nIndex, bChecked);
}

void QCheckBoxEx::paintEvent(QPaintEvent* /*pEvent*/)
{
    QStyleOptionButton option;
    initStyleOption(&option);
    DrawButton(*this, QStyle::CE_CheckBox, option);
}
