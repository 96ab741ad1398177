// SPDX-License-Identifier: Apache-2.0
#include "tests/save/SavedCamera.h"
#include "tests/save/WallClock.h"

#include <QDateTime>
#include <QElapsedTimer>

#include <cstdlib>

namespace {

/// The spin between a save's last write and its end, while the clock on the wall is set.
class SettleTest : public SavedCamera
{
protected:
    ~SettleTest() override { wall_clock::putRight(); }

    /// How long it takes by the clock that nobody sets, in nanoseconds.
    qint64 settleWhileTheWallClockIsSet(std::chrono::seconds ahead)
    {
        const QDevice cur = found();
        QDevice modified = cur;
        modified.m_strUserDefinedName = "new";
        QElapsedTimer timer;
        // The last thing that a save does to its camera. The spin's first look at the clock comes next.
        nodes.addRegister("DeviceUserID", 4, [&] {
            timer.start();
            wall_clock::setAfterNextLook(ahead);
        });
        qint64 duration = 0;
        const auto connection = QObject::connect(
            thread.get(), &QSaveThread::SigRefresh, thread.get(), [&] { duration = timer.nsecsElapsed(); },
            Qt::DirectConnection);
        save(cur, modified);
        QObject::disconnect(connection);

        // Qt has seen it, too.
        const qint64 shown = QDateTime::currentSecsSinceEpoch();
        wall_clock::putRight();
        EXPECT_LT(std::abs(shown - QDateTime::currentSecsSinceEpoch() - ahead.count()), 1800);
        return duration;
    }
};

TEST_F(SettleTest, LastsAsLongWhenTheClockIsSetBackAndNoLongerThanTheClockSaysElse)
{
    using std::chrono::hours;
    const qint64 usual = settleWhileTheWallClockIsSet(hours(0));
    const qint64 setBack = settleWhileTheWallClockIsSet(-hours(1));
    const qint64 setAhead = settleWhileTheWallClockIsSet(hours(1));
    EXPECT_GT(setBack * 2, usual);
    EXPECT_LT(setBack, usual * 2);
    EXPECT_GT(setAhead, 0);
    EXPECT_LT(setAhead * 2, usual);
}

} // namespace
