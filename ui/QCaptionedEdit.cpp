// SPDX-License-Identifier: Apache-2.0
#include "ui/QCaptionedEdit.h"

#include "widgets/QLineEditEx.h"
#include "widgets/QStaticLabel.h"
#include "widgets/StyleRules.h"

namespace {

constexpr QSize EditSize(160, 20); // The size of the picture that the field is drawn on.

// An invalid text stays red also while the field is out of use.
QString FieldSheet(const char* color, const char* disabledColor)
{
    return QStringLiteral("#QLineEditEx{%1border:none;background:transparent;}"
                          "#QLineEditEx:disabled{color:%2;}")
        .arg(TextLook(color), QLatin1String(disabledColor));
}

} // namespace

QCaptionedEdit::QCaptionedEdit(QWidget* pParent)
    : m_pCaption(new QStaticLabel(pParent)),
      m_pEdit(new QLineEditEx(pParent)),
      m_strKitSheet(m_pEdit->styleSheet())
{
    m_pCaption->setBuddy(m_pEdit);
    m_pCaption->setStyleSheet(
        m_pCaption->styleSheet() +
        QStringLiteral("QLabel:disabled{color:%1;}").arg(QLatin1String(DisabledTextColor)));
    m_pEdit->setFixedSize(EditSize);
    m_pEdit->setTextMargins(4, 0, 4, 0); // Padding would shrink the picture as well.
    ShowValid(true);
}

void QCaptionedEdit::SetCaption(const QString& strCaption)
{
    m_pCaption->setText(strCaption);
}

void QCaptionedEdit::SetEnabled(bool bEnable)
{
    m_pCaption->setEnabled(bEnable);
    m_pEdit->setEnabled(bEnable);
}

void QCaptionedEdit::ShowValid(bool bValid)
{
    const QString strSheet =
        m_strKitSheet + (bValid ? FieldSheet(TextColor, DisabledTextColor) : FieldSheet("red", "red"));
    // A new sheet makes Qt style the field anew, which is slow.
    if (m_pEdit->styleSheet() != strSheet)
        m_pEdit->setStyleSheet(strSheet);
}
