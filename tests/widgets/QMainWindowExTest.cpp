// SPDX-License-Identifier: Apache-2.0
#include "widgets/QMainWindowEx.h"

#include "tests/support/WindowActions.h"
#include "tests/widgets/WindowProbe.h"
#include "widgets/QImageButton.h"
#include "widgets/QTitleBar.h"

#include <QBoxLayout>
#include <QPushButton>
#include <QSizeGrip>
#include <QTest>

#include <gtest/gtest.h>

namespace {

struct Piece
{
    const char* name;
    QRect place; ///< In a window of 400 x 300 pixels.
    QColor middle;
};

} // namespace

TEST(QMainWindowExTest, IsATopLevelWindowWithoutAFrame)
{
    QWidget parent;
    const QMainWindowEx window(&parent, true);
    EXPECT_EQ(window.parentWidget(), nullptr);
    EXPECT_EQ(window.windowFlags(), Qt::Window | Qt::FramelessWindowHint | Qt::WindowSystemMenuHint |
                                        Qt::WindowMinimizeButtonHint | Qt::WindowMaximizeButtonHint);
    EXPECT_EQ(window.objectName(), "QMainWindowEx");
    EXPECT_EQ(window.styleSheet(), "#QMainWindowEx{\t\t\t\t\t background-color: rgb(255, 255, 255);}");
    EXPECT_EQ(ownSignals(QMainWindowEx::staticMetaObject), QStringList{});
    EXPECT_EQ(ownSlots(QMainWindowEx::staticMetaObject),
              (QStringList{"OnTitleButtonClicked(int)", "resizeEvent(QResizeEvent*)",
                           "keyPressEvent(QKeyEvent*)"}));
}

TEST(QMainWindowExTest, ThePiecesOfTheFrameLieAroundTheContent)
{
    QMainWindowEx window(nullptr, true);
    window.resize(400, 300);
    const QImage picture = window.grab().toImage();
    EXPECT_EQ(window.findChild<QTitleBar*>()->geometry(), QRect(6, 0, 388, 32));
    for (const auto& [name, place, middle] : {
             Piece{"MainContentLeft", {0, 32, 1, 267}, Qt::black},
             Piece{"MainContentMid", {1, 32, 398, 267}, Qt::white},
             Piece{"MianContentRight", {399, 32, 1, 267}, Qt::black},
             Piece{"Mainbottommidnon", {0, 299, 400, 1}, Qt::black},
         }) {
        const auto* const piece = window.findChild<QWidget*>(name);
        ASSERT_NE(piece, nullptr) << name;
        EXPECT_EQ(piece->geometry(), place) << name;
        EXPECT_EQ(picture.pixelColor(place.center()), middle) << name;
    }
    for (const auto& [name, place, side] : {std::tuple{"maintitleleft", QRect(0, 0, 6, 32), "left"},
                                            std::tuple{"maintitleright", QRect(394, 0, 6, 32), "right"}}) {
        const auto* const piece = window.findChild<QWidget*>(name);
        ASSERT_NE(piece, nullptr) << name;
        EXPECT_EQ(piece->geometry(), place) << name;
        EXPECT_TRUE(piece->styleSheet().contains(QStringLiteral("dialog_title_%1.png").arg(side)));
    }
}

TEST(QMainWindowExTest, TheTitleIsTheBarsAndTheWindows)
{
    QMainWindowEx window(nullptr, true);
    QString title = QStringLiteral("IP Configurator");
    window.SetTitleText(title);
    EXPECT_EQ(title, "IP Configurator");
    EXPECT_EQ(window.windowTitle(), "IP Configurator");
    EXPECT_EQ(window.findChild<QTitleBar*>()->windowTitle(), "IP Configurator");
    EXPECT_EQ(window.MenuBar(), window.findChild<QTitleBar*>()->MenuBar());
}

TEST(QMainWindowExTest, HasAMinimiseButtonWhenItIsToHaveOne)
{
    for (const bool shown : {true, false}) {
        QMainWindowEx window(nullptr, shown);
        const QWidget* const button = buttonShowing(window, "min");
        EXPECT_EQ(button && button->isVisibleTo(&window), shown);
    }
}

TEST(QMainWindowExTest, TheContentIsLaidOutByWhatItIsGiven)
{
    QMainWindowEx window(nullptr, true);
    window.SetLayoutEx(nullptr);
    auto* const layout = new QVBoxLayout;
    auto* const button = new QPushButton;
    layout->addWidget(button);
    window.SetLayoutEx(layout);
    EXPECT_EQ(button->parentWidget()->objectName(), "MainContentMid");
    EXPECT_EQ(button->window(), &window);
}

TEST(QMainWindowExTest, TheSizeGripGoesWhileTheWindowFillsTheScreen)
{
    QMainWindowEx window(nullptr, true);
    EXPECT_TRUE(window.isSizeGripEnabled());
    for (const auto& [code, enabled] : {std::pair{3, true}, {0, false}, {2, false}, {1, true}, {-1, true}}) {
        emit window.findChild<QTitleBar*>()->SigTitleButtonClicked(code);
        EXPECT_EQ(window.isSizeGripEnabled(), enabled) << code;
    }
}

TEST(QMainWindowExTest, TheSizeGripCanBeHitInTheCornerOfTheContent)
{
    QMainWindowEx window(nullptr, true);
    auto* const layout = new QVBoxLayout;
    layout->addWidget(new QPushButton);
    window.SetLayoutEx(layout);
    window.resize(400, 300);
    window.grab();
    EXPECT_NE(qobject_cast<QSizeGrip*>(window.childAt(396, 296)), nullptr);
}

TEST(QMainWindowExTest, EscapeDoesNothingAndOtherKeysHaveTheirEffect)
{
    QMainWindowEx window(nullptr, true);
    auto* const layout = new QVBoxLayout;
    auto* const button = new QPushButton;
    button->setDefault(true);
    layout->addWidget(button);
    window.SetLayoutEx(layout);
    int clicks = 0;
    QObject::connect(button, &QPushButton::clicked, [&clicks] { ++clicks; });
    ASSERT_TRUE(showActive(window));
    QTest::keyClick(&window, Qt::Key_Escape);
    EXPECT_TRUE(window.isVisible());
    QTest::keyClick(&window, Qt::Key_Return);
    EXPECT_EQ(clicks, 1);
}
