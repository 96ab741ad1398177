// SPDX-License-Identifier: Apache-2.0
#include "ui/QTextView.h"

#include "widgets/QStaticLabel.h"
#include "widgets/StyleRules.h"

#include <QScrollBar>

QTextView::QTextView(int nGreatestHeight, QWidget* pParent)
    : QScrollAreaEx(pParent),
      m_pLabel(new QStaticLabel),
      m_nGreatestHeight(nGreatestHeight)
{
    setFrameShape(NoFrame);
    setWidgetResizable(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_pLabel->setWordWrap(true);
    m_pLabel->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    m_pLabel->setTextInteractionFlags(Qt::TextSelectableByMouse);
    setFocusPolicy(Qt::NoFocus);
    setWidget(m_pLabel);
    hide();
}

void QTextView::SetText(const QString& strText, const char* color)
{
    m_pLabel->setStyleSheet(QStringLiteral("QLabel{%1background-color:white;}").arg(TextLook(color)));
    m_pLabel->setText(strText);
    verticalScrollBar()->setValue(0);
    setVisible(!strText.isEmpty());
    FitHeight();
}

QString QTextView::Text() const
{
    return m_pLabel->text();
}

void QTextView::resizeEvent(QResizeEvent* pEvent)
{
    QScrollAreaEx::resizeEvent(pEvent);
    FitHeight();
}

void QTextView::FitHeight()
{
    const int nWanted = m_pLabel->heightForWidth(viewport()->width());
    setFixedHeight(qBound(1, nWanted, m_nGreatestHeight));
}
