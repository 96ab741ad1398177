// SPDX-License-Identifier: Apache-2.0
#include "widgets/QImageButton.h"

#include "widgets/QAdAction.h"

#include <QMenu>

namespace {

const QLatin1String Normal("");
const QLatin1String Hover(":hover");
const QLatin1String Pressed(":pressed");
const QLatin1String Disabled(":disabled");
const QLatin1String BorderImage("border-image");

void KeepIfGiven(QString& strKept, const QString& strGiven)
{
    if (!strGiven.isEmpty())
        strKept = strGiven;
}

} // namespace

int QImageButton::g_nBtnGuid = 1;

QImageButton::QImageButton(bool bColor)
    : m_pMenu(new QMenu),
      m_strBtnName(QStringLiteral("QImageButton%1").arg(g_nBtnGuid++)),
      m_bColor(bColor)
{
    setObjectName(m_strBtnName);
    connect(this, &QPushButton::clicked, this, &QImageButton::OnButtonClicked);
}

QImageButton::QImageButton(const QString& strNormal, const QString& strHover, const QString& strPressed,
                           bool bColor)
    : QImageButton(bColor)
{
    SetBtnImage(strNormal, strHover, strPressed, QString());
}

QImageButton::~QImageButton()
{
    qDeleteAll(m_vecAction);
    delete m_pMenu;
}

void QImageButton::SetBtnImage(const QString& strNormal, const QString& strHover, const QString& strPressed,
                               const QString& strDisabled)
{
    KeepIfGiven(m_strNormal, strNormal);
    KeepIfGiven(m_strHover, strHover);
    KeepIfGiven(m_strPressed, strPressed);
    KeepIfGiven(m_strDisabled, strDisabled);
    setStyleSheet(Rule(Normal, BorderImage, strNormal) + Rule(Hover, BorderImage, strHover) +
                  Rule(Pressed, BorderImage, strPressed) + Rule(Disabled, BorderImage, strDisabled));
}

void QImageButton::SetCheckable(bool bCheckable, const QString& strCheckedNormal,
                                const QString& strCheckedHover, const QString& strCheckedPressed)
{
    m_bCheckable = bCheckable;
    m_bChecked = false;
    KeepIfGiven(m_strCheckedNormal, strCheckedNormal);
    KeepIfGiven(m_strCheckedHover, strCheckedHover);
    KeepIfGiven(m_strCheckedPressed, strCheckedPressed);
}

void QImageButton::SetCheck(bool bCheck)
{
    m_bChecked = bCheck;
    setStyleSheet(Rule(Normal, BorderImage, bCheck ? m_strCheckedNormal : m_strNormal) +
                  Rule(Hover, BorderImage, bCheck ? m_strCheckedHover : m_strHover) +
                  Rule(Pressed, BorderImage, bCheck ? m_strCheckedPressed : m_strPressed) +
                  Rule(Disabled, QLatin1String("background-image"), m_strDisabled));
}

bool QImageButton::IsChecked() const
{
    return m_bChecked;
}

void QImageButton::SetBtnIndex(int nIndex)
{
    m_nBtnIndex = nIndex;
}

void QImageButton::SetBtnTextColor(const QColor& color)
{
    SetTextColor(color);
    m_normalTextColor = color;
}

void QImageButton::SetOnBtnTextColor(const QColor& color)
{
    m_hoverTextColor = color;
    m_bHasHoverColor = true;
}

int QImageButton::AddMenu(const QString& strText, bool bCheckable, int nChannelId)
{
    const int nIndex = m_vecAction.size();
    auto* const pAction = new QAdAction(strText, this, nIndex);
    pAction->setSeparator(strText.isEmpty());
    pAction->setCheckable(bCheckable);
    pAction->SetChannelID(nChannelId);
    m_vecAction.append(pAction);
    m_pMenu->addAction(pAction);
    connect(pAction, &QAdAction::SigActionTriggered, this, &QImageButton::OnMenuTriggered);
    return nIndex;
}

void QImageButton::SetMenu()
{
    setMenu(m_pMenu);
}

void QImageButton::SetMenuChecked(int nIndex, bool bChecked)
{
    if (HasAction(nIndex))
        m_vecAction[nIndex]->setChecked(bChecked);
}

bool QImageButton::GetMenuCheckd(int nIndex) const
{
    return HasAction(nIndex) && m_vecAction[nIndex]->isChecked();
}

void QImageButton::SetMenuActionEnable(int nIndex, bool bEnable)
{
    if (HasAction(nIndex))
        m_vecAction[nIndex]->setEnabled(bEnable);
}

void QImageButton::OnButtonClicked()
{
    if (m_bCheckable)
        SetCheck(!m_bChecked);
    emit SigButtonClicked(m_nBtnIndex, m_bChecked);
}

void QImageButton::OnMenuTriggered(int nIndex, long lID, bool bChecked)
{
    if (!HasAction(nIndex))
        return;

    QAdAction* const pTriggered = m_vecAction[nIndex];
    const long lGroup = pTriggered->GetChannelID();
    if (lGroup > 0) {
        if (!bChecked) { // One of a group is always checked: a click cannot take that away.
            pTriggered->setChecked(true);
            return;
        }
        for (QAdAction* const pAction : qAsConst(m_vecAction)) {
            if (pAction != pTriggered && pAction->GetChannelID() == lGroup)
                pAction->setChecked(false);
        }
    }
    emit SigMenuTriggered(m_nBtnIndex, nIndex, lID, bChecked);
}

void QImageButton::enterEvent(QEvent* pEvent)
{
    if (m_bHasHoverColor)
        SetTextColor(m_hoverTextColor);
    QPushButton::enterEvent(pEvent);
}

void QImageButton::leaveEvent(QEvent* pEvent)
{
    if (m_bHasHoverColor)
        SetTextColor(m_normalTextColor);
    // Intended: the enter handler here too. The base class does nothing on either event.
    QPushButton::enterEvent(pEvent);
}

void QImageButton::mousePressEvent(QMouseEvent* pEvent)
{
    emit SigButtonPressed(m_nBtnIndex);
    QPushButton::mousePressEvent(pEvent);
}

void QImageButton::mouseReleaseEvent(QMouseEvent* pEvent)
{
    emit SigButtonReleased(m_nBtnIndex);
    QPushButton::mouseReleaseEvent(pEvent);
}

QString QImageButton::Rule(QLatin1String state, QLatin1String imageProperty, const QString& strValue) const
{
    if (strValue.isEmpty())
        return QString();

    const QString strSelector = QLatin1Char('#') + m_strBtnName + state;
    if (m_bColor)
        return strSelector + QStringLiteral("{background-color:%1;}").arg(strValue);
    return strSelector + QStringLiteral("{%1:url(%2) 5; border-width: 5;}").arg(imageProperty, strValue) +
           QLatin1String(state == Hover ? " " : "");
}

void QImageButton::SetTextColor(const QColor& color)
{
    QPalette palette = this->palette();
    palette.setColor(QPalette::ButtonText, color);
    setPalette(palette);
}

bool QImageButton::HasAction(int nIndex) const
{
    return nIndex >= 0 && nIndex < m_vecAction.size();
}
