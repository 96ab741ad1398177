// SPDX-License-Identifier: Apache-2.0
#include "ui/Placement.h"

#include <QLayout>
#include <QScreen>
#include <QWidget>

void MoveToScreenCentre(QWidget& window, const QWidget& owner)
{
    // A window that is not shown yet has the size of what it held before.
    window.ensurePolished();
    if (window.layout())
        window.layout()->activate();

    const QRect screen = owner.screen()->geometry();
    window.move(screen.x() + (screen.width() - window.width()) / 2,
                screen.y() + (screen.height() - window.height()) / 2);
}
