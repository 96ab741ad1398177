// SPDX-License-Identifier: Apache-2.0
#include "widgets/QTitleBar.h"

#include "tests/support/WindowActions.h"
#include "tests/widgets/NamingTranslator.h"
#include "tests/widgets/ScriptedUname.h"
#include "tests/widgets/WindowProbe.h"
#include "widgets/QImageButton.h"

#include <QBoxLayout>
#include <QLabel>
#include <QMenuBar>
#include <QScreen>
#include <QSignalSpy>
#include <QTest>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::ElementsAre;

namespace {

/// A window that has nothing but a title bar, at its very top.
class Owner : public QWidget
{
public:
    explicit Owner(bool showMinButton) : bar(*new QTitleBar(this, showMinButton))
    {
        setWindowFlags(Qt::FramelessWindowHint);
        auto* const layout = new QVBoxLayout(this);
        layout->setContentsMargins(0, 0, 0, 0);
        layout->addWidget(&bar);
        layout->addStretch();
        resize(600, 400);
    }

    QTitleBar& bar;
};

QRect available()
{
    return QGuiApplication::primaryScreen()->availableGeometry();
}

QVector<int> codes(const QSignalSpy& spy)
{
    QVector<int> numbers;
    for (const QVariantList& arguments : spy)
        numbers.append(arguments.at(0).toInt());
    return numbers;
}

struct Look
{
    bool ubuntu;
    bool showMinButton;
    QRect close;
    QRect minimise;
};

void PrintTo(const Look& look, std::ostream* stream)
{
    *stream << (look.ubuntu ? "Ubuntu" : "other") << (look.showMinButton ? ", with minimise" : "");
}

class TitleBarLookTest : public testing::TestWithParam<Look>
{};

} // namespace

TEST(QTitleBarTest, ItsSignalsAndSlotsAreFoundByName)
{
    EXPECT_EQ(ownSignals(QTitleBar::staticMetaObject), QStringList{"SigTitleButtonClicked(int)"});
    EXPECT_EQ(ownSlots(QTitleBar::staticMetaObject),
              (QStringList{"OnClickedMinSize()", "OnClickedMaxSize()", "OnClickedClose()",
                           "OnPressedMinSize(int)", "OnPressedMaxSize(int)", "OnPressedClose(int)"}));
}

TEST(QTitleBarTest, IsMadeWithoutAParent)
{
    QWidget parent;
    const QTitleBar bar(&parent, true);
    EXPECT_EQ(bar.parentWidget(), nullptr);
    EXPECT_EQ(bar.windowFlags() & ~Qt::WindowType_Mask, Qt::FramelessWindowHint);
    EXPECT_EQ(bar.height(), 32);
    EXPECT_EQ(bar.sizePolicy(), QSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed));
    for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled})
        EXPECT_EQ(bar.palette().color(group, QPalette::Window), QColor(62, 134, 227));
    EXPECT_TRUE(bar.autoFillBackground());
}

TEST_P(TitleBarLookTest, TheButtonsLieAtTheSystemsSideAndCanBeHit)
{
    const auto& [ubuntu, showMinButton, closePlace, minimisePlace] = GetParam();
    const ScriptedUname uname = ubuntu ? ScriptedUname::ubuntu() : ScriptedUname::other();
    Owner owner(showMinButton);
    QString title = QStringLiteral("IP Configurator");
    owner.bar.SetTitleText(title);
    owner.grab(); // Lays out what is not shown.

    auto* const close = buttonShowing(owner, "title_close");
    EXPECT_EQ(placeOf(*close), closePlace);
    EXPECT_EQ(owner.childAt(closePlace.center()), close);
    auto* const minimise = buttonShowing(owner, "min");
    if (showMinButton) {
        EXPECT_EQ(placeOf(*minimise), minimisePlace);
        EXPECT_EQ(owner.childAt(minimisePlace.center()), minimise);
    } else {
        EXPECT_TRUE(!minimise || !minimise->isVisibleTo(&owner));
    }
    EXPECT_FALSE(buttonShowing(owner, "recovery")->isVisibleTo(&owner));
    const auto* const label = qobject_cast<QLabel*>(owner.childAt(ubuntu ? 100 : 10, 16));
    ASSERT_NE(label, nullptr);
    EXPECT_EQ(label->text(), "IP Configurator");
}

INSTANTIATE_TEST_SUITE_P(Layouts, TitleBarLookTest,
                         testing::Values(Look{true, true, {0, 1, 30, 30}, {30, 1, 30, 30}},
                                         Look{true, false, {0, 1, 30, 30}, {}},
                                         Look{false, true, {570, 1, 30, 30}, {540, 1, 30, 30}},
                                         Look{false, false, {570, 1, 30, 30}, {}}));

TEST(QTitleBarTest, ThePiecesHaveTheirLook)
{
    Owner owner(true);
    QString title = QStringLiteral("<i>Title</i>");
    owner.bar.SetTitleText(title);
    EXPECT_EQ(title, "<i>Title</i>");
    EXPECT_EQ(owner.bar.windowTitle(), title);
    owner.grab();

    const auto* const background = owner.findChild<QLabel*>("mainback");
    ASSERT_NE(background, nullptr);
    EXPECT_EQ(background->styleSheet(),
              "#mainback{border-image: url(:/Dorn/Resources/dialog/dialog_title_middle.png);}");
    EXPECT_EQ(background->geometry(), QRect(0, 0, 600, 32));

    const QLabel* label = nullptr;
    for (const QLabel* const one : owner.findChildren<QLabel*>())
        label = one->text() == title ? one : label;
    ASSERT_NE(label, nullptr);
    EXPECT_EQ(label->textFormat(), Qt::PlainText);
    EXPECT_EQ(label->height(), 32);
    EXPECT_EQ(label->styleSheet(), "QLabel{color:white;                                 "
                                   "font-size:14px;                                 "
                                   "font-family: Segoe UI;}");
    EXPECT_EQ(label->palette().color(QPalette::WindowText), QColor(Qt::white));

    for (const char* const picture : {"min", "title_close", "recovery"}) {
        const QImageButton* const button = buttonShowing(owner, picture);
        ASSERT_NE(button, nullptr) << picture;
        EXPECT_EQ(button->focusPolicy(), Qt::NoFocus);
        EXPECT_EQ(button->minimumSize(), QSize(30, 30));
        EXPECT_EQ(button->maximumSize(), QSize(30, 30));
        for (const char* const state : {"", "_hov", "_sel", "_dis"})
            EXPECT_EQ(buttonShowing(owner, QLatin1String(picture) + QLatin1String(state)), button);
    }
}

TEST(QTitleBarTest, TheMenuBarIsTheOwnersToFillAndHidesNothingUntilItIsPlaced)
{
    Owner owner(true);
    QMenuBar* const menuBar = owner.bar.MenuBar();
    EXPECT_EQ(menuBar->parentWidget(), &owner.bar);
    EXPECT_EQ(menuBar->objectName(), "menubar");
    EXPECT_EQ(menuBar->height(), 22);
    EXPECT_EQ(menuBar->styleSheet(), "#menubar{background-color:#3e86e3;}"
                                     "#menubar::item{color:white;                                       "
                                     "background-color:#3e86e3}"
                                     "#menubar::item:selected{background: #4c9ce8;}"
                                     "#menubar::item:pressed{background: #2979c5;}");
    owner.grab();
    EXPECT_NE(owner.childAt(5, 5), menuBar);
}

TEST(QTitleBarTest, TheButtonsHaveNamesForThoseWhoDoNotSeeThemInTheLanguageOfNow)
{
    Owner owner(true);
    EXPECT_EQ(buttonShowing(owner, "min")->accessibleName(), "Minimize");
    EXPECT_EQ(buttonShowing(owner, "title_close")->accessibleName(), "Close");
    const NamingTranslator translator;
    QCoreApplication::processEvents();
    EXPECT_EQ(buttonShowing(owner, "min")->accessibleName(), "QTitleBar: Minimize");
    EXPECT_EQ(buttonShowing(owner, "title_close")->accessibleName(), "QTitleBar: Close");
}

TEST(QTitleBarTest, MinimisesOnThePressAndTellsOnTheClick)
{
    Owner owner(true);
    ASSERT_TRUE(showActive(owner));
    const QSignalSpy told(&owner.bar, &QTitleBar::SigTitleButtonClicked);
    QImageButton* const minimise = buttonShowing(owner, "min");
    QTest::mousePress(minimise, Qt::LeftButton);
    EXPECT_TRUE(owner.isMinimized());
    EXPECT_EQ(told.size(), 0);
    QTest::mouseRelease(minimise, Qt::LeftButton);
    EXPECT_EQ(codes(told), QVector<int>{2});
}

TEST(QTitleBarTest, AMinimisedWindowComesBackWithItsButtonReleased)
{
    Owner owner(true);
    owner.move(100, 100);
    ASSERT_TRUE(showActive(owner));
    QImageButton* const minimise = buttonShowing(owner, "min");
    ASSERT_TRUE(movePointer(minimise->mapToGlobal(QPoint(15, 15))));
    ASSERT_TRUE(pressPointer());
    ASSERT_TRUE(eventually([&] { return owner.isMinimized(); }));
    ASSERT_TRUE(releasePointer());
    ASSERT_TRUE(movePointer({900, 900}));
    owner.showNormal();
    ASSERT_TRUE(showActive(owner));
    EXPECT_FALSE(minimise->isDown());
    EXPECT_FALSE(minimise->underMouse());
}

TEST(QTitleBarTest, CloseTellsThenClosesTheWindow)
{
    Owner owner(true);
    ASSERT_TRUE(showActive(owner));
    QVector<int> told;
    QObject::connect(&owner.bar, &QTitleBar::SigTitleButtonClicked, [&](int nType) {
        told.append(nType);
        EXPECT_TRUE(owner.isVisible());
    });
    QTest::mouseClick(buttonShowing(owner, "title_close"), Qt::LeftButton);
    EXPECT_EQ(told, QVector<int>{3});
    EXPECT_FALSE(owner.isVisible());
}

TEST(QTitleBarTest, FillsTheScreenAndComesBackToWhereTheWindowWas)
{
    Owner owner(true);
    owner.setGeometry(100, 120, 640, 480);
    ASSERT_TRUE(showActive(owner));
    ASSERT_TRUE(eventually([&] { return owner.geometry() == QRect(100, 120, 640, 480); }));
    const QSignalSpy told(&owner.bar, &QTitleBar::SigTitleButtonClicked);
    const QImageButton* const button = buttonShowing(owner, "recovery");

    owner.bar.OnClickedMaxSize();
    EXPECT_TRUE(eventually([&] { return owner.geometry() == available(); }));
    EXPECT_TRUE(owner.bar.IsMaximized());
    EXPECT_FALSE(owner.isMaximized());
    EXPECT_FALSE(button->IsChecked());

    owner.bar.OnClickedMaxSize();
    EXPECT_TRUE(eventually([&] { return owner.geometry() == QRect(100, 120, 640, 480); }));
    EXPECT_FALSE(owner.bar.IsMaximized());
    EXPECT_TRUE(button->IsChecked());
    EXPECT_TRUE(button->styleSheet().contains("dialog/max.png"));
    EXPECT_EQ(codes(told), (QVector<int>{0, 1}));
}

TEST(QTitleBarTest, TellsThatItMaximisesOrRestoresBeforeItDoes)
{
    Owner owner(true);
    owner.setGeometry(100, 120, 640, 480);
    std::vector<std::pair<int, QRect>> told;
    QObject::connect(&owner.bar, &QTitleBar::SigTitleButtonClicked,
                     [&](int code) { told.emplace_back(code, owner.geometry()); });
    owner.bar.OnClickedMaxSize();
    owner.bar.OnClickedMaxSize();
    EXPECT_THAT(told, ElementsAre(std::pair(0, QRect(100, 120, 640, 480)), std::pair(1, available())));
}

TEST(QTitleBarTest, AWindowThatFillsTheScreenByItselfIsRestoredToADefault)
{
    Owner owner(true);
    owner.setGeometry(available());
    ASSERT_TRUE(showActive(owner));
    ASSERT_TRUE(eventually([&] { return owner.bar.IsMaximized(); }));
    owner.bar.OnClickedMaxSize();
    EXPECT_TRUE(eventually([&] { return owner.geometry() == QRect(0, 0, 1024, 768); }));
}

TEST(QTitleBarTest, FillsTheScreenOnlyWhenItDoesSoExactly)
{
    Owner owner(true);
    owner.setGeometry(available().adjusted(0, 0, -1, 0));
    EXPECT_FALSE(owner.bar.IsMaximized());
}
