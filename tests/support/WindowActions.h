// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QPoint>

#include <functional>

class QWidget;

// What a person does to a window, and waiting for what comes of it.

/// Runs the event loop until the condition holds; false when it does not in a generous time.
bool eventually(const std::function<bool()>& condition);

/// Shows the window and waits until it is there and active; false when that does not happen.
bool showActive(QWidget& window);

/// Looks, to the widget alone, like the pointer's arrival at a place in it. Nothing looks like its leaving.
void hover(QWidget& widget, const QPoint& place);

// The pointer moves and keys are pressed on the display itself, so that the window system and the window
// manager have their part in it. False when that is impossible. What comes of it comes later, with the event
// loop.

bool movePointer(const QPoint& point);
bool pressPointer(int button = 1);
bool releasePointer(int button = 1);
/// A key by its name on the display ("F5"), for the window that has the keyboard there.
bool pressKey(const char* name);
