// SPDX-License-Identifier: Apache-2.0
#include "tests/support/WindowActions.h"
#include "tests/widgets/ScriptedUname.h"
#include "tests/widgets/WindowProbe.h"
#include "widgets/QDialogEx.h"
#include "widgets/QImageButton.h"
#include "widgets/QMainWindowEx.h"
#include "widgets/QTitleBar.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

namespace {

void showAt(QWidget& window, const QRect& place)
{
    window.setGeometry(place);
    ASSERT_TRUE(showActive(window));
    ASSERT_TRUE(eventually([&] { return window.geometry() == place; }));
}

/// Moves the pointer and waits until the widget has heard of it.
void moveAndAwait(const MouseLog& log, const QPoint& target)
{
    ASSERT_TRUE(movePointer(target));
    ASSERT_TRUE(eventually([&] { return log.lastMove == target; }));
}

/// A dialog that a person drags about with the pointer. Its close button is on the right.
class DialogDragTest : public testing::Test
{
protected:
    void SetUp() override { showAt(dialog, {200, 150, 300, 200}); }

    ScriptedUname uname = ScriptedUname::other();
    QDialogEx dialog{0, nullptr};
    MouseLog log{dialog};
    QSignalSpy moves{&dialog, &QDialogEx::SigMoveDialog};
};

} // namespace

TEST_F(DialogDragTest, TheTitleStripTakesTheDialogAlongWithoutAJump)
{
    ASSERT_TRUE(movePointer({300, 160}));
    ASSERT_TRUE(pressPointer());
    ASSERT_TRUE(eventually([this] { return log.presses == 1; }));
    EXPECT_EQ(dialog.pos(), QPoint(200, 150));
    for (const QPoint step : {QPoint(301, 160), QPoint(420, 330), QPoint(90, 60)}) {
        moveAndAwait(log, step);
        EXPECT_TRUE(eventually([&] { return dialog.pos() == step - QPoint(100, 10); }));
        EXPECT_EQ(moves.last(), QVariantList{step - QPoint(100, 10)});
    }
    ASSERT_TRUE(releasePointer());
    ASSERT_TRUE(eventually([this] { return log.releases == 1; }));
    sendMouse(dialog, QEvent::MouseMove, {150, 15});
    EXPECT_EQ(dialog.pos(), QPoint(-10, 50));
}

TEST_F(DialogDragTest, AMoveIsToldBeforeItIsMade)
{
    std::vector<QPoint> places;
    QObject::connect(&dialog, &QDialogEx::SigMoveDialog, [&] { places.push_back(dialog.pos()); });
    sendMouse(dialog, QEvent::MouseButtonPress, {100, 10});
    sendMouse(dialog, QEvent::MouseMove, {150, 60});
    EXPECT_EQ(places, std::vector{QPoint(200, 150)});
    EXPECT_EQ(dialog.pos(), QPoint(250, 200));
}

TEST_F(DialogDragTest, AnyMouseButtonDrags)
{
    ASSERT_TRUE(movePointer({300, 160}));
    ASSERT_TRUE(pressPointer(3));
    moveAndAwait(log, {350, 200});
    EXPECT_TRUE(eventually([&] { return dialog.pos() == QPoint(250, 190); }));
    ASSERT_TRUE(releasePointer(3));
}

TEST_F(DialogDragTest, TheCornerWhereTheCloseButtonsOwnRectangleWouldLieNeverDrags)
{
    ASSERT_TRUE(movePointer({200 + 20, 150 + 20}));
    ASSERT_TRUE(pressPointer());
    moveAndAwait(log, {400, 400});
    EXPECT_EQ(moves.last(), QVariantList{QPoint(380, 380)});
    EXPECT_EQ(dialog.pos(), QPoint(200, 150));
    ASSERT_TRUE(releasePointer());
}

TEST_F(DialogDragTest, EveryMoveOverTheContentIsToldButDragsNothing)
{
    ASSERT_TRUE(movePointer({350, 280}));
    ASSERT_TRUE(pressPointer());
    moveAndAwait(log, {360, 290});
    moveAndAwait(log, {370, 300});
    ASSERT_GE(moves.size(), 2);
    EXPECT_EQ(moves.first(), QVariantList{QPoint(210, 160)});
    EXPECT_EQ(moves.last(), QVariantList{QPoint(220, 170)});
    EXPECT_EQ(dialog.pos(), QPoint(200, 150));
    ASSERT_TRUE(releasePointer());
}

TEST_F(DialogDragTest, APressOnTheCloseButtonThatLeavesItNeitherDragsNorCloses)
{
    MouseLog button(*dialog.GetCloseBtn());
    ASSERT_TRUE(movePointer(dialog.GetCloseBtn()->mapToGlobal(QPoint(15, 15))));
    ASSERT_TRUE(pressPointer());
    ASSERT_TRUE(movePointer({700, 600}));
    ASSERT_TRUE(releasePointer());
    ASSERT_TRUE(eventually([&] { return button.releases == 1; }));
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_EQ(dialog.pos(), QPoint(200, 150));
}

TEST_F(DialogDragTest, APressOnTheCloseButtonEndsADrag)
{
    sendMouse(dialog, QEvent::MouseButtonPress, {100, 10});
    sendMouse(dialog, QEvent::MouseMove, {150, 60});
    EXPECT_EQ(dialog.pos(), QPoint(250, 200));
    emit dialog.GetCloseBtn()->SigButtonPressed(-1);
    sendMouse(dialog, QEvent::MouseMove, {150, 60});
    EXPECT_EQ(dialog.pos(), QPoint(250, 200));
}

TEST_F(DialogDragTest, TheOwnerMayLetTheContentDragTheDialog)
{
    sendMouse(dialog, QEvent::MouseButtonPress, {100, 100});
    dialog.SetMoveable(true);
    sendMouse(dialog, QEvent::MouseMove, {150, 150});
    EXPECT_EQ(dialog.pos(), QPoint(250, 200));
    dialog.SetMoveable(false);
    sendMouse(dialog, QEvent::MouseMove, {150, 150});
    EXPECT_EQ(dialog.pos(), QPoint(250, 200));
}

TEST_F(DialogDragTest, AMaximisedDialogStaysAndTellsNothing)
{
    dialog.showMaximized();
    ASSERT_TRUE(eventually([this] { return dialog.isMaximized() && dialog.width() > 300; }));
    const QRect full = dialog.geometry();
    ASSERT_TRUE(movePointer(full.topLeft() + QPoint(100, 10)));
    ASSERT_TRUE(pressPointer());
    moveAndAwait(log, full.topLeft() + QPoint(300, 200));
    EXPECT_EQ(moves.size(), 0);
    EXPECT_EQ(dialog.geometry(), full);
    ASSERT_TRUE(releasePointer());
}

namespace {

class WindowDragTest : public testing::Test
{
protected:
    void SetUp() override { showAt(window, {200, 150, 400, 300}); }

    ScriptedUname uname = ScriptedUname::other();
    QMainWindowEx window{nullptr, true};
    QTitleBar& bar = *window.findChild<QTitleBar*>();
    MouseLog log{bar};
};

} // namespace

// The bar takes the pointer's place in itself for the one in the window, which begins 6 pixels further left.
TEST_F(WindowDragTest, TheTitleBarTakesTheWindowAlong)
{
    ASSERT_TRUE(movePointer({200 + 6 + 150, 150 + 12}));
    ASSERT_TRUE(pressPointer());
    for (const QPoint step : {QPoint(357, 162), QPoint(520, 400), QPoint(220, 90)}) {
        moveAndAwait(log, step);
        EXPECT_TRUE(eventually([&] { return window.pos() == step - QPoint(150, 12); }));
    }
    ASSERT_TRUE(releasePointer());
}

TEST_F(WindowDragTest, ADoubleClickOnlyTakesANewHold)
{
    const QPoint hold = {200 + 6 + 150, 150 + 12};
    ASSERT_TRUE(movePointer(hold));
    ASSERT_TRUE(pressPointer());
    ASSERT_TRUE(releasePointer());
    ASSERT_TRUE(pressPointer());
    ASSERT_TRUE(eventually([this] { return log.presses == 2; }));
    EXPECT_EQ(window.geometry(), QRect(200, 150, 400, 300));
    moveAndAwait(log, {500, 400});
    EXPECT_TRUE(eventually([&] { return window.pos() == QPoint(350, 388); }));
    ASSERT_TRUE(releasePointer());
    EXPECT_EQ(window.size(), QSize(400, 300));
}

TEST_F(WindowDragTest, APressOnAButtonOfTheBarThatLeavesItDoesNotDrag)
{
    QImageButton* const close = buttonShowing(window, "title_close");
    MouseLog button(*close);
    ASSERT_TRUE(movePointer(close->mapToGlobal(QPoint(15, 15))));
    ASSERT_TRUE(pressPointer());
    ASSERT_TRUE(movePointer({300, 400}));
    ASSERT_TRUE(releasePointer());
    ASSERT_TRUE(eventually([&] { return button.releases == 1; }));
    EXPECT_TRUE(window.isVisible());
    EXPECT_EQ(window.pos(), QPoint(200, 150));
}

TEST_F(WindowDragTest, APressOnAnyButtonOfTheBarEndsADrag)
{
    for (const char* const picture : {"title_close", "recovery", "min"}) { // The last one minimises, too.
        sendMouse(bar, QEvent::MouseButtonPress, {150, 12});
        emit buttonShowing(window, picture)->SigButtonPressed(-1);
        sendMouse(bar, QEvent::MouseMove, {200, 100});
        EXPECT_EQ(window.pos(), QPoint(200, 150)) << picture;
    }
}

TEST_F(WindowDragTest, APressOutsideTheBarTakesNoHold)
{
    sendMouse(bar, QEvent::MouseButtonPress, {150, 32});
    sendMouse(bar, QEvent::MouseMove, {200, 100});
    EXPECT_EQ(window.pos(), QPoint(200, 150));
    sendMouse(bar, QEvent::MouseButtonPress, {150, 31});
    sendMouse(bar, QEvent::MouseMove, {200, 100});
    EXPECT_NE(window.pos(), QPoint(200, 150));
}

TEST_F(WindowDragTest, AMaximisedWindowStays)
{
    window.showMaximized();
    ASSERT_TRUE(eventually([this] { return window.isMaximized() && window.width() > 400; }));
    const QRect full = window.geometry();
    ASSERT_TRUE(movePointer(full.topLeft() + QPoint(300, 12)));
    ASSERT_TRUE(pressPointer());
    moveAndAwait(log, full.topLeft() + QPoint(400, 200));
    EXPECT_EQ(window.geometry(), full);
    ASSERT_TRUE(releasePointer());
}

TEST_F(WindowDragTest, TheLowerRightCornerSizesTheWindow)
{
    ASSERT_TRUE(movePointer({200 + 400 - 4, 150 + 300 - 4}));
    ASSERT_TRUE(pressPointer());
    // The window manager takes the pointer over, and counts from where it finds it then.
    for (int step = 0; step < 20 && window.size() == QSize(400, 300); ++step)
        ASSERT_TRUE(movePointer({660 + step, 500 + step}));
    ASSERT_TRUE(movePointer({700, 550}));
    EXPECT_TRUE(eventually([&] { return window.width() > 450 && window.height() > 350; }))
        << window.width() << " x " << window.height();
    EXPECT_EQ(window.pos(), QPoint(200, 150));
    ASSERT_TRUE(releasePointer());
}
