// SPDX-License-Identifier: Apache-2.0
#include "ui/QValueLabel.h"

#include "ui/ShownText.h"

#include <QHelpEvent>
#include <QPainter>
#include <QStyle>

QValueLabel::QValueLabel(QWidget* pParent) : QStaticLabel(pParent)
{
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
}

QSize QValueLabel::sizeHint() const
{
    return {0, fontMetrics().height()};
}

QSize QValueLabel::minimumSizeHint() const
{
    return sizeHint();
}

bool QValueLabel::event(QEvent* pEvent)
{
    if (pEvent->type() != QEvent::ToolTip)
        return QStaticLabel::event(pEvent);
    const bool bCut = fontMetrics().horizontalAdvance(InOneLine(text())) > contentsRect().width();
    ShowToolTipOfCutText(*static_cast<QHelpEvent*>(pEvent), *this, text(), bCut);
    return true;
}

void QValueLabel::paintEvent(QPaintEvent* /*pEvent*/)
{
    QPainter painter(this);
    const QRect area = contentsRect();
    style()->drawItemText(
        &painter, area, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, palette(), isEnabled(),
        fontMetrics().elidedText(InOneLine(text()), Qt::ElideRight, area.width()), foregroundRole());
}
