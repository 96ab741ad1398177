// SPDX-License-Identifier: Apache-2.0
#include "widgets/FocusRing.h"

#include <QAbstractButton>
#include <QPainter>
#include <QStyleOptionButton>
#include <QStylePainter>

void DrawFocusRing(QPainter& painter, const QRect& rect)
{
    const auto drawLine = [&painter](const QRect& outer, const QColor& color) {
        painter.fillRect(outer.x(), outer.y(), outer.width(), 1, color);
        painter.fillRect(outer.x(), outer.bottom(), outer.width(), 1, color);
        painter.fillRect(outer.x(), outer.y(), 1, outer.height(), color);
        painter.fillRect(outer.right(), outer.y(), 1, outer.height(), color);
    };
    drawLine(rect, QColor(0x17, 0x4b, 0x8b));
    drawLine(rect.adjusted(1, 1, -1, -1), Qt::white);
}

void DrawFocusRing(QWidget& widget)
{
    if (!widget.hasFocus())
        return;
    QPainter painter(&widget);
    DrawFocusRing(painter, widget.rect());
}

void DrawButton(QAbstractButton& button, QStyle::ControlElement element, QStyleOptionButton& option)
{
    option.state &= ~QStyle::State_HasFocus;
    QStylePainter(&button).drawControl(element, option);
    DrawFocusRing(button);
}
