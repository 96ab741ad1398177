// SPDX-License-Identifier: Apache-2.0
#include "tests/support/WindowActions.h"
#include "tests/widgets/ScriptedUname.h"
#include "widgets/QDialogEx.h"
#include "widgets/QMainWindowEx.h"

#include <QGuiApplication>
#include <QImage>
#include <QProcess>

#include <gtest/gtest.h>

#include <utility>

namespace {

const QColor TitleBlue(62, 134, 227);

/// The kit's windows on a Wayland desktop, where a window neither knows nor says where it is: its place is
/// seen in a picture of the screen that the compositor's output is on.
class WaylandTest : public testing::Test
{
protected:
    void SetUp() override { ASSERT_TRUE(QGuiApplication::platformName().startsWith("wayland")); }

    static QImage screen()
    {
        QProcess import;
        import.start("import", {"-silent", "-window", "root", "png:-"});
        EXPECT_TRUE(import.waitForFinished());
        return QImage::fromData(import.readAllStandardOutput(), "PNG").convertToFormat(QImage::Format_RGB32);
    }

    /// The corner of the first window's title from the top; a null point while there is none.
    static QPoint titlePlace()
    {
        const QImage picture = screen();
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x + 50 < picture.width(); ++x) {
                if (picture.pixelColor(x, y) == TitleBlue && picture.pixelColor(x + 50, y) == TitleBlue)
                    return {x, y};
            }
        }
        return {};
    }

    /// Shows the window and waits until it is seen and stays where it is.
    static QPoint show(QWidget& window)
    {
        window.show();
        QPoint place;
        EXPECT_TRUE(eventually([&] {
            const QPoint before = place;
            place = titlePlace();
            return !place.isNull() && place == before;
        }));
        return place;
    }

    /// Presses at the place in the window and moves until its place or size has changed: whoever moves the
    /// window takes the pointer over in the middle of that, and counts from where it finds it then. It
    /// presses again where that does not happen: a press may come before the window has heard of the pointer.
    /// Returns where the pointer is.
    static QPoint holdAt(QWidget& window, const std::function<QPoint()>& placeInWindow)
    {
        QPoint pointer;
        EXPECT_TRUE(eventually([&] {
            const QPoint place = titlePlace();
            const QSize size = window.size();
            pointer = place + placeInWindow();
            EXPECT_TRUE(movePointer(pointer) && pressPointer());
            for (int move = 0; move < 5; ++move) {
                pointer += QPoint(3, 2);
                EXPECT_TRUE(movePointer(pointer));
                if (titlePlace() != place || window.size() != size)
                    return true;
                QCoreApplication::processEvents();
            }
            EXPECT_TRUE(releasePointer());
            return false;
        }));
        return pointer;
    }

    static void expectTheTitleDrags(QWidget& window)
    {
        show(window);
        const QPoint hold = holdAt(window, [] { return QPoint(80, 10); });
        ASSERT_TRUE(movePointer(hold + QPoint(40, 50)));
        QPoint before;
        ASSERT_TRUE(eventually([&] { return titlePlace() == std::exchange(before, titlePlace()); }));
        ASSERT_TRUE(movePointer(hold + QPoint(-20, 90)));
        EXPECT_TRUE(eventually([&] { return titlePlace() == before + QPoint(-60, 40); }));
        ASSERT_TRUE(releasePointer());
        ASSERT_TRUE(movePointer(hold));
        ASSERT_TRUE(movePointer(hold + QPoint(10, 10)));
        EXPECT_EQ(titlePlace(), before + QPoint(-60, 40)) << "dragged without a button";
    }

    ScriptedUname uname = ScriptedUname::other();
};

} // namespace

TEST_F(WaylandTest, TheTitleBarDragsTheWindow)
{
    QMainWindowEx window(nullptr, true);
    window.resize(400, 300);
    expectTheTitleDrags(window);
}

TEST_F(WaylandTest, TheTitleStripDragsADialog)
{
    QDialogEx dialog(0, nullptr);
    dialog.resize(400, 300);
    expectTheTitleDrags(dialog);
}

TEST_F(WaylandTest, TheLowerRightCornerSizesTheWindow)
{
    QMainWindowEx window(nullptr, true);
    window.resize(400, 300);
    show(window);
    const QPoint hold = holdAt(window, [&] { return QPoint(window.width() - 5, window.height() - 5); });
    ASSERT_TRUE(movePointer(hold + QPoint(-60, 90)));
    EXPECT_TRUE(eventually([&] { return window.height() > 370 && window.width() < 360; }))
        << window.width() << " x " << window.height();
    ASSERT_TRUE(releasePointer());
}
