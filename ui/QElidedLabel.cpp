// SPDX-License-Identifier: Apache-2.0
#include "ui/QElidedLabel.h"

#include "ui/ShownText.h"
#include "widgets/StyleRules.h"

#include <QHelpEvent>
#include <QPainter>
#include <QStyle>

QElidedLabel::QElidedLabel(QWidget* pParent) : QStaticLabel(pParent)
{
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    setStyleSheet(QStringLiteral("QLabel{%1}").arg(TextLook(DarkTextColor)) + ToolTipSheet());
}

QSize QElidedLabel::sizeHint() const
{
    return {0, fontMetrics().height()};
}

QSize QElidedLabel::minimumSizeHint() const
{
    return sizeHint();
}

bool QElidedLabel::event(QEvent* pEvent)
{
    if (pEvent->type() != QEvent::ToolTip)
        return QStaticLabel::event(pEvent);
    const bool bCut = fontMetrics().horizontalAdvance(InOneLine(text())) > contentsRect().width();
    ShowToolTip(*static_cast<QHelpEvent*>(pEvent), *this, bCut ? text() : QString());
    return true;
}

void QElidedLabel::paintEvent(QPaintEvent* /*pEvent*/)
{
    QPainter painter(this);
    const QRect area = contentsRect();
    style()->drawItemText(
        &painter, area, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, palette(), isEnabled(),
        fontMetrics().elidedText(InOneLine(text()), Qt::ElideRight, area.width()), foregroundRole());
}
