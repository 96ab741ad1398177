// SPDX-License-Identifier: Apache-2.0
#include "tests/support/WindowActions.h"
#include "tests/ui/PlanFixture.h"
#include "widgets/QMessageBoxDlg.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QTest>
#include <QTimer>

#include <gmock/gmock.h>

using testing::HasSubstr;

namespace {

class PlanApplyingTest : public PlanFixture
{
protected:
    /// Answers the next question, and gives what it said.
    std::shared_ptr<QString> answerNextQuestion(Qt::Key key)
    {
        auto question = std::make_shared<QString>();
        onNextModal([question, key](QWidget& modal) {
            ASSERT_NE(qobject_cast<QMessageBoxDlg*>(&modal), nullptr);
            for (const auto* label : modal.findChildren<QLabel*>())
                if (label->wordWrap())
                    *question = label->text();
            if (key == Qt::Key_Tab) // To Cancel.
                QTest::keyClick(&modal, Qt::Key_Tab);
            QTest::keyClick(modal.focusWidget() ? modal.focusWidget() : &modal,
                            key == Qt::Key_Tab ? Qt::Key_Space : key);
        });
        return question;
    }

    /// A camera that belongs to no place, and a file whose place "left" has none.
    void takeLeftForANewOne()
    {
        sdk.listed.erase(sdk.listed.begin());
        addCamera({.mac = "00:1A:2B:00:00:09",
                   .ip = "192.0.2.99",
                   .model = "RZ-1300GM",
                   .serial = "01A2099999",
                   .userName = "",
                   .ipConfig = StaticIp});
    }
};

} // namespace

TEST_F(PlanApplyingTest, ApplyMakesItSoAndTheListShowsIt)
{
    addLeftAndRight();
    open();
    openPlanOf(leftAndRight());
    pressAndWait("Apply");
    EXPECT_EQ(cell(0, State), "as planned");
    EXPECT_EQ(cell(1, State), "changed");
    EXPECT_EQ(cell(1, Now), "static 192.0.2.22/24");
    EXPECT_TRUE(says("It is done."));
    EXPECT_TRUE(says("Changed: 1 of 2."));
    EXPECT_FALSE(isUsable("Apply"));
    EXPECT_EQ(changeCount(), 1);
    EXPECT_TRUE(eventually([this] { return WindowFixture::cell(1, 6) == "192.0.2.22"; }));

    pressAndWait("Look again");
    EXPECT_TRUE(says("All is as planned"));
    EXPECT_EQ(cell(1, State), "as planned");
    EXPECT_FALSE(isUsable("Apply"));
}

TEST_F(PlanApplyingTest, TheMainWindowStaysInUseWhileCamerasAreChanged)
{
    addLeftAndRight();
    open();
    openPlanOf(leftAndRight());
    holdChanges();
    press("Apply");
    ASSERT_TRUE(eventually([this] { return held.tryAcquire(); }));
    EXPECT_TRUE(says("Applying: "));
    for (const char* text : {"Open...", "Save as plan...", "Replace...", "Look again", "Apply"})
        EXPECT_FALSE(isUsable(text)) << text;
    EXPECT_TRUE(isUsable("Stop"));
    ASSERT_TRUE(showActive(*window));
    type("Device User ID:", "typed");
    go.release(1000);
    ASSERT_TRUE(eventually([] { return isIdle(); }));
    EXPECT_EQ(cell(1, State), "changed");
    EXPECT_FALSE(buttonOf("Stop")->isVisible());
    EXPECT_EQ(field("Device User ID:")->text(), "typed");
}

TEST_F(PlanApplyingTest, ACameraThatFailsIsPutBackAndSaysWhy)
{
    addLeftAndRight();
    open();
    openPlanOf(leftAndRight());
    sdk.change = [this, failed = false](const RZ_CC_CHANGE& wanted) mutable {
        if (std::exchange(failed, true))
            return std::optional(sdk.obey(wanted));
        return std::optional(SdkDouble::ChangeEnd{
            RZ_ERROR_REFUSED, "writing 0x0000064C: write protected (0x8006)", RZ_STEP_FORCED});
    };
    pressAndWait("Apply");
    EXPECT_THAT(cell(1, State).toStdString(), HasSubstr("put back: "));
    EXPECT_THAT(cell(1, State).toStdString(), HasSubstr("write protected (0x8006)"));
    EXPECT_EQ(cell(1, Now), "static 192.0.2.31/24");
    EXPECT_TRUE(says("Not all of it was done."));
    EXPECT_TRUE(says("Put back: 1 of 2."));
}

TEST_F(PlanApplyingTest, ACameraThatCannotBePutBackIsTheFirstThingThatItSays)
{
    addLeftAndRight();
    open();
    openPlanOf(leftAndRight());
    sdk.change = [](const RZ_CC_CHANGE&) {
        return std::optional(SdkDouble::ChangeEnd{RZ_ERROR_NO_ANSWER, "it is silent"});
    };
    press("Apply");
    ASSERT_TRUE(eventually([] { return isIdle(); }));
    EXPECT_THAT(cell(1, State).toStdString(), HasSubstr("FAILED: "));
    EXPECT_TRUE(says("A camera failed and could not be put back!"));
    EXPECT_TRUE(says("right (00:1A:2B:00:00:02) was not put back"));
}

TEST_F(PlanApplyingTest, ANewCameraTakesTheMissingOnesPlaceAndOneLineOfTheFile)
{
    addLeftAndRight();
    takeLeftForANewOne();
    open();
    const QString file = openPlanOf(leftAndRight());
    selectPlace(1);
    EXPECT_FALSE(isUsable("Replace...")) << "its camera is there";
    selectPlace(0);
    EXPECT_TRUE(says("This camera can take its place: RZ-1300GM 01A2099999, MAC address 00:1A:2B:00:00:09"));
    ASSERT_TRUE(isUsable("Replace..."));

    const auto question = answerNextQuestion(Qt::Key_Return);
    press("Replace...");
    ASSERT_TRUE(eventually([] { return isIdle() && cell(0, State) == "as planned"; }));
    EXPECT_THAT(question->toStdString(), HasSubstr("MAC address 00:1A:2B:00:00:01"));
    EXPECT_THAT(question->toStdString(), HasSubstr("RZ-1300GM 01A2099999 (00:1A:2B:00:00:09)"));
    EXPECT_THAT(question->toStdString(), HasSubstr("static 192.0.2.21/24"));
    EXPECT_EQ(changeCount(), 1) << "nothing but the newcomer was touched";
    EXPECT_EQ(contentOf(file), leftAndRight().replace("00:1A:2B:00:00:01", "00:1A:2B:00:00:09"));
    EXPECT_EQ(QFileInfo(file).dir().entryList(QDir::Files), QStringList("line.yaml"));
    EXPECT_EQ(cell(0, Camera), "RZ-1300GM 01A2099999");
    EXPECT_EQ(cell(0, Now), "static 192.0.2.21/24");
    EXPECT_TRUE(says("Changed: 1 of 1."));
    EXPECT_TRUE(isUsable("Apply")) << "for the other place";
}

TEST_F(PlanApplyingTest, WhoeverSaysNoKeepsCameraAndFile)
{
    addLeftAndRight();
    takeLeftForANewOne();
    open();
    const QString file = openPlanOf(leftAndRight());
    selectPlace(0);
    answerNextQuestion(Qt::Key_Tab);
    press("Replace...");
    EXPECT_TRUE(isIdle());
    EXPECT_EQ(changeCount(), 0);
    EXPECT_EQ(contentOf(file), leftAndRight());
}

TEST_F(PlanApplyingTest, TheFileStaysAsItIsWhenTheNewCameraFails)
{
    addLeftAndRight();
    takeLeftForANewOne();
    open();
    const QString file = openPlanOf(leftAndRight());
    selectPlace(0);
    sdk.change = [this, failed = false](const RZ_CC_CHANGE& wanted) mutable {
        if (std::exchange(failed, true))
            return std::optional(sdk.obey(wanted));
        return std::optional(SdkDouble::ChangeEnd{RZ_ERROR_REFUSED, "it says no", RZ_STEP_FORCED});
    };
    answerNextQuestion(Qt::Key_Return);
    press("Replace...");
    ASSERT_TRUE(eventually([] { return isIdle() && !cell(0, Camera).isEmpty(); }));
    EXPECT_THAT(cell(0, State).toStdString(), HasSubstr("put back: "));
    EXPECT_EQ(contentOf(file), leftAndRight());
}

TEST_F(PlanApplyingTest, NothingIsReplacedWhenTheFileCannotSaySo)
{
    addLeftAndRight();
    takeLeftForANewOne();
    open();
    const QString file = openPlanOf(leftAndRight());
    // Not by rights, which root does not need: a file in a folder's place cannot be written.
    selectPlace(0);
    survey = [this, file, whole = survey] {
        QFile::remove(file);
        QDir().mkdir(file);
        return whole();
    };
    answerNextQuestion(Qt::Key_Return);
    press("Replace...");
    ASSERT_TRUE(eventually([] { return isIdle(); }));
    EXPECT_TRUE(says(file + " cannot be written: "));
    EXPECT_EQ(changeCount(), 0);
}

TEST_F(PlanApplyingTest, NothingIsReplacedWhenItsLineCannotBeRewritten)
{
    addLeftAndRight();
    takeLeftForANewOne();
    open();
    const QString folded =
        leftAndRight().replace(R"({mac: "00:1A:2B:00:00:01"})", "\n      mac: >-\n        00:1A:2B:00:00:01");
    const QString file = openPlanOf(folded);
    selectPlace(0);
    answerNextQuestion(Qt::Key_Return);
    press("Replace...");
    ASSERT_TRUE(eventually([] { return isIdle(); }));
    EXPECT_TRUE(says("this value cannot be replaced by"));
    EXPECT_EQ(changeCount(), 0);
    EXPECT_EQ(contentOf(file), folded);
}

TEST_F(PlanApplyingTest, WhatHasChangedSinceIsShownAndNotDone)
{
    addLeftAndRight();
    open();
    openPlanOf(leftAndRight());
    sdk.listed[0]->stGigEInfo.nDeviceIp = SdkDouble::address("192.0.2.77");
    pressAndWait("Apply");
    EXPECT_TRUE(says("What is there has changed meanwhile, and nothing was done: this is the plan now."));
    EXPECT_EQ(changeCount(), 0);
    EXPECT_EQ(cell(0, Now), "static 192.0.2.77/24");
    pressAndWait("Apply");
    EXPECT_TRUE(says("It is done."));
    EXPECT_EQ(changeCount(), 2);
}

TEST_F(PlanApplyingTest, ClosedWhileCamerasAreChangedItStaysUntilTheyAreDone)
{
    addLeftAndRight();
    open();
    openPlanOf(leftAndRight().replace("192.0.2.21", "192.0.2.41"));
    holdChanges();
    press("Apply");
    ASSERT_TRUE(eventually([this] { return held.tryAcquire(); }));
    shown()->close();
    ASSERT_NE(shown(), nullptr);
    EXPECT_TRUE(says("Stopping: cameras that are begun are finished or put back ..."));
    EXPECT_FALSE(isUsable("Stop"));
    go.release(1000);
    EXPECT_TRUE(eventually([] { return shown() == nullptr; }));
    EXPECT_EQ(changeCount(), 1) << "the first goes alone, and no other was begun";
}

TEST_F(PlanApplyingTest, TheProgramDoesNotEndWhileCamerasAreChanged)
{
    addLeftAndRight();
    open();
    openPlanOf(leftAndRight());
    holdChanges();
    press("Apply");
    ASSERT_TRUE(eventually([this] { return held.tryAcquire(); }));
    QTimer::singleShot(0, window, [this] {
        window->close();
        EXPECT_FALSE(window->isVisible());
        EXPECT_NE(shown(), nullptr);
        QTimer::singleShot(0, window, [this] { go.release(1000); });
    });
    QTimer tooLong;
    QObject::connect(&tooLong, &QTimer::timeout, [] { QCoreApplication::exit(1); });
    tooLong.start(60000);
    EXPECT_EQ(QApplication::exec(), 0);
    EXPECT_EQ(shown(), nullptr);
    EXPECT_EQ(sdk.listed[1]->stGigEInfo.nDeviceIp, SdkDouble::address("192.0.2.22"));
}

TEST_F(PlanApplyingTest, ACameraThatFailedKeepsItOpenToBeRead)
{
    addLeftAndRight();
    open();
    openPlanOf(leftAndRight());
    sdk.change = [](const RZ_CC_CHANGE&) {
        return std::optional(SdkDouble::ChangeEnd{RZ_ERROR_NO_ANSWER, "it is silent"});
    };
    holdChanges();
    press("Apply");
    ASSERT_TRUE(eventually([this] { return held.tryAcquire(); }));
    shown()->close();
    go.release(1000);
    ASSERT_TRUE(eventually([] { return isIdle(); }));
    ASSERT_NE(shown(), nullptr);
    EXPECT_TRUE(says("A camera failed and could not be put back!"));
    shown()->close();
    EXPECT_EQ(shown(), nullptr);
}

TEST_F(PlanApplyingTest, StopHasNoMoreCamerasBegun)
{
    addLeftAndRight();
    open();
    openPlanOf(leftAndRight().replace("192.0.2.21", "192.0.2.41"));
    holdChanges();
    press("Apply");
    ASSERT_TRUE(eventually([this] { return held.tryAcquire(); }));
    press("Stop");
    go.release(1000);
    ASSERT_TRUE(eventually([] { return isIdle(); }));
    EXPECT_EQ(changeCount(), 1);
    EXPECT_TRUE(says("Not begun: 1 of 2."));
    EXPECT_TRUE(says("Not all of it was done."));
}
