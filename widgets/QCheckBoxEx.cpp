// SPDX-License-Identifier: Apache-2.0
#include "widgets/QCheckBoxEx.h"

#include "widgets/StyleRules.h"

namespace {

QString Indicator(const char* state, const char* picture)
{
    return ImageRule(QStringLiteral("QCheckBoxEx::indicator:") + QLatin1String(state),
                     QStringLiteral("checkbox/") + QLatin1String(picture));
}

} // namespace

QCheckBoxEx::QCheckBoxEx(QWidget* pParent) : QCheckBox(pParent)
{
    setObjectName(QStringLiteral("QCheckBoxEx"));
    setStyleSheet(Indicator("unchecked", "checkbox.png") + Indicator("unchecked:hover", "checkbox_hov.png") +
                  Indicator("unchecked:disabled", "checkbox_dis.png") +
                  Indicator("checked", "checkbox_sel.png") +
                  Indicator("checked:hover", "checkbox_sel_hov.png") +
                  Indicator("checked:disabled", "checkbox_sel_dis.png"));
    connect(this, &QCheckBox::toggled, this, &QCheckBoxEx::OnToggled);
}

QCheckBoxEx::QCheckBoxEx(const QString& strText, QWidget* pParent) : QCheckBoxEx(pParent)
{
    setText(strText);
    setStyleSheet(styleSheet() + QStringLiteral("#QCheckBoxEx{color:#666666;                "
                                                "font-size:13px;                "
                                                "font-family: Segoe UI;}"));
}

void QCheckBoxEx::SetIndex(int nIndex)
{
    m_nIndex = nIndex;
}

void QCheckBoxEx::OnToggled(bool bChecked)
{
    emit Toggled(m_nIndex, bChecked);
}
