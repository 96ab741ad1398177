// SPDX-License-Identifier: Apache-2.0
#include "widgets/QDialogEx.h"

#include "tests/support/WindowActions.h"
#include "tests/widgets/NamingTranslator.h"
#include "tests/widgets/ScriptedUname.h"
#include "tests/widgets/WindowProbe.h"
#include "widgets/QImageButton.h"

#include <QBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::ElementsAre;

namespace {

QString SheetOf(const QWidget& window, const char* name)
{
    return window.findChild<QWidget*>(name)->styleSheet();
}

struct Strip
{
    int style;
    int height;
    std::vector<const char*> names; ///< Left, middle, right.
    std::vector<QString> sheets;
};

void PrintTo(const Strip& strip, std::ostream* stream)
{
    *stream << "style " << strip.style;
}

class BottomStripTest : public testing::TestWithParam<Strip>
{};

} // namespace

TEST(QDialogExTest, IsAWindowWithoutAFrameAlsoWithAParent)
{
    QWidget parent;
    const QDialogEx dialog(0, &parent);
    EXPECT_EQ(dialog.parentWidget(), &parent);
    EXPECT_EQ(dialog.windowFlags(), Qt::Window | Qt::FramelessWindowHint);
    EXPECT_TRUE(dialog.isWindow());
}

TEST(QDialogExTest, ItsSignalsAndSlotsAreFoundByName)
{
    EXPECT_EQ(ownSignals(QDialogEx::staticMetaObject), QStringList{"SigMoveDialog(QPoint)"});
    EXPECT_EQ(ownSlots(QDialogEx::staticMetaObject),
              (QStringList{"OnClickedClose()", "OnPressedClose(int)", "keyPressEvent(QKeyEvent*)"}));
}

TEST_P(BottomStripTest, IsBuiltAndLaidOutByItsStyle)
{
    const auto& [style, height, names, sheets] = GetParam();
    QDialogEx dialog(style, nullptr);
    dialog.resize(300, 200);
    dialog.grab(); // Lays out what is not shown.
    const int top = 200 - height;
    const int corner = style == 0 ? 1 : 6;
    const std::vector<QRect> places = {{0, top, corner, height},
                                       {corner, top, 300 - 2 * corner, height},
                                       {300 - corner, top, corner, height}};
    for (size_t index = 0; index < names.size(); ++index) {
        const auto* const piece = dialog.findChild<QWidget*>(names[index]);
        ASSERT_NE(piece, nullptr) << names[index];
        EXPECT_EQ(piece->geometry(), places[index]) << names[index];
        EXPECT_EQ(piece->styleSheet(), sheets[index]);
    }
    EXPECT_EQ(dialog.GetBottomWidget(), names.empty() ? nullptr : dialog.findChild<QWidget*>(names[1]));
    EXPECT_EQ(dialog.findChild<QWidget*>("ContentMid")->geometry(), QRect(1, 30, 298, 170 - height));
}

const std::vector<QString> LightSheets = {
    "#bottomleftlight{border-image: url(:/Dorn/Resources/dialog/dialog_bottom_left.png);}",
    "#bottommidlight{border-image: url(:/Dorn/Resources/dialog/dialog_bottom_middle.png);}",
    "#bottomrightlight{border-image: url(:/Dorn/Resources/dialog/dialog_bottom_right.png);}"};
const std::vector<QString> DarkSheets = {
    "#bottomleftlight{border-image: url(:/Dorn/Resources/dialog/dialog_bottom2_left.png);}",
    "#bottommidlight{border-image: url(:/Dorn/Resources/dialog/dialog_bottom2_middle.png);}",
    "#bottomrightlight{border-image: url(:/Dorn/Resources/dialog/dialog_bottom2_right.png);}"};
const std::vector<QString> ThinSheets = {"#bottomleftNon{background-color:rgb(195, 195, 195);}",
                                         "#bottommidnon{background-color:rgb(195, 195, 195);}",
                                         "#bottomrightnon{background-color:rgb(195, 195, 195);}"};

INSTANTIATE_TEST_SUITE_P(
    Styles, BottomStripTest,
    testing::Values(Strip{0, 1, {"bottomleftNon", "bottommidnon", "bottomrightnon"}, ThinSheets},
                    Strip{1, 52, {"bottomleftdark", "bottommiddark", "bottomrightdark"}, DarkSheets},
                    Strip{2, 52, {"bottomleftlight", "bottommidlight", "bottomrightlight"}, LightSheets},
                    Strip{3, 0, {}, {}}, Strip{-1, 0, {}, {}}));

TEST(QDialogExTest, TheDarkStripShowsThePlainBackground)
{
    QDialogEx dialog(1, nullptr);
    dialog.resize(300, 200);
    const QImage picture = dialog.grab().toImage();
    const QColor plain = dialog.palette().color(QPalette::Window);
    for (const QPoint point : {QPoint(0, 199), QPoint(150, 149), QPoint(150, 174), QPoint(299, 199)})
        EXPECT_EQ(picture.pixelColor(point), plain) << point.x() << ", " << point.y();
    EXPECT_EQ(picture.pixelColor(150, 147), QColor(244, 244, 244));
}

TEST(QDialogExTest, ThePiecesOfTheFrameLieAroundTheContent)
{
    QDialogEx dialog(0, nullptr);
    dialog.resize(300, 200);
    dialog.grab();
    EXPECT_EQ(dialog.findChild<QWidget*>("ContentLeft")->geometry(), QRect(0, 30, 1, 169));
    EXPECT_EQ(dialog.findChild<QWidget*>("ContentRight")->geometry(), QRect(299, 30, 1, 169));
    EXPECT_EQ(SheetOf(dialog, "ContentLeft"), "#ContentLeft{background-color:rgb(195, 195, 195);}");
    EXPECT_EQ(SheetOf(dialog, "ContentMid"), "#ContentMid{background-color:rgb(244, 244, 244);}");
    EXPECT_EQ(SheetOf(dialog, "ContentRight"), "#ContentRight{background-color:rgb(195, 195, 195);}");
    EXPECT_EQ(dialog.childAt(3, 15)->geometry(), QRect(0, 0, 6, 30));
    EXPECT_EQ(dialog.childAt(296, 15)->geometry(), QRect(294, 0, 6, 30));
    EXPECT_EQ(dialog.GetCloseBtn()->parentWidget()->geometry(), QRect(6, 0, 288, 30));
    EXPECT_EQ(dialog.GetBtnLayout()->parentWidget(), dialog.GetCloseBtn()->parentWidget());
}

TEST(QDialogExTest, TheTitleStripIsMadeOfItsThreePictures)
{
    QDialogEx dialog(0, nullptr);
    dialog.resize(300, 200);
    const QImage seen = dialog.grab().toImage().convertToFormat(QImage::Format_RGB32);
    for (const auto& [side, x] : {std::pair{"left", 0}, {"middle", 100}, {"right", 294}}) {
        const QImage picture(QStringLiteral(":/Dorn/Resources/dialog/dialog_title_%1.png").arg(side));
        ASSERT_EQ(picture.size(), QSize(6, 30));
        const QImage part = seen.copy(x, 0, 6, 30);
        for (int y = 0; y < 30; ++y) {
            for (int column = 0; column < 6; ++column) {
                if (picture.pixelColor(column, y).alpha() == 255) {
                    EXPECT_EQ(part.pixelColor(column, y), picture.pixelColor(column, y))
                        << side << ": " << column << ", " << y;
                }
            }
        }
    }
}

TEST(QDialogExTest, TheCloseButtonIsOnTheLeftOnUbuntuAndOnTheRightElsewhere)
{
    for (const bool ubuntu : {true, false}) {
        const ScriptedUname uname = ubuntu ? ScriptedUname::ubuntu() : ScriptedUname::other();
        QDialogEx dialog(0, nullptr);
        QString title = QStringLiteral("Title");
        dialog.SetTitleText(title);
        dialog.resize(300, 200);
        dialog.grab();
        EXPECT_EQ(placeOf(*dialog.GetCloseBtn()), ubuntu ? QRect(6, 0, 30, 30) : QRect(264, 0, 30, 30));
        EXPECT_EQ(dialog.GetCloseBtn()->focusPolicy(), Qt::NoFocus);
        const auto* const label =
            qobject_cast<QLabel*>(dialog.GetBtnLayout()->itemAt(ubuntu ? 1 : 0)->widget());
        ASSERT_NE(label, nullptr);
        EXPECT_EQ(label->text(), " Title");
        EXPECT_EQ(placeOf(*label).left() > 36, ubuntu);
    }
}

TEST(QDialogExTest, TheCloseButtonHasAPictureForEachState)
{
    const QDialogEx dialog(0, nullptr);
    const QString name = dialog.GetCloseBtn()->objectName();
    EXPECT_EQ(
        dialog.GetCloseBtn()->styleSheet().replace(name, "N"),
        "#N{border-image:url(:/Dorn/Resources/dialog/title_close.png) 5; border-width: 5;}"
        "#N:hover{border-image:url(:/Dorn/Resources/dialog/title_close_hov.png) 5; border-width: 5;} "
        "#N:pressed{border-image:url(:/Dorn/Resources/dialog/title_close_sel.png) 5; border-width: 5;}"
        "#N:disabled{border-image:url(:/Dorn/Resources/dialog/title_close_dis.png) 5; border-width: 5;}");
}

TEST(QDialogExTest, EachSettingOfATitlePutsABlankMoreInFrontOfTheCallersText)
{
    QDialogEx dialog(0, nullptr);
    QString title = QStringLiteral("<b>Title</b>");
    dialog.SetTitleText(title);
    EXPECT_EQ(title, " <b>Title</b>");
    dialog.SetTitleText(title);
    EXPECT_EQ(title, "  <b>Title</b>");
    EXPECT_EQ(dialog.windowTitle(), "  <b>Title</b>");
    const auto* const label = qobject_cast<QLabel*>(dialog.GetBtnLayout()->itemAt(0)->widget());
    ASSERT_NE(label, nullptr);
    EXPECT_EQ(label->text(), "  <b>Title</b>");
    EXPECT_EQ(label->textFormat(), Qt::PlainText);
}

TEST(QDialogExTest, TheTitleIsWhiteWhetherTheDialogIsActiveOrNot)
{
    QDialogEx dialog(0, nullptr);
    QString title = QStringLiteral("Title");
    dialog.SetTitleText(title);
    dialog.resize(300, 200);
    auto* const label = dialog.GetBtnLayout()->itemAt(0)->widget();
    ASSERT_TRUE(showActive(dialog));
    const auto looks = [&] {
        EXPECT_EQ(label->palette().color(QPalette::WindowText), QColor(Qt::white));
        return label->grab().toImage();
    };
    const QImage active = looks();
    dialog.SetDeactivateDilog();
    EXPECT_EQ(looks(), active);
    bool hasWhite = false;
    for (int y = 0; y < active.height(); ++y) {
        for (int x = 0; x < active.width(); ++x) {
            hasWhite |= active.pixelColor(x, y) == QColor(Qt::white);
            EXPECT_GT(active.pixelColor(x, y).blue(), 200) << x << ", " << y; // Nothing is dark.
        }
    }
    EXPECT_TRUE(hasWhite);
}

TEST(QDialogExTest, TheCloseButtonHasANameForThoseWhoDoNotSeeItInTheLanguageOfNow)
{
    QDialogEx dialog(0, nullptr);
    EXPECT_EQ(dialog.GetCloseBtn()->accessibleName(), "Close");
    const NamingTranslator translator;
    QCoreApplication::processEvents();
    EXPECT_EQ(dialog.GetCloseBtn()->accessibleName(), "QDialogEx: Close");
}

TEST(QDialogExTest, TheContentIsLaidOutByWhatItIsGiven)
{
    QDialogEx dialog(0, nullptr);
    dialog.SetLayoutEx(nullptr);
    auto* const layout = new QVBoxLayout;
    auto* const button = new QPushButton;
    layout->addWidget(button);
    dialog.SetLayoutEx(layout);
    EXPECT_EQ(button->parentWidget()->objectName(), "ContentMid");
    EXPECT_EQ(button->window(), &dialog);
    dialog.resize(300, 200);
    dialog.grab();
    EXPECT_TRUE(QRect(1, 30, 298, 169).contains(placeOf(*button)));
}

TEST(QDialogExTest, AskingForTheContentsGeometryFixesItsSize)
{
    QDialogEx dialog(0, nullptr);
    dialog.resize(300, 200);
    EXPECT_EQ(dialog.geometryEx().size(), QSize(294, 168));
    const auto* const content = dialog.findChild<QWidget*>("ContentMid");
    EXPECT_EQ(content->minimumSize(), QSize(294, 168));
    EXPECT_EQ(content->maximumSize(), QSize(294, 168));
    EXPECT_EQ(dialog.winIdEx(), content->winId());
    EXPECT_NE(dialog.winIdEx(), dialog.winId());
}

TEST(QDialogExTest, EscapeDoesNothingAndOtherKeysHaveTheirEffect)
{
    QDialogEx dialog(0, nullptr);
    auto* const layout = new QVBoxLayout;
    auto* const button = new QPushButton;
    button->setDefault(true);
    layout->addWidget(button);
    dialog.SetLayoutEx(layout);
    int clicks = 0;
    QObject::connect(button, &QPushButton::clicked, [&clicks] { ++clicks; });
    ASSERT_TRUE(showActive(dialog));
    QTest::keyClick(&dialog, Qt::Key_Escape);
    EXPECT_TRUE(dialog.isVisible());
    QTest::keyClick(&dialog, Qt::Key_Return);
    EXPECT_EQ(clicks, 1);
}

TEST(QDialogExTest, RunsModalForTheApplicationOrForItsParentAlone)
{
    for (const bool application : {true, false}) {
        QDialogEx dialog(0, nullptr);
        QTimer::singleShot(0, &dialog, [&] {
            EXPECT_EQ(dialog.windowModality(), application ? Qt::ApplicationModal : Qt::WindowModal);
            EXPECT_TRUE(dialog.isModal());
            dialog.done(7);
        });
        EXPECT_EQ(dialog.exec(application), 7);
    }
}

TEST(QDialogExTest, ItsCloseButtonRejectsIt)
{
    QDialogEx dialog(0, nullptr);
    QTimer::singleShot(0, &dialog, [&] { QTest::mouseClick(dialog.GetCloseBtn(), Qt::LeftButton); });
    EXPECT_EQ(dialog.exec(true), QDialog::Rejected);
    EXPECT_FALSE(dialog.isVisible());
}

namespace {

/// The sheets of the title's left, middle and right and of the left and right border.
std::vector<QString> FrameSheets(const QDialogEx& dialog)
{
    return {dialog.childAt(3, 15)->styleSheet(), dialog.GetCloseBtn()->parentWidget()->styleSheet(),
            dialog.childAt(dialog.width() - 3, 15)->styleSheet(), SheetOf(dialog, "ContentLeft"),
            SheetOf(dialog, "ContentRight")};
}

const auto Active =
    ElementsAre("#titleleft{border-image: url(:/Vennik/Resources/common2/dialog/dialog_title_left1.png);}",
                "#titlemid{border-image: url(:/Vennik/Resources/common2/dialog/dialog_title_middle1.png);}",
                "#titleright{border-image: url(:/Vennik/Resources/common2/dialog/dialog_title_right1.png);}",
                "#ContentLeft{background-color:rgb(195, 195, 195);}",
                "#ContentRight{background-color:rgb(195, 195, 195);}");
const auto Inactive =
    ElementsAre("#titleleft{border-image: url(:/Vennik/Resources/common2/dialog/dialog_title_left.png);}",
                "#titlemid{border-image: url(:/Vennik/Resources/common2/dialog/dialog_title_middle.png);}",
                "#titleright{border-image: url(:/Vennik/Resources/common2/dialog/dialog_title_right.png);}",
                "#ContentLeft{background-color:rgb(200, 200, 200);}",
                "#ContentRight{background-color:rgb(200, 200, 200);}");

} // namespace

TEST(QDialogExTest, TheBorderChangesItsGreyWithTheWindowsActivation)
{
    QDialogEx dialog(0, nullptr);
    QDialogEx other(0, nullptr);
    dialog.setGeometry(100, 100, 300, 200);
    other.setGeometry(500, 100, 300, 200);
    ASSERT_TRUE(showActive(dialog));
    EXPECT_THAT(FrameSheets(dialog), Active);
    const QImage active = dialog.grab().toImage();
    EXPECT_EQ(active.pixelColor(0, 100), QColor(195, 195, 195));

    ASSERT_TRUE(showActive(other));
    EXPECT_THAT(FrameSheets(dialog), Inactive);
    EXPECT_THAT(FrameSheets(other), Active);
    const QImage inactive = dialog.grab().toImage();
    EXPECT_EQ(inactive.pixelColor(0, 100), QColor(200, 200, 200));
    EXPECT_EQ(inactive.copy(0, 0, 300, 30), active.copy(0, 0, 300, 30)); // The title keeps its look.
}

TEST(QDialogExTest, ADialogHearsOfItsActivationItself)
{
    class Dialog : public QDialogEx
    {
    public:
        Dialog() : QDialogEx(0, nullptr) {}
        std::vector<QEvent::Type> heard;

    protected:
        bool event(QEvent* event) override
        {
            if (event->type() == QEvent::WindowActivate || event->type() == QEvent::WindowDeactivate)
                heard.push_back(event->type());
            return QDialogEx::event(event);
        }
    } dialog;
    for (const QEvent::Type type : {QEvent::WindowActivate, QEvent::WindowDeactivate}) {
        QEvent event(type);
        QCoreApplication::sendEvent(&dialog, &event);
    }
    EXPECT_THAT(dialog.heard, ElementsAre(QEvent::WindowActivate, QEvent::WindowDeactivate));
}

TEST(QDialogExTest, TheBorderKeepsItsGreyWhenItIsNotToChange)
{
    QDialogEx dialog(0, nullptr);
    dialog.SetChangeTitleColor(false);
    dialog.SetDeactivateDilog();
    EXPECT_EQ(SheetOf(dialog, "ContentLeft"), "#ContentLeft{background-color:rgb(195, 195, 195);}");
    dialog.SetChangeTitleColor(true);
    dialog.SetDeactivateDilog();
    EXPECT_EQ(SheetOf(dialog, "ContentLeft"), "#ContentLeft{background-color:rgb(200, 200, 200);}");
}
