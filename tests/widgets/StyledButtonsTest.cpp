// SPDX-License-Identifier: Apache-2.0
#include "widgets/QCheckBoxEx.h"
#include "widgets/QPushButtonEx.h"
#include "widgets/QPushButtonExColor.h"
#include "widgets/QRadioButtonEx.h"

#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

TEST(QCheckBoxExTest, ReportsMinusOneUntilItsIndexIsSet)
{
    QCheckBoxEx box(QStringLiteral("Text"));
    const QSignalSpy toggled(&box, &QCheckBoxEx::Toggled);
    QTest::keyClick(&box, Qt::Key_Space);
    box.SetIndex(3);
    QTest::keyClick(&box, Qt::Key_Space);
    box.setChecked(true);
    ASSERT_EQ(toggled.size(), 3);
    EXPECT_EQ(toggled[0], QVariantList({-1, true}));
    EXPECT_EQ(toggled[1], QVariantList({3, false}));
    EXPECT_EQ(toggled[2], QVariantList({3, true}));
}

template <typename Button>
class IndexedButtonTest : public testing::Test
{};
using Buttons = testing::Types<QPushButtonEx, QPushButtonExColor>;
TYPED_TEST_SUITE(IndexedButtonTest, Buttons);

TYPED_TEST(IndexedButtonTest, ReportsZeroUntilItsIndexIsSet)
{
    TypeParam button(QStringLiteral("Save"));
    const QSignalSpy clicked(&button, &TypeParam::SigOnClickedButton);
    QTest::mouseClick(&button, Qt::LeftButton);
    button.SetIndex(6);
    QTest::keyClick(&button, Qt::Key_Space);
    ASSERT_EQ(clicked.size(), 2);
    EXPECT_EQ(clicked[0], QVariantList({0}));
    EXPECT_EQ(clicked[1], QVariantList({6}));
}

TYPED_TEST(IndexedButtonTest, ADisabledButtonReportsNoClick)
{
    TypeParam button;
    button.setEnabled(false);
    const QSignalSpy clicked(&button, &TypeParam::SigOnClickedButton);
    QTest::mouseClick(&button, Qt::LeftButton);
    EXPECT_EQ(clicked.size(), 0);
}

TYPED_TEST(IndexedButtonTest, EveryConstructorTakesWhatItIsGiven)
{
    QPixmap pixmap(8, 8);
    pixmap.fill(Qt::red);
    QWidget parent;
    const auto* const plain = new TypeParam(&parent);
    const auto* const text = new TypeParam(QStringLiteral("Save"), &parent);
    const auto* const icon = new TypeParam(QIcon(pixmap), QStringLiteral("Load"), &parent);
    EXPECT_EQ(plain->text(), "");
    EXPECT_EQ(text->text(), "Save");
    EXPECT_TRUE(text->icon().isNull());
    EXPECT_EQ(icon->text(), "Load");
    EXPECT_FALSE(icon->icon().isNull());
    EXPECT_EQ(parent.findChildren<TypeParam*>().size(), 3);
}

TEST(QRadioButtonExTest, ADisabledOneShowsWhetherItIsChecked)
{
    for (const auto& [checked, picture] : {std::pair{true, "radiobox_sel_dis"}, {false, "radiobox_dis"}}) {
        QRadioButtonEx button;
        QRadioButton plain;
        plain.setStyleSheet(
            QStringLiteral("QRadioButton::indicator{image: url(:/Dorn/Resources/radiobox/%1.png);}")
                .arg(picture));
        for (QRadioButton* const one : {static_cast<QRadioButton*>(&button), &plain}) {
            one->setAutoExclusive(false);
            one->setChecked(checked);
            one->setEnabled(false);
            one->resize(40, 30);
        }
        EXPECT_EQ(button.grab().toImage(), plain.grab().toImage()) << picture;
    }
}
