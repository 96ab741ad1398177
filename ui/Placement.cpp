// SPDX-License-Identifier: Apache-2.0
#include "ui/Placement.h"

#include <QApplication>
#include <QDesktopWidget>
#include <QLayout>

void MoveToDesktopCentre(QWidget& window)
{
    // The size of a window that is not shown yet does not follow its contents by itself.
    window.ensurePolished();
    if (window.layout())
        window.layout()->activate();

    const QWidget& desktop = *QApplication::desktop();
    window.move((desktop.width() - window.width()) / 2, (desktop.height() - window.height()) / 2);
}
