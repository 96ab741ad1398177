// SPDX-License-Identifier: Apache-2.0
#include "tests/support/WindowActions.h"
#include "tests/ui/Chinese.h"
#include "tests/ui/PlanFixture.h"
#include "ui/QTextView.h"

#include <QApplication>
#include <QHeaderView>
#include <QMenu>
#include <QScrollBar>
#include <QTest>
#include <QTimer>

#include <gmock/gmock.h>

using testing::HasSubstr;

namespace {

class PlanWindowTest : public PlanFixture
{
protected:
    /// Chooses so many entries below the first one in the next menu.
    void chooseInNextMenu(int below)
    {
        auto* const watch = new QTimer(shown());
        QObject::connect(watch, &QTimer::timeout, watch, [watch, below] {
            auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
            if (!menu)
                return;
            watch->deleteLater();
            watch->stop();
            for (int i = 0; i < below; ++i)
                QTest::keyClick(menu, Qt::Key_Down);
            QTest::keyClick(menu, Qt::Key_Return);
        });
        watch->start(5);
    }
};

} // namespace

TEST_F(PlanWindowTest, ItSaysAtFirstWhatItIsFor)
{
    open();
    openPlanWindow();
    EXPECT_TRUE(says("No file is open."));
    EXPECT_THAT(places()->accessibleDescription().toStdString(),
                HasSubstr("A site file says which camera belongs where"));
    EXPECT_TRUE(isUsable("Open..."));
    EXPECT_TRUE(isUsable("Save as plan..."));
    for (const char* text : {"Replace...", "Look again", "Apply"})
        EXPECT_FALSE(isUsable(text)) << text;
    EXPECT_FALSE(shown()->isModal());
}

TEST_F(PlanWindowTest, ItShowsWhatIsThereAndWhatIsToBeDone)
{
    addLeftAndRight();
    open();
    const QString file = openPlanOf(leftAndRight());
    ASSERT_EQ(places()->rowCount(), 2);
    EXPECT_EQ(cell(0, PlaceName), "left");
    EXPECT_EQ(cell(0, Camera), "RZ-1300GM 01A2093471");
    EXPECT_EQ(cell(0, Now), "static 192.0.2.21/24");
    EXPECT_EQ(cell(0, Wanted), "static 192.0.2.21/24");
    EXPECT_EQ(cell(0, ToDo), "");
    EXPECT_EQ(cell(0, State), "as planned");
    EXPECT_EQ(cell(1, PlaceName), "right");
    EXPECT_EQ(cell(1, Camera), "RZ-2000GC 01A2093502");
    EXPECT_EQ(cell(1, Now), "static 192.0.2.31/24");
    EXPECT_EQ(cell(1, Wanted), "static 192.0.2.22/24");
    EXPECT_EQ(cell(1, ToDo), "force 192.0.2.22, store the address");
    EXPECT_TRUE(says("To be changed: 1 of 2."));
    EXPECT_TRUE(says(file));
    EXPECT_TRUE(isUsable("Apply"));
    EXPECT_FALSE(isUsable("Replace..."));
    EXPECT_EQ(changeCount(), 0);

    selectPlace(1);
    EXPECT_TRUE(says("right: RZ-2000GC 01A2093502, MAC address 00:1A:2B:00:00:02, on eth1"));
    EXPECT_TRUE(says("Now: static 192.0.2.31/24; wanted: static 192.0.2.22/24"));
}

TEST_F(PlanWindowTest, WhatStandsInTheWayIsSaidAndKeepsItFromBeingApplied)
{
    addCamera({.mac = "00:1A:2B:00:00:01", .ip = "192.0.2.21", .userName = "left", .ipConfig = StaticIp});
    addHeldCamera({.mac = "00:1A:2B:00:00:02",
                   .ip = "192.0.2.31",
                   .serial = "01A2093502",
                   .userName = "right",
                   .ipConfig = StaticIp});
    open();
    openPlanOf(leftAndRight());
    EXPECT_TRUE(says("This plan cannot be applied: something stands in the way."));
    EXPECT_THAT(cell(1, State).toStdString(), HasSubstr("in use"));
    EXPECT_FALSE(isUsable("Apply"));
}

TEST_F(PlanWindowTest, ACameraOfNoPlaceIsAWarningAndNoMore)
{
    addLeftAndRight();
    addCamera({.mac = "00:1A:2B:00:00:09", .ip = "192.0.2.99", .ipConfig = StaticIp});
    open();
    openPlanOf(leftAndRight());
    EXPECT_TRUE(says("00:1A:2B:00:00:09"));
    EXPECT_TRUE(isUsable("Apply"));
}

TEST_F(PlanWindowTest, AMissingCameraKeepsItFromBeingApplied)
{
    addLeftAndRight();
    sdk.listed.erase(sdk.listed.begin());
    open();
    openPlanOf(leftAndRight());
    EXPECT_EQ(cell(0, Camera), "");
    EXPECT_EQ(cell(0, State), "missing");
    EXPECT_TRUE(says("Missing: 1 of 2."));
    EXPECT_TRUE(says("left: no camera"));
    EXPECT_FALSE(isUsable("Apply"));
    selectPlace(0);
    EXPECT_FALSE(isUsable("Replace...")) << "there is nobody to replace it";
}

TEST_F(PlanWindowTest, WhatIsThereIsSavedAsAPlanThatHasNothingToDo)
{
    addLeftAndRight();
    open();
    openPlanWindow();
    const QString file = folder.filePath("before.yaml");
    chooseNextFile(folder.filePath("before")); // The dialog adds what it ends with.
    chooseInNextMenu(1);                       // By serial number.
    pressAndWait("Save as plan...");
    EXPECT_TRUE(says("What is there now is written to " + file + "."));
    EXPECT_THAT(contentOf(file).toStdString(), HasSubstr("01A2093502"));
    EXPECT_THAT(contentOf(file).toStdString(), HasSubstr("192.0.2.31"));

    openFile(file);
    EXPECT_EQ(places()->rowCount(), 2);
    EXPECT_TRUE(says("All is as planned"));
    EXPECT_FALSE(isUsable("Apply"));
}

TEST_F(PlanWindowTest, ClosedWhileItSavesItDoesSoFirst)
{
    addLeftAndRight();
    open();
    openPlanWindow();
    survey = [this, whole = survey] {
        held.release();
        go.acquire();
        return whole();
    };
    const QString file = folder.filePath("before.yaml");
    chooseNextFile(file);
    chooseInNextMenu(0);
    press("Save as plan...");
    ASSERT_TRUE(eventually([this] { return held.tryAcquire(); }));
    shown()->close();
    ASSERT_NE(shown(), nullptr);
    go.release(1000);
    EXPECT_TRUE(eventually([] { return shown() == nullptr; }));
    EXPECT_THAT(contentOf(file).toStdString(), HasSubstr("192.0.2.31"));
}

TEST_F(PlanWindowTest, AWrongFileIsSaidWithLineAndColumn)
{
    addLeftAndRight();
    open();
    openPlanOf(leftAndRight().replace("address: 192.0.2.22", "adress: 192.0.2.22"));
    EXPECT_TRUE(says("This file is no plan."));
    EXPECT_TRUE(says("The file is wrong in line 9, column 5:"));
    EXPECT_TRUE(says("adress"));
    EXPECT_EQ(places()->rowCount(), 0);
    EXPECT_FALSE(isUsable("Apply"));
    {
        const Chinese language;
        EXPECT_TRUE(says(QString::fromUtf8("文件第 9 行第 5 列有误：")));
    }
    write(leftAndRight());
    pressAndWait("Look again");
    EXPECT_EQ(places()->rowCount(), 2);
}

TEST_F(PlanWindowTest, AFileThatIsGoneIsSaid)
{
    open();
    const QString file = openPlanOf(leftAndRight());
    ASSERT_TRUE(QFile::remove(file));
    pressAndWait("Look again");
    EXPECT_TRUE(says(file + " cannot be read: "));
    EXPECT_EQ(places()->rowCount(), 0);
}

TEST_F(PlanWindowTest, ItSaysWhyNothingCouldBeLookedAt)
{
    open();
    survey = []() -> inventory::Inventory { throw std::runtime_error("no sockets"); };
    openPlanOf(leftAndRight());
    EXPECT_TRUE(says("Nothing could be looked at: no sockets"));
    EXPECT_TRUE(isUsable("Look again"));
}

TEST_F(PlanWindowTest, OpenedAgainItLooksAgain)
{
    addLeftAndRight();
    open();
    openPlanOf(leftAndRight());
    shown()->close();
    sdk.listed[1]->stGigEInfo.nDeviceIp = SdkDouble::address("192.0.2.22");
    openPlanWindow();
    EXPECT_TRUE(says("All is as planned"));
}

TEST_F(PlanWindowTest, ALookThatWasClosedBeforeItsEndIsMadeAnew)
{
    addLeftAndRight();
    open();
    openPlanOf(leftAndRight());
    survey = [this, whole = survey] {
        held.release();
        go.acquire();
        return whole();
    };
    press("Look again");
    ASSERT_TRUE(eventually([this] { return held.tryAcquire(); }));
    shown()->close();
    EXPECT_EQ(shown(), nullptr);
    openPlanWindow();
    EXPECT_TRUE(says("Looking ... This takes a few seconds."));
    go.release(1);
    ASSERT_TRUE(eventually([this] { return held.tryAcquire(); })) << "it saw half of it at best";
    go.release(1000);
    EXPECT_TRUE(says("To be changed: 1 of 2."));
}

TEST_F(PlanWindowTest, ItIsWorkedByTheKeyboard)
{
    addLeftAndRight();
    open();
    openPlanWindow();
    chooseNextFile(write(leftAndRight()));
    QTest::keyClick(shown(), Qt::Key_O, Qt::ControlModifier);
    ASSERT_TRUE(eventually([] { return isIdle() && places()->rowCount() == 2; }));
    EXPECT_TRUE(places()->hasFocus());
    QTest::keyClick(places(), Qt::Key_Down);
    EXPECT_TRUE(says("right: RZ-2000GC"));
    QTest::keyClick(places(), Qt::Key_Return);
    QTest::keyClick(places(), Qt::Key_Escape);
    EXPECT_TRUE(isIdle());
    ASSERT_NE(shown(), nullptr);

    QStringList order;
    for (int i = 0; i < 5; ++i) {
        auto* const button = qobject_cast<QAbstractButton*>(shown()->focusWidget());
        order << (button ? button->text() : shown()->focusWidget()->accessibleName());
        QTest::keyClick(shown()->focusWidget(), Qt::Key_Tab);
    }
    EXPECT_EQ(order, (QStringList{"Places", "Look again", "Apply", "Open...", "Save as plan..."}));
    buttonOf("Apply")->setFocus();
    QTest::keyClick(buttonOf("Apply"), Qt::Key_Return);
    EXPECT_TRUE(says("It is done."));

    sdk.listed[1]->stGigEInfo.nDeviceIp = SdkDouble::address("192.0.2.31");
    QTest::keyClick(shown(), Qt::Key_F5);
    EXPECT_TRUE(says("To be changed: 1 of 2."));
}

TEST_F(PlanWindowTest, WhatACameraSaysStaysText)
{
    addCamera({.mac = "00:1A:2B:00:00:01",
               .ip = "192.0.2.21",
               .model = "<b>bold</b>",
               .serial = "a\nb\u202E",
               .userName = "left",
               .ipConfig = StaticIp});
    open();
    openPlanOf(leftAndRight());
    EXPECT_EQ(cell(0, Camera), "<b>bold</b> a\\u000Ab\\u202E");
    EXPECT_TRUE(says("<b>bold</b> a\\u000Ab\\u202E"));
    for (const auto* label : shown()->findChildren<QLabel*>()) {
        if (label->text().contains("<b>")) {
            EXPECT_EQ(label->textFormat(), Qt::PlainText);
        }
    }
}

TEST_F(PlanWindowTest, FiftyPlacesAreScrolledAndNothingIsCut)
{
    QString text = "version: 1\ndefaults: {mode: static, mask: 255.255.255.0, gateway: none}\ncameras:\n";
    for (int i = 0; i < 50; ++i) {
        const QString mac = QString::asprintf("00:1A:2B:00:01:%02X", i);
        addCamera({.mac = mac.toStdString(),
                   .ip = "192.0.2." + std::to_string(100 + i),
                   .userName = "line " + std::to_string(i),
                   .ipConfig = StaticIp});
        text += QString("  line %1: {match: {mac: \"%2\"}, address: 192.0.2.%3}\n")
                    .arg(i)
                    .arg(mac)
                    .arg(200 - i % 50);
    }
    for (int i = 0; i < 20; ++i)
        addCamera({.mac = QString::asprintf("00:1A:2B:00:02:%02X", i).toStdString(),
                   .ip = "192.0.2." + std::to_string(10 + i),
                   .ipConfig = StaticIp});
    open();
    openPlanOf(text);
    ASSERT_EQ(places()->rowCount(), 50);
    EXPECT_GT(places()->verticalScrollBar()->maximum(), 0);
    std::optional<Chinese> language;
    for (const bool chinese : {false, true}) {
        if (chinese)
            language.emplace();
        for (const QSize& size : {QSize(1080, 620), QSize(1, 1)}) {
            shown()->resize(size);
            QCoreApplication::processEvents();
            EXPECT_GE(places()->viewport()->height(), 3 * places()->rowHeight(0)) << chinese;
            EXPECT_LT(places()->geometry().bottom(), buttonOf("Apply")->y()) << chinese;
            for (const auto* view : shown()->findChildren<QTextView*>())
                EXPECT_FALSE(view->geometry().intersects(places()->geometry())) << view->Text().toStdString();
            for (const auto* button : shown()->findChildren<QAbstractButton*>()) {
                if (button->isVisible() && !button->text().isEmpty()) {
                    EXPECT_GE(button->width(), button->sizeHint().width()) << button->text().toStdString();
                }
            }
            const auto* header = places()->horizontalHeader();
            for (int i = 0; i < header->count(); ++i) {
                const QString title = places()->horizontalHeaderItem(i)->text();
                EXPECT_LE(header->fontMetrics().horizontalAdvance(title) + 4, header->sectionSize(i))
                    << title.toStdString();
            }
        }
    }
}

TEST_F(PlanWindowTest, ItSpeaksChineseAsSoonAsTheProgramDoes)
{
    addLeftAndRight();
    open();
    openPlanOf(leftAndRight());
    pressAndWait("Apply");
    const Chinese language;
    EXPECT_EQ(shown()->windowTitle().trimmed(), QString::fromUtf8("计划"));
    EXPECT_EQ(cell(1, State), QString::fromUtf8("已更改"));
    EXPECT_EQ(cell(1, Now), QString::fromUtf8("静态 192.0.2.22/24"));
    EXPECT_TRUE(says(QString::fromUtf8("已完成。")));
}
