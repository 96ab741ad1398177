// SPDX-License-Identifier: Apache-2.0
#include "tests/support/WindowActions.h"
#include "widgets/QCheckBoxEx.h"
#include "widgets/QLineEditEx.h"
#include "widgets/QPushButtonEx.h"
#include "widgets/QPushButtonExColor.h"
#include "widgets/QRadioButtonEx.h"

#include <QVBoxLayout>

#include <gtest/gtest.h>

namespace {

const QColor Dark(0x17, 0x4b, 0x8b);

/// Every widget of the kit that takes the keyboard, in a window that has it.
class FocusRingTest : public testing::Test
{
protected:
    void SetUp() override
    {
        auto* const layout = new QVBoxLayout(&window);
        for (QWidget* const control : controls)
            layout->addWidget(control);
        edit.setText("192.168.10.20");
        edit.setReadOnly(true); // Its cursor comes and goes.
        edit.setFrame(false);   // The style's own shows the focus in its way.
        ASSERT_TRUE(showActive(window));
    }

    QWidget window;
    QPushButtonEx& plain = *new QPushButtonEx("Cancel");
    QPushButtonExColor& coloured = *new QPushButtonExColor("OK");
    QRadioButtonEx& radio = *new QRadioButtonEx("Static IP");
    QCheckBoxEx& check = *new QCheckBoxEx("Option");
    QLineEditEx& edit = *new QLineEditEx(nullptr);
    const std::vector<QWidget*> controls = {&plain, &coloured, &radio, &check, &edit};
};

/// The places along the edge of the rectangle.
std::vector<QPoint> edgeOf(const QRect& rect)
{
    std::vector<QPoint> places;
    for (int x = rect.left(); x <= rect.right(); ++x) {
        places.emplace_back(x, rect.top());
        places.emplace_back(x, rect.bottom());
    }
    for (int y = rect.top(); y <= rect.bottom(); ++y) {
        places.emplace_back(rect.left(), y);
        places.emplace_back(rect.right(), y);
    }
    return places;
}

} // namespace

TEST_F(FocusRingTest, IsADarkLineAndALightOneRoundTheWholeControlAndNothingElseChanges)
{
    for (size_t i = 0; i < controls.size(); ++i) {
        controls[(i + 1) % controls.size()]->setFocus();
        const QImage without = controls[i]->grab().toImage();
        controls[i]->setFocus();
        const QImage with = controls[i]->grab().toImage();
        const QRect ring = with.rect();
        for (const QPoint& place : edgeOf(ring))
            ASSERT_EQ(with.pixelColor(place), Dark) << controls[i]->metaObject()->className();
        for (const QPoint& place : edgeOf(ring.adjusted(1, 1, -1, -1)))
            ASSERT_EQ(with.pixelColor(place), QColor(Qt::white)) << controls[i]->metaObject()->className();
        const QRect inside = ring.adjusted(2, 2, -2, -2);
        EXPECT_EQ(with.copy(inside), without.copy(inside)) << controls[i]->metaObject()->className();
    }
}

TEST_F(FocusRingTest, GoesWhenTheWindowLosesTheKeyboard)
{
    plain.setFocus();
    QWidget other;
    ASSERT_TRUE(showActive(other));
    EXPECT_NE(plain.grab().toImage().pixelColor(0, 15), Dark);
}
