// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QPoint>
#include <QStringList>

#include <functional>

class QWidget;

// What a person does to a window, and waiting for what comes of it.

/// Runs the event loop until the condition holds; false when it does not in a generous time.
bool eventually(const std::function<bool()>& condition);

/// Shows the window and waits until it is there and active; false when that does not happen.
bool showActive(QWidget& window);

/// Moves the pointer, presses and releases on the display itself, as xdotool's arguments say, so that the
/// window system and the window manager have their part in it. False when that is impossible.
bool act(const QStringList& arguments);

/// The pointer goes to a point of the display.
bool movePointer(const QPoint& point);
