// SPDX-License-Identifier: Apache-2.0
#include "tests/support/WindowActions.h"

#include <QCoreApplication>
#include <QMouseEvent>
#include <QProcess>
#include <QTest>
#include <QWidget>

namespace {

constexpr int WatchdogMilliseconds = 20000;

bool xdotool(const QStringList& arguments)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedChannels);
    process.start(QStringLiteral("xdotool"), arguments);
    return QTest::qWaitFor([&process] { return process.state() == QProcess::NotRunning; },
                           WatchdogMilliseconds) &&
           process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
}

} // namespace

bool eventually(const std::function<bool()>& condition)
{
    return QTest::qWaitFor(condition, WatchdogMilliseconds);
}

bool showActive(QWidget& window)
{
    window.show();
    window.activateWindow();
    return QTest::qWaitForWindowActive(&window, WatchdogMilliseconds);
}

void hover(QWidget& widget, const QPoint& place)
{
    widget.setAttribute(Qt::WA_UnderMouse);
    QHoverEvent hover(QEvent::HoverMove, place, place);
    QCoreApplication::sendEvent(&widget, &hover);
    QMouseEvent move(QEvent::MouseMove, place, widget.mapToGlobal(place), Qt::NoButton, Qt::NoButton,
                     Qt::NoModifier);
    QCoreApplication::sendEvent(&widget, &move);
}

bool movePointer(const QPoint& point)
{
    return xdotool({QStringLiteral("mousemove"), QString::number(point.x()), QString::number(point.y())});
}

bool pressPointer(int button)
{
    return xdotool({QStringLiteral("mousedown"), QString::number(button)});
}

bool releasePointer(int button)
{
    return xdotool({QStringLiteral("mouseup"), QString::number(button)});
}

bool pressKey(const char* name)
{
    return xdotool({QStringLiteral("key"), QLatin1String(name)});
}
