// SPDX-License-Identifier: Apache-2.0
// The window with the real SDK on simulated cameras, used as a person would.
#include "tests/network/Site.h"
#include "tests/simulator/Shown.h"
#include "tests/support/WindowActions.h"
#include "ui/MainWidget.h"

#include <QAbstractButton>
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QTableWidget>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include <optional>

using simulator_tests::runningCamera;

namespace {

const std::string First = "02:00:00:00:01:01";
const std::string Cameras =
    R"({"mac": "02:00:00:00:01:01", "address": "192.168.1.20", "ipConfiguration": "persistent", "rebootTime": 50},
       {"mac": "02:00:00:00:01:02", "address": "192.168.1.21", "ipConfiguration": "persistent"},
       {"mac": "02:00:00:00:01:03", "address": "10.0.0.7", "answer": "broadcast"})";

class WindowOnTheNetwork : public testing::Test
{
protected:
    WindowOnTheNetwork()
    {
        farm = &site.addCameras(site.addAdapter("eth0", "192.168.1.5/24"), Cameras);
        QObject::connect(&watch, &QTimer::timeout, [this] { answerMessage(); });
        watch.start(20);
    }
    ~WindowOnTheNetwork() override
    {
        if (!window)
            return;
        EXPECT_TRUE(eventually([this] { return jobsAreOver(); }));
        watch.stop();
        window->hide();
    }

    /// Opens the window on the site's host, and waits for the first list.
    void open()
    {
        visit.emplace(site.host());
        window = new MainWidget; // Like the program's, it is never destroyed: jobs may still need it.
        ASSERT_TRUE(showActive(*window));
        ASSERT_TRUE(eventually([this] { return jobsAreOver(); }));
    }

    QAbstractButton* button(const QString& text) const
    {
        for (auto* each : window->findChildren<QAbstractButton*>())
            if (each->text() == text)
                return each;
        throw std::runtime_error("no button " + text.toStdString());
    }
    QLineEdit* field(const QString& caption) const
    {
        for (auto* each : window->findChildren<QLabel*>())
            if (each->text() == caption && each->buddy())
                return qobject_cast<QLineEdit*>(each->buddy());
        throw std::runtime_error("no field " + caption.toStdString());
    }
    QTableWidget* table() const { return window->findChild<QTableWidget*>(); }
    /// Presses F5 on the display's own keyboard and waits for the list that comes of it.
    bool refresh() const
    {
        return eventually([this] { return window->isActiveWindow(); }) && pressKey("F5") &&
               eventually([this] { return !jobsAreOver(); }) && eventually([this] { return jobsAreOver(); });
    }
    /// Whether the cell has this text in a list made from now on: a camera may need a while to be back.
    bool shows(int row, int column, const QString& text) const
    {
        for (int refreshes = 0; refreshes < 10 && refresh(); ++refreshes) {
            const auto* item = table()->item(row, column);
            if (item && item->text() == text)
                return true;
        }
        return false;
    }
    bool jobsAreOver() const { return button("Refresh")->isEnabled(); }

    void clickRow(int row) const
    {
        QTest::mouseClick(table()->viewport(), Qt::LeftButton, {},
                          table()->visualItemRect(table()->item(row, 0)).center());
    }
    void type(const QString& caption, const QString& text) const
    {
        QLineEdit* const edit = field(caption);
        edit->selectAll();
        QTest::keyClicks(edit, text);
    }
    /// Saves the first camera with this address; returns when the window is at rest again.
    void save(const QString& address)
    {
        clickRow(0);
        type("IP Address:", address);
        QTest::mouseClick(button("Save"), Qt::LeftButton);
        ASSERT_TRUE(eventually([this] { return !jobsAreOver(); }));
        ASSERT_TRUE(eventually([this] { return jobsAreOver(); }));
    }

    Site site;
    lab::Farm* farm = nullptr;
    MainWidget* window = nullptr;
    QStringList messages; ///< That came up and were confirmed.
    std::optional<lab::Visit> visit;

private:
    void answerMessage()
    {
        QWidget* const box = QApplication::activeModalWidget();
        // One that is closed before the display has made it active leaves Qt without an active window.
        if (!box || !box->isActiveWindow())
            return;
        for (const auto* label : box->findChildren<QLabel*>())
            if (!label->text().trimmed().isEmpty())
                messages << label->text().trimmed();
        for (auto* each : box->findChildren<QAbstractButton*>())
            if (each->text() == "OK") {
                QTest::mouseClick(each, Qt::LeftButton);
                return;
            }
    }

    QTimer watch;
};

} // namespace

TEST_F(WindowOnTheNetwork, ListsEveryCameraBehindAFirewallAndAStrictReversePathFilter)
{
    site.raiseFirewall();
    site.setReversePathFilter(1);
    open();
    ASSERT_EQ(table()->rowCount(), 3);
    EXPECT_TRUE(shows(0, 4, "Free"));
    EXPECT_TRUE(shows(1, 4, "Free"));
    EXPECT_TRUE(shows(2, 4, "Unreachable"));
}

TEST_F(WindowOnTheNetwork, SavesAnAddressThatLasts)
{
    open();
    save("192.168.1.60");
    EXPECT_EQ(messages, QStringList());
    EXPECT_TRUE(shows(0, 6, "192.168.1.60"));
    farm->control("reset " + First);
    EXPECT_EQ(runningCamera(*farm, First).at("address"), "192.168.1.60");
}

TEST_F(WindowOnTheNetwork, TellsOfACameraThatAnotherApplicationTookMeanwhile)
{
    open();
    farm->control("hold " + First);
    save("192.168.1.60");
    EXPECT_TRUE(messages.contains("Failed to modify the IP address.The camera may be in use at present."))
        << messages.join("; ").toStdString();
    EXPECT_EQ(runningCamera(*farm, First).at("address"), "192.168.1.20");
    EXPECT_TRUE(shows(0, 4, "In Use"));
}

TEST_F(WindowOnTheNetwork, RefusesAnAddressThatIsInUse)
{
    open();
    save("192.168.1.21");
    EXPECT_TRUE(messages.contains("The IP address has been used by other devices."));
    EXPECT_TRUE(shows(0, 6, "192.168.1.20"));
}

TEST_F(WindowOnTheNetwork, OutlivesACameraThatIsPulledInMidSaveAndSavesItWhenItIsBack)
{
    open();
    farm->control("fault " + First + " READMEM vanish after 3");
    save("192.168.1.60");
    EXPECT_TRUE(shows(0, 3, "02:00:00:00:01:02")) << "the other camera has moved up";
    farm->control("heal " + First);
    farm->control("plug " + First);
    EXPECT_TRUE(shows(0, 3, "02:00:00:00:01:01"));
    save("192.168.1.61");
    EXPECT_TRUE(shows(0, 6, "192.168.1.61"));
}
