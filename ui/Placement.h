// SPDX-License-Identifier: Apache-2.0
#pragma once

class QWidget;

/// Moves a window to the centre of the screen that its owner is on.
void MoveToScreenCentre(QWidget& window, const QWidget& owner);
