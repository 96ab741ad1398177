// SPDX-License-Identifier: Apache-2.0
#include "tests/support/WindowActions.h"
#include "tests/ui/WindowFixture.h"

#include <QTest>
#include <QThread>

#include <atomic>

namespace {

class ConcurrentClicksTest : public WindowFixture
{
protected:
    ConcurrentClicksTest()
    {
        // Orders each refresh before the next one, which Qt does by means that the thread sanitizer does not
        // see.
        sdk.enumerateTls = [this] {
            if (!watched) {
                watched = true;
                QObject::connect(
                    QThread::currentThread(), &QThread::finished, QThread::currentThread(),
                    [this] { ends.fetch_add(1); }, Qt::DirectConnection);
            }
            return RZ_TL_GIGE;
        };
    }

    void SetUp() override {}

    bool allHaveEnded()
    {
        return eventually([this] { return ends.load() == enumerationCount() && jobsAreOver(); });
    }

    bool watched = false;
    std::atomic<int> ends{0};
};

} // namespace

TEST_F(ConcurrentClicksTest, RowsCanBeClickedAllThroughManyRefreshes)
{
#ifdef __SANITIZE_THREAD__
    constexpr int Refreshes = 1000;
#else
    constexpr int Refreshes = 200;
#endif
    for (int i = 0; i < 8; ++i)
        addCamera({.mac = QString::asprintf("00:00:00:00:00:%02d", i).toStdString(),
                   .userName = "Camera " + std::to_string(i),
                   .ipConfig = static_cast<uint32_t>(i % 3)});
    open();
    ASSERT_TRUE(allHaveEnded());
    sdk.enumDevices = [all = sdk.listed, number = 0](RZ_CC_DEVICE_INFO_LIST& list) mutable {
        ++number;
        list.nDeviceCount = 4 + static_cast<uint32_t>(number % 5);
        std::copy_n(all.begin(), list.nDeviceCount, list.apDeviceInfo);
        return RZ_OK;
    };
    for (int i = 0; i < Refreshes; ++i) {
        QMetaObject::invokeMethod(window, "OnBtnRefresh");
        const int row = i % table()->rowCount();
        clickRow(row);
        ASSERT_EQ(table()->currentRow(), row);
        const QString name = cell(row, 1);
        ASSERT_TRUE(panelTitle() == name + "(Serial)" || panelTitle() == "()") << "of a camera that is gone";
        ASSERT_TRUE(allHaveEnded());
        ASSERT_EQ(panelTitle(), cell(table()->currentRow(), 1) + "(Serial)");
    }
}
