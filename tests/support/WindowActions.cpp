// SPDX-License-Identifier: Apache-2.0
#include "tests/support/WindowActions.h"

#include <QProcess>
#include <QTest>

namespace {

constexpr int WatchdogMilliseconds = 20000;

}

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

bool act(const QStringList& arguments)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedChannels);
    process.start(QStringLiteral("xdotool"), arguments);
    return eventually([&process] { return process.state() == QProcess::NotRunning; }) &&
           process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
}

bool movePointer(const QPoint& point)
{
    return act({QStringLiteral("mousemove"), QString::number(point.x()), QString::number(point.y())});
}
