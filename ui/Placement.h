// SPDX-License-Identifier: Apache-2.0
#pragma once

class QWidget;

/// Moves a window to the centre of the desktop, which is all screens together.
void MoveToDesktopCentre(QWidget& window);
