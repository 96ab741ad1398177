// SPDX-License-Identifier: Apache-2.0
#include "ui/QValueLabel.h"

#include "ui/InOneLine.h"

#include <QHelpEvent>
#include <QPainter>
#include <QStyle>
#include <QTextDocument>
#include <QToolTip>

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
    if (fontMetrics().horizontalAdvance(text()) > contentsRect().width())
        QToolTip::showText(static_cast<QHelpEvent*>(pEvent)->globalPos(),
                           Qt::convertFromPlainText(text(), Qt::WhiteSpaceNormal), this);
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
