// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QMouseEvent>
#include <QPoint>
#include <QWidget>

class QImageButton;

// What tests of the kit's windows look at, and how they reach what has no name.

/// The button that shows ":/Dorn/Resources/dialog/<picture>.png"; null without one.
QImageButton* buttonShowing(const QWidget& window, const QString& picture);

/// Where a widget lies in its window.
QRect placeOf(const QWidget& widget);

/// The names of a class's own slots, in the order of their declaration, each with its parameter types.
QStringList ownSlots(const QMetaObject& type);
QStringList ownSignals(const QMetaObject& type);

/// Hands a mouse event straight to the widget, at a place in it.
void sendMouse(QWidget& widget, QEvent::Type type, const QPoint& position);

/// Sees the mouse events that reach a widget.
class MouseLog : public QObject
{
public:
    explicit MouseLog(QWidget& widget);

    bool eventFilter(QObject* watched, QEvent* event) override;

    QPoint lastMove; ///< On the display.
    int presses = 0; ///< Double clicks included.
    int releases = 0;
};
