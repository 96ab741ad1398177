// SPDX-License-Identifier: Apache-2.0
#include "tests/support/WindowActions.h"
#include "tests/ui/WindowFixture.h"

#include <QHeaderView>
#include <QScrollBar>
#include <QSemaphore>
#include <QTest>
#include <QThread>

#include <atomic>
#include <gmock/gmock.h>

using testing::Each;

namespace {

class DeviceListTest : public WindowFixture
{
protected:
    static QImage picture(const QIcon& icon) { return icon.pixmap(16, 16).toImage(); }
    QImage statusPicture(int row) const { return picture(table()->item(row, 4)->icon()); }

    std::vector<QString> row(int index) const
    {
        std::vector<QString> cells;
        for (int column = 0; column < table()->columnCount(); ++column)
            cells.push_back(cell(index, column));
        return cells;
    }

    /// Cameras whose MACs sort as they are added.
    void addCameras(int count)
    {
        for (int i = 0; i < count; ++i)
            addCamera({.mac = QString::asprintf("00:00:00:00:00:%02d", i).toStdString(),
                       .ip = "192.0.2." + std::to_string(100 + i),
                       .userName = "Camera " + std::to_string(i)});
    }

    // What refreshes are given, who may outlive the body of a test.
    std::atomic<QThread*> worker{nullptr};
    QSemaphore go;

    QString selectedName() const { return cell(table()->currentRow(), 1); }
};

} // namespace

TEST_F(DeviceListTest, WithoutACameraEverythingIsEmptyAndOutOfUseButRefresh)
{
    open();
    EXPECT_EQ(table()->rowCount(), 0);
    EXPECT_TRUE(button("Static IP")->isChecked());
    EXPECT_EQ(panelTitle(), "");
    EXPECT_EQ(panelTexts().size(), 16);
    EXPECT_THAT(panelTexts(), Each(QString()));
    for (const char* text : {"Static IP", "DHCP", "LLA", "Save", "Modify IP"})
        EXPECT_FALSE(button(text)->isEnabled()) << text;
    for (const char* caption : {"IP Address:", "Subnet Mask:", "Default Gateway:", "Device User ID:"})
        EXPECT_FALSE(isEnabled(caption)) << caption;
    EXPECT_TRUE(button("Refresh")->isEnabled());
}

TEST_F(DeviceListTest, TheTableIsForSelectingRowsAndHasEightColumnsOfFixedTitlesAndWidths)
{
    open();
    const std::vector<std::pair<QString, int>> columns = {
        {"Model Name", 110}, {"Device User ID", 100},   {"Serial Number", 100}, {"MAC Address", 120},
        {"Status", 120},     {"IP Configuration", 120}, {"IP Address", 100},    {"Subnet Mask", 80}};
    ASSERT_EQ(table()->columnCount(), 8);
    for (int i = 0; i < 8; ++i) {
        EXPECT_EQ(table()->horizontalHeaderItem(i)->text(), columns[static_cast<size_t>(i)].first);
        if (i < 7) {
            EXPECT_EQ(table()->columnWidth(i), columns[static_cast<size_t>(i)].second);
        }
    }
    EXPECT_GE(table()->columnWidth(7), 80);
    EXPECT_TRUE(table()->horizontalHeader()->stretchLastSection());
    EXPECT_EQ(table()->horizontalHeader()->height(), 34);
    EXPECT_FALSE(table()->horizontalHeader()->highlightSections());
    EXPECT_EQ(table()->horizontalHeader()->defaultAlignment(), Qt::AlignLeft | Qt::AlignVCenter);
    EXPECT_FALSE(table()->verticalHeader()->isVisible());
    EXPECT_EQ(table()->editTriggers(), QAbstractItemView::NoEditTriggers);
    EXPECT_EQ(table()->selectionBehavior(), QAbstractItemView::SelectRows);
    EXPECT_EQ(table()->selectionMode(), QAbstractItemView::SingleSelection);
    EXPECT_EQ(table()->contextMenuPolicy(), Qt::CustomContextMenu);
    EXPECT_FALSE(table()->showGrid());
    EXPECT_TRUE(table()->alternatingRowColors());
    EXPECT_EQ(table()->frameShape(), QFrame::NoFrame);
}

TEST_F(DeviceListTest, EachCameraIsARowWithAPictureOfItsStatus)
{
    addCamera({.mac = "00:00:00:00:00:01", .ip = "192.0.2.20", .ipConfig = StaticIp});
    addHeldCamera({.mac = "00:00:00:00:00:02", .ip = "192.0.2.21", .ipConfig = Dhcp});
    addCamera({.mac = "00:00:00:00:00:03", .ip = "10.0.0.9", .mask = "255.0.0.0", .userName = ""});
    open();
    ASSERT_EQ(table()->rowCount(), 3);
    EXPECT_EQ(row(0), (std::vector<QString>{"Model", "Name", "Serial", "00:00:00:00:00:01", "Free",
                                            "Static IP", "192.0.2.20", "255.255.255.0"}));
    EXPECT_EQ(row(1), (std::vector<QString>{"Model", "Name", "Serial", "00:00:00:00:00:02", "In Use", "DHCP",
                                            "192.0.2.21", "255.255.255.0"}));
    EXPECT_EQ(row(2), (std::vector<QString>{"Model", "", "Serial", "00:00:00:00:00:03", "Unreachable", "LLA",
                                            "10.0.0.9", "255.0.0.0"}));
    EXPECT_EQ(statusPicture(0), picture(QIcon(":/Dorn/Resources/use.png")));
    EXPECT_EQ(statusPicture(1), picture(QIcon(":/Dorn/Resources/notuse.png")));
    EXPECT_EQ(statusPicture(2), picture(QIcon(":/Dorn/Resources/notreach.png")));
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(table()->rowHeight(i), 37);
        for (int column = 0; column < 8; ++column)
            EXPECT_FALSE(table()->item(i, column)->flags() & Qt::ItemIsEditable) << column;
    }
}

TEST_F(DeviceListTest, ThePanelShowsEverythingOfTheSelectedCamera)
{
    addCamera({.gateway = "192.0.2.254", .ipConfig = StaticIp});
    open();
    EXPECT_EQ(panelTitle(), "Name(Serial)");
    EXPECT_EQ(panelTexts(),
              (QStringList{"Model Name:", "Model", "Device User ID:", "Name", "Serial Number:", "Serial",
                           "MAC Address:", "00:1A:2B:3C:4D:5E", "IP Configurator:", "Static IP",
                           "IP Address:", "192.0.2.20", "Subnet Mask:", "255.255.255.0",
                           "Default Gateway:", "192.0.2.254"}));
    EXPECT_EQ(field("Device User ID:")->text(), "Name");
}

TEST_F(DeviceListTest, ACameraWithoutANameIsCalledByItsSerialNumberInParentheses)
{
    addCamera({.serial = "4711", .userName = ""});
    open();
    EXPECT_EQ(panelTitle(), "(4711)");
}

TEST_F(DeviceListTest, ClickingARowShowsItsCamera)
{
    addCameras(3);
    open();
    EXPECT_EQ(selectedName(), "Camera 0");
    clickRow(2);
    EXPECT_EQ(panelTitle(), "Camera 2(Serial)");
    QTest::keyClick(table(), Qt::Key_Up);
    EXPECT_EQ(panelTitle(), "Camera 1(Serial)");
}

TEST_F(DeviceListTest, ARefreshKeepsTheCameraSelectedWhereverItsRowIsNow)
{
    addCameras(5);
    open();
    clickRow(3);
    refresh();
    EXPECT_EQ(table()->currentRow(), 3);
    EXPECT_EQ(panelTitle(), "Camera 3(Serial)");

    sdk.listed.erase(sdk.listed.begin());
    refresh();
    EXPECT_EQ(table()->rowCount(), 4);
    EXPECT_EQ(table()->currentRow(), 2);
    EXPECT_EQ(selectedName(), "Camera 3");
    EXPECT_EQ(table()->selectedItems().size(), 8);
    EXPECT_EQ(panelTitle(), "Camera 3(Serial)");
}

TEST_F(DeviceListTest, WhenTheSelectedCameraVanishesTheFirstOneIsSelected)
{
    addCameras(3);
    open();
    clickRow(2);
    sdk.listed.pop_back();
    refresh();
    EXPECT_EQ(table()->currentRow(), 0);
    EXPECT_EQ(panelTitle(), "Camera 0(Serial)");
}

TEST_F(DeviceListTest, WhenAllCamerasVanishThePanelIsEmptyAndComesBackWithThem)
{
    addCameras(2);
    open();
    const auto listed = std::exchange(sdk.listed, {});
    refresh();
    EXPECT_EQ(table()->rowCount(), 0);
    EXPECT_TRUE(button("Static IP")->isChecked());
    EXPECT_EQ(field("Subnet Mask:")->text(), "");
    EXPECT_EQ(field("Device User ID:")->text(), "");
    EXPECT_EQ(panelTitle(), "");
    EXPECT_THAT(panelTexts(), Each(QString()));
    EXPECT_FALSE(button("Modify IP")->isEnabled());
    sdk.listed = listed;
    refresh();
    EXPECT_EQ(panelTitle(), "Camera 0(Serial)");
    EXPECT_TRUE(button("Modify IP")->isEnabled());
}

TEST_F(DeviceListTest, AFailedRefreshKeepsTheList)
{
    addCameras(2);
    open();
    sdk.enumDevices = [](RZ_CC_DEVICE_INFO_LIST&) { return RZ_ERROR_NETWORK; };
    refresh();
    EXPECT_EQ(table()->rowCount(), 2);
}

TEST_F(DeviceListTest, ARefreshDoesNotScrollTheTable)
{
    addCameras(60);
    open();
    window->resize(window->minimumSizeHint());
    auto* const horizontal = table()->horizontalScrollBar();
    ASSERT_TRUE(eventually([&] { return horizontal->maximum() > 1; }));
    table()->verticalScrollBar()->setValue(20);
    horizontal->setValue(horizontal->maximum());
    refresh();
    QCoreApplication::processEvents();
    EXPECT_EQ(table()->verticalScrollBar()->value(), 20);
    EXPECT_EQ(horizontal->value(), horizontal->maximum());
}

TEST_F(DeviceListTest, WhileTheListIsAlreadyNewerThanTheTableARowMeansTheCameraThatStandsThere)
{
    addCameras(3);
    open();
    sdk.listed.erase(sdk.listed.begin());
    sdk.isDeviceAccessible = [this](const RZ_CC_DEVICE_INFO*) {
        worker = QThread::currentThread();
        return true;
    };
    click("Refresh");
    while (!worker)
        QThread::yieldCurrentThread();
    worker.load()->wait(); // The new list is there; the window has not been told.
    clickRow(1);
    EXPECT_EQ(panelTitle(), "Camera 1(Serial)");
    ASSERT_TRUE(eventually([this] { return jobsAreOver(); }));
    EXPECT_EQ(table()->rowCount(), 2);
    EXPECT_EQ(selectedName(), "Camera 1");
}

TEST_F(DeviceListTest, ARefreshGivesTheKeyboardToTheTable)
{
    addCameras(2);
    open();
    field("Device User ID:")->setFocus();
    click("Refresh");
    EXPECT_TRUE(table()->hasFocus());
    ASSERT_TRUE(eventually([this] { return jobsAreOver(); }));
    // The button that was clicked gives it away by going out of use; by the key it never has it.
    field("Device User ID:")->setFocus();
    refresh();
    EXPECT_TRUE(table()->hasFocus());
}

TEST_F(DeviceListTest, ARefreshThatIsAskedForDuringARefreshFollowsIt)
{
    open();
    sdk.enumDevices = [this](RZ_CC_DEVICE_INFO_LIST& list) {
        go.acquire();
        list = {};
        return RZ_OK;
    };
    click("Refresh");
    EXPECT_FALSE(button("Refresh")->isEnabled());
    ASSERT_TRUE(eventually([&] { return enumerationCount() == 2; }));
    ASSERT_TRUE(QMetaObject::invokeMethod(window, "OnBtnRefresh")); // as a save does at its end
    go.release(100);
    EXPECT_TRUE(eventually([&] { return enumerationCount() == 3; }));
}
