// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QStyle>

class QAbstractButton;
class QPainter;
class QRect;
class QStyleOptionButton;
class QWidget;

// The one sign, in all windows, of what the keyboard acts on.

/// A dark line just inside of the rectangle and a light one inside of that: one of them is seen on any
/// ground.
void DrawFocusRing(QPainter& painter, const QRect& rect);

/// Round the widget, while it has the focus. For the end of its paintEvent().
void DrawFocusRing(QWidget& widget);

/// Draws the button, with the ring for the style's own sign of the focus. For its paintEvent(); the option is
/// the one that the button has filled.
void DrawButton(QAbstractButton& button, QStyle::ControlElement element, QStyleOptionButton& option);
