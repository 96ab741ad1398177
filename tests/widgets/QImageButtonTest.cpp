// SPDX-License-Identifier: Apache-2.0
#include "widgets/QImageButton.h"

#include <QMenu>
#include <QSignalSpy>
#include <QTest>

#include <cstdio>
#include <cstdlib>
#include <gtest/gtest.h>

namespace {

QVariantList Triggered(int nButton, int nMenu, long lID, bool bChecked)
{
    return {nButton, nMenu, QVariant::fromValue(lID), bChecked};
}

/// The item as the user reaches it: in the menu that the button opens.
QAction* MenuItem(const QImageButton& button, int nIndex)
{
    return button.menu()->actions().at(nIndex);
}

/// The same whether the button is active, inactive or disabled.
QColor TextColor(const QImageButton& button)
{
    const QPalette palette = button.palette();
    const QColor color = palette.color(QPalette::Active, QPalette::ButtonText);
    EXPECT_EQ(palette.color(QPalette::Inactive, QPalette::ButtonText), color);
    EXPECT_EQ(palette.color(QPalette::Disabled, QPalette::ButtonText), color);
    return color;
}

void Send(QWidget& widget, QEvent::Type type)
{
    QEvent event(type);
    QCoreApplication::sendEvent(&widget, &event);
}

/// Style sheets with "N" where the button's name stands.
QString Sheet(const QImageButton& button)
{
    return button.styleSheet().replace(button.objectName(), QStringLiteral("N"));
}

} // namespace

TEST(QImageButtonTest, ButtonsAreNumberedInTheOrderInWhichTheyAreMade)
{
    const QImageButton first(false);
    const QImageButton second(QString(), QString(), QString(), true);
    ASSERT_TRUE(first.objectName().startsWith("QImageButton"));
    bool isNumber = false;
    const int number = first.objectName().mid(12).toInt(&isNumber);
    EXPECT_TRUE(isNumber);
    EXPECT_GE(number, 1);
    EXPECT_EQ(second.objectName(), QStringLiteral("QImageButton%1").arg(number + 1));
}

// In a process of its own, in which no button has been made before.
TEST(QImageButtonDeathTest, TheFirstButtonIsNumberOne)
{
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    EXPECT_EXIT(
        {
            const QImageButton first(false);
            std::fprintf(stderr, "%s.", qPrintable(first.objectName()));
            std::_Exit(0);
        },
        testing::ExitedWithCode(0), "QImageButton1\\.");
}

TEST(QImageButtonTest, ASheetReachesNoOtherButton)
{
    QImageButton outer(QStringLiteral("red"), QString(), QString(), true);
    EXPECT_EQ(outer.styleSheet(), '#' + outer.objectName() + "{background-color:red;}");
    auto* const inner = new QImageButton(QStringLiteral("blue"), QString(), QString(), true);
    inner->resize(20, 20);
    const auto middle = [inner] { return inner->grab().toImage().pixelColor(10, 10); };
    const QColor alone = middle();
    inner->setParent(&outer);
    EXPECT_EQ(middle(), alone);
    inner->setObjectName(outer.objectName());
    inner->setStyleSheet(QString());
    EXPECT_NE(middle(), alone); // It would be seen.
}

TEST(QImageButtonTest, AnEmptyButtonHasNoSheet)
{
    EXPECT_EQ(QImageButton(false).styleSheet(), "");
}

TEST(QImageButtonTest, PicturesBecomeARuleForEachState)
{
    QImageButton button(":/n.png", ":/h.png", ":/p.png", false);
    EXPECT_EQ(Sheet(button), "#N{border-image:url(:/n.png) 5; border-width: 5;}"
                             "#N:hover{border-image:url(:/h.png) 5; border-width: 5;} "
                             "#N:pressed{border-image:url(:/p.png) 5; border-width: 5;}");

    button.SetBtnImage(":/n2.png", ":/h2.png", ":/p2.png", ":/d2.png");
    EXPECT_EQ(Sheet(button), "#N{border-image:url(:/n2.png) 5; border-width: 5;}"
                             "#N:hover{border-image:url(:/h2.png) 5; border-width: 5;} "
                             "#N:pressed{border-image:url(:/p2.png) 5; border-width: 5;}"
                             "#N:disabled{border-image:url(:/d2.png) 5; border-width: 5;}");
}

TEST(QImageButtonTest, ColoursBecomeARuleForEachState)
{
    QImageButton button("red", "#00ff00", "rgb(0, 0, 1)", true);
    button.SetBtnImage("red", "#00ff00", "rgb(0, 0, 1)", "gray");
    const QString expected = "#N{background-color:red;}"
                             "#N:hover{background-color:#00ff00;}"
                             "#N:pressed{background-color:rgb(0, 0, 1);}"
                             "#N:disabled{background-color:gray;}";
    EXPECT_EQ(Sheet(button), expected);
    button.SetCheck(false);
    EXPECT_EQ(Sheet(button), expected);
}

TEST(QImageButtonTest, AnEmptyPictureIsLeftOutNowAndKeptForLater)
{
    QImageButton button(":/n.png", ":/h.png", ":/p.png", false);
    button.SetBtnImage(":/n2.png", "", "", ":/d2.png");
    EXPECT_EQ(Sheet(button), "#N{border-image:url(:/n2.png) 5; border-width: 5;}"
                             "#N:disabled{border-image:url(:/d2.png) 5; border-width: 5;}");

    button.SetCheck(false);
    EXPECT_EQ(Sheet(button), "#N{border-image:url(:/n2.png) 5; border-width: 5;}"
                             "#N:hover{border-image:url(:/h.png) 5; border-width: 5;} "
                             "#N:pressed{border-image:url(:/p.png) 5; border-width: 5;}"
                             "#N:disabled{background-image:url(:/d2.png) 5; border-width: 5;}");
}

TEST(QImageButtonTest, ACheckedButtonShowsTheCheckedPicturesThatItHas)
{
    QImageButton button(":/n.png", ":/h.png", ":/p.png", false);
    button.SetCheckable(true, ":/cn.png", ":/ch.png", "");
    EXPECT_FALSE(button.IsChecked());
    EXPECT_EQ(Sheet(button), "#N{border-image:url(:/n.png) 5; border-width: 5;}"
                             "#N:hover{border-image:url(:/h.png) 5; border-width: 5;} "
                             "#N:pressed{border-image:url(:/p.png) 5; border-width: 5;}");

    button.SetCheck(true);
    EXPECT_TRUE(button.IsChecked());
    EXPECT_EQ(Sheet(button), "#N{border-image:url(:/cn.png) 5; border-width: 5;}"
                             "#N:hover{border-image:url(:/ch.png) 5; border-width: 5;} ");

    // Unchecks without a new look, and an empty picture leaves the old one.
    button.SetCheckable(true, "", ":/ch2.png", ":/cp2.png");
    EXPECT_FALSE(button.IsChecked());
    EXPECT_EQ(Sheet(button), "#N{border-image:url(:/cn.png) 5; border-width: 5;}"
                             "#N:hover{border-image:url(:/ch.png) 5; border-width: 5;} ");
    button.SetCheck(true);
    EXPECT_EQ(Sheet(button), "#N{border-image:url(:/cn.png) 5; border-width: 5;}"
                             "#N:hover{border-image:url(:/ch2.png) 5; border-width: 5;} "
                             "#N:pressed{border-image:url(:/cp2.png) 5; border-width: 5;}");
}

TEST(QImageButtonTest, ClicksToggleACheckableButton)
{
    QImageButton button(":/n.png", QString(), QString(), false);
    button.SetBtnIndex(7);
    button.SetCheckable(true, ":/cn.png", QString(), QString());
    const QSignalSpy clicked(&button, &QImageButton::SigButtonClicked);
    QTest::mouseClick(&button, Qt::LeftButton);
    EXPECT_EQ(Sheet(button), "#N{border-image:url(:/cn.png) 5; border-width: 5;}");
    QTest::mouseClick(&button, Qt::LeftButton);
    EXPECT_EQ(Sheet(button), "#N{border-image:url(:/n.png) 5; border-width: 5;}");
    ASSERT_EQ(clicked.size(), 2);
    EXPECT_EQ(clicked[0], QVariantList({7, true}));
    EXPECT_EQ(clicked[1], QVariantList({7, false}));
}

TEST(QImageButtonTest, AClickLeavesAButtonThatIsNotCheckableAsItStands)
{
    QImageButton button(false);
    const QSignalSpy clicked(&button, &QImageButton::SigButtonClicked);
    QTest::mouseClick(&button, Qt::LeftButton);
    button.SetCheck(true);
    QTest::mouseClick(&button, Qt::LeftButton);
    ASSERT_EQ(clicked.size(), 2);
    EXPECT_EQ(clicked[0], QVariantList({-1, false}));
    EXPECT_EQ(clicked[1], QVariantList({-1, true}));
}

TEST(QImageButtonTest, PressAndReleaseOfAnyMouseButtonAreToldBeforeTheyHaveAnEffect)
{
    QImageButton button(false);
    button.SetBtnIndex(2);
    QVector<QPair<int, bool>> pressed;
    QVector<QPair<int, bool>> released;
    QObject::connect(&button, &QImageButton::SigButtonPressed, [&](int nIndex) {
        pressed.append({nIndex, button.isDown()});
    });
    QObject::connect(&button, &QImageButton::SigButtonReleased, [&](int nIndex) {
        released.append({nIndex, button.isDown()});
    });
    QTest::mouseClick(&button, Qt::LeftButton);
    QTest::mouseClick(&button, Qt::RightButton);
    EXPECT_EQ(pressed, (QVector<QPair<int, bool>>{{2, false}, {2, false}}));
    EXPECT_EQ(released, (QVector<QPair<int, bool>>{{2, true}, {2, false}}));
}

TEST(QImageButtonTest, TheTextChangesItsColourUnderTheMouse)
{
    QImageButton button(false);
    button.SetBtnTextColor(Qt::blue);
    EXPECT_EQ(TextColor(button), QColor(Qt::blue));
    button.SetOnBtnTextColor(Qt::red);
    EXPECT_EQ(TextColor(button), QColor(Qt::blue));
    Send(button, QEvent::Enter);
    EXPECT_EQ(TextColor(button), QColor(Qt::red));
    Send(button, QEvent::Leave);
    EXPECT_EQ(TextColor(button), QColor(Qt::blue));
}

TEST(QImageButtonTest, TheTextColourIsBlackAfterHoveringUnlessOneWasSet)
{
    QImageButton button(false);
    button.SetOnBtnTextColor(Qt::red);
    Send(button, QEvent::Enter);
    Send(button, QEvent::Leave);
    EXPECT_EQ(TextColor(button), QColor(Qt::black));
}

TEST(QImageButtonTest, WithoutAHoverColourTheTextKeepsItsColourUnderTheMouse)
{
    QImageButton plain(false);
    const QPalette original = plain.palette();
    QImageButton coloured(false);
    coloured.SetBtnTextColor(Qt::blue);
    for (const QEvent::Type type : {QEvent::Enter, QEvent::Leave}) {
        Send(plain, type);
        Send(coloured, type);
        EXPECT_EQ(plain.palette(), original);
        EXPECT_EQ(TextColor(coloured), QColor(Qt::blue));
    }
}

TEST(QImageButtonTest, TheMenuIsThereForClicksAfterSetMenuOnly)
{
    QImageButton button(false);
    EXPECT_EQ(button.AddMenu("One", false, 0), 0);
    EXPECT_EQ(button.menu(), nullptr);
    button.SetMenu();
    ASSERT_NE(button.menu(), nullptr);
    EXPECT_EQ(button.AddMenu("Two", true, 0), 1);
    ASSERT_EQ(button.menu()->actions().size(), 2);
    EXPECT_EQ(MenuItem(button, 0)->text(), "One");
    EXPECT_FALSE(MenuItem(button, 0)->isCheckable());
    EXPECT_TRUE(MenuItem(button, 1)->isCheckable());
}

TEST(QImageButtonTest, AnEmptyTextIsASeparatorWithAnIndexOfItsOwn)
{
    QImageButton button(false);
    button.SetMenu();
    button.AddMenu("One", false, 0);
    EXPECT_EQ(button.AddMenu("", false, 0), 1);
    EXPECT_EQ(button.AddMenu("Two", false, 0), 2);
    EXPECT_FALSE(MenuItem(button, 0)->isSeparator());
    EXPECT_TRUE(MenuItem(button, 1)->isSeparator());
}

TEST(QImageButtonTest, AnItemChosenInTheOpenMenuIsTold)
{
    QImageButton button(false);
    button.SetBtnIndex(4);
    button.AddMenu("One", true, -3);
    button.SetMenu();
    const QSignalSpy triggered(&button, &QImageButton::SigMenuTriggered);
    QTest::mouseClick(button.menu(), Qt::LeftButton, Qt::NoModifier,
                      button.menu()->actionGeometry(MenuItem(button, 0)).center());
    ASSERT_EQ(triggered.size(), 1);
    EXPECT_EQ(triggered[0], Triggered(4, 0, -3, true));
}

TEST(QImageButtonTest, ItemsOfOneChannelExcludeEachOther)
{
    QImageButton button(false);
    button.SetMenu();
    for (const char* const text : {"One", "Two", "Three"})
        button.AddMenu(text, true, 5);
    button.AddMenu("Other group", true, 6);
    button.AddMenu("No group", true, 0);
    for (const int index : {0, 2, 3, 4})
        button.SetMenuChecked(index, true);

    const QSignalSpy triggered(&button, &QImageButton::SigMenuTriggered);
    MenuItem(button, 1)->trigger();
    EXPECT_FALSE(button.GetMenuCheckd(0));
    EXPECT_TRUE(button.GetMenuCheckd(1));
    EXPECT_FALSE(button.GetMenuCheckd(2));
    EXPECT_TRUE(button.GetMenuCheckd(3));
    EXPECT_TRUE(button.GetMenuCheckd(4));
    ASSERT_EQ(triggered.size(), 1);
    EXPECT_EQ(triggered[0], Triggered(-1, 1, 5, true));

    MenuItem(button, 1)->trigger(); // The checked one: it stays so, and nothing is told.
    EXPECT_TRUE(button.GetMenuCheckd(1));
    EXPECT_EQ(triggered.size(), 1);
}

TEST(QImageButtonTest, AnItemIsToldWhenTheOthersOfItsChannelAreUnchecked)
{
    QImageButton button(false);
    button.SetMenu();
    button.AddMenu("One", true, 5);
    button.AddMenu("Two", true, 5);
    button.SetMenuChecked(0, true);
    std::vector<bool> firstWhenTold;
    QObject::connect(&button, &QImageButton::SigMenuTriggered,
                     [&] { firstWhenTold.push_back(button.GetMenuCheckd(0)); });
    MenuItem(button, 1)->trigger();
    EXPECT_EQ(firstWhenTold, std::vector{false});
}

TEST(QImageButtonTest, ItemsWithoutAChannelAreIndependent)
{
    QImageButton button(false);
    button.SetMenu();
    for (const int channel : {0, 0, -5, -5})
        button.AddMenu("Item", true, channel);
    const QSignalSpy triggered(&button, &QImageButton::SigMenuTriggered);
    for (int index = 0; index < 4; ++index)
        MenuItem(button, index)->trigger();
    MenuItem(button, 0)->trigger();
    EXPECT_FALSE(button.GetMenuCheckd(0));
    for (int index = 1; index < 4; ++index)
        EXPECT_TRUE(button.GetMenuCheckd(index)) << index;
    ASSERT_EQ(triggered.size(), 5);
    EXPECT_EQ(triggered[3], Triggered(-1, 3, -5, true));
    EXPECT_EQ(triggered[4], Triggered(-1, 0, 0, false));
}

TEST(QImageButtonTest, AnIndexWithoutAnItemIsIgnored)
{
    QImageButton button(false);
    button.SetMenu();
    button.AddMenu("One", true, 0);
    const QSignalSpy triggered(&button, &QImageButton::SigMenuTriggered);
    for (const int index : {-1, 1, 1000}) {
        button.SetMenuChecked(index, true);
        button.SetMenuActionEnable(index, false);
        button.OnMenuTriggered(index, 0, true);
        EXPECT_FALSE(button.GetMenuCheckd(index)) << index;
    }
    EXPECT_FALSE(button.GetMenuCheckd(0));
    EXPECT_TRUE(MenuItem(button, 0)->isEnabled());
    EXPECT_EQ(triggered.size(), 0);
}

TEST(QImageButtonTest, AnItemCanBeDisabled)
{
    QImageButton button(false);
    button.SetMenu();
    button.AddMenu("One", false, 0);
    button.SetMenuActionEnable(0, false);
    EXPECT_FALSE(MenuItem(button, 0)->isEnabled());
    button.SetMenuActionEnable(0, true);
    EXPECT_TRUE(MenuItem(button, 0)->isEnabled());
}

TEST(QImageButtonTest, TheMenuAndItsItemsGoWithTheButton)
{
    QPointer<QMenu> menu;
    QPointer<QAction> item;
    {
        QImageButton button(false);
        button.AddMenu("One", false, 0);
        button.SetMenu();
        menu = button.menu();
        item = MenuItem(button, 0);
    }
    EXPECT_TRUE(menu.isNull());
    EXPECT_TRUE(item.isNull());
}
