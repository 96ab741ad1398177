// SPDX-License-Identifier: Apache-2.0
#include "tests/support/WindowActions.h"
#include "widgets/QMainWindowEx.h"
#include "widgets/QMessageBoxDlg.h"

#include <QBoxLayout>
#include <QGuiApplication>
#include <QLabel>
#include <QScreen>
#include <QWindow>

#include <gtest/gtest.h>

namespace {

const QColor Cyan = Qt::cyan;
const QColor Magenta = Qt::magenta;
const QColor Yellow = Qt::yellow;

QColor onScreen(const QPoint& place)
{
    return QGuiApplication::primaryScreen()
        ->grabWindow(0, place.x(), place.y(), 1, 1)
        .toImage()
        .pixelColor(0, 0);
}

QBoxLayout* createGround(const QColor& color)
{
    auto* const ground = new QLabel;
    ground->setStyleSheet("background-color:" + color.name());
    auto* const layout = new QVBoxLayout;
    layout->addWidget(ground);
    return layout;
}

/// A window, another one that it owns in its middle, and a stranger over both, from under which one corner of
/// the window looks out.
class StackingTest : public testing::Test
{
protected:
    void SetUp() override
    {
        owner.SetLayoutEx(createGround(Cyan));
        owner.setGeometry(100, 100, 800, 600);
        ASSERT_TRUE(showActive(owner));
    }

    /// Clicks the corner of the owner that is seen, and waits until the owner is seen where the stranger was.
    void raiseOwnerFromUnderStranger()
    {
        QWidget& stranger = *m_stranger;
        stranger.hide();
        stranger.setStyleSheet("background-color:" + Magenta.name());
        stranger.setGeometry(150, 150, 1000, 800);
        ASSERT_TRUE(showActive(stranger));
        ASSERT_TRUE(eventually([] { return onScreen(Side) == Magenta && onScreen(Middle) == Magenta; }));
        ASSERT_TRUE(movePointer({120, 400}));
        ASSERT_TRUE(pressPointer());
        ASSERT_TRUE(releasePointer());
        ASSERT_TRUE(eventually([] { return onScreen(Side) == Cyan; }));
    }

    static constexpr QPoint Middle{500, 380};
    static constexpr QPoint Side{200, 600};
    QMainWindowEx owner{nullptr, true};

private:
    std::unique_ptr<QWidget> m_stranger = std::make_unique<QWidget>();
};

} // namespace

TEST_F(StackingTest, AMessageBoxStaysAboveItsWindowAndIsRaisedWithIt)
{
    QMessageBoxDlg box(&owner, "Information", "text", false);
    box.setWindowModality(Qt::WindowModal);
    box.move(300, 280);
    ASSERT_TRUE(showActive(box));
    const QColor ground(244, 244, 244);
    const QPoint place = box.geometry().bottomLeft() + QPoint(20, -20);
    ASSERT_TRUE(eventually([&] { return onScreen(place) == ground; }));
    raiseOwnerFromUnderStranger();
    EXPECT_TRUE(eventually([&] { return onScreen(place) == ground; }));
    EXPECT_EQ(box.windowFlags(), Qt::Window | Qt::FramelessWindowHint);
}

TEST_F(StackingTest, ADialogStaysAboveTheWindowThatItWasGivenAndIsRaisedWithIt)
{
    QMainWindowEx dialog(&owner, false);
    const Qt::WindowFlags flags = dialog.windowFlags();
    dialog.SetLayoutEx(createGround(Yellow));
    for (int use = 0; use < 2; ++use) {
        dialog.setGeometry(400, 280, 200, 200);
        ASSERT_TRUE(showActive(dialog));
        ASSERT_TRUE(eventually([] { return onScreen(Middle) == Yellow; }));
        raiseOwnerFromUnderStranger();
        EXPECT_TRUE(eventually([] { return onScreen(Middle) == Yellow; })) << use;
        dialog.close();
    }
    EXPECT_EQ(dialog.windowFlags(), flags);
    EXPECT_EQ(dialog.parentWidget(), nullptr);
}

TEST_F(StackingTest, AWindowThatIsGivenNoOwnerStandsAlone)
{
    QMainWindowEx dialog(nullptr, false);
    ASSERT_TRUE(showActive(dialog));
    EXPECT_EQ(dialog.windowHandle()->transientParent(), nullptr);
}
