// SPDX-License-Identifier: Apache-2.0
#include "widgets/QCheckBoxEx.h"
#include "widgets/QLineEditEx.h"
#include "widgets/QPushButtonEx.h"
#include "widgets/QPushButtonExColor.h"
#include "widgets/QRadioButtonEx.h"
#include "widgets/QScrollAreaEx.h"
#include "widgets/QStaticLabel.h"

#include <QScrollBar>
#include <QStyleOptionSlider>

#include <gtest/gtest.h>

namespace {

struct StyledWidget
{
    const char* name;
    QWidget* (*create)(QWidget* parent);
    QString objectName;
    QString styleSheet;
};

void PrintTo(const StyledWidget& widget, std::ostream* stream)
{
    *stream << widget.name;
}

class StyleSheetsTest : public testing::TestWithParam<StyledWidget>
{};

const QString CheckBox =
    "#QCheckBoxEx::indicator:unchecked{                image: url(:/Dorn/Resources/checkbox/checkbox.png);}"
    "#QCheckBoxEx::indicator:unchecked:hover{                image: "
    "url(:/Dorn/Resources/checkbox/checkbox_hov.png);}"
    "#QCheckBoxEx::indicator:unchecked:disabled{                image: "
    "url(:/Dorn/Resources/checkbox/checkbox_dis.png);}"
    "#QCheckBoxEx::indicator:checked{                image: url(:/Dorn/Resources/checkbox/checkbox_sel.png);}"
    "#QCheckBoxEx::indicator:checked:hover{                image: "
    "url(:/Dorn/Resources/checkbox/checkbox_sel_hov.png);}"
    "#QCheckBoxEx::indicator:checked:disabled{                image: "
    "url(:/Dorn/Resources/checkbox/checkbox_sel_dis.png);}";
const QString RadioButton = "#QRadioButtonEx::indicator:unchecked{                image: "
                            "url(:/Dorn/Resources/radiobox/radiobox.png);}"
                            "#QRadioButtonEx::indicator:unchecked:hover{                image: "
                            "url(:/Dorn/Resources/radiobox/radiobox_hov.png);}"
                            "#QRadioButtonEx::indicator:unchecked:disabled{                image: "
                            "url(:/Dorn/Resources/radiobox/radiobox_dis.png);}"
                            "#QRadioButtonEx::indicator:checked {                image: "
                            "url(:/Dorn/Resources/radiobox/radiobox_sel.png);}"
                            "#QRadioButtonEx::indicator:checked:hover{                image: "
                            "url(:/Dorn/Resources/radiobox/radiobox_sel_hov.png);}"
                            "#QRadioButtonEx::indicator:disabled{                image: "
                            "url(:/Dorn/Resources/radiobox/radiobox_sel_dis.png);}";
const QString LineEdit =
    "#QLineEditEx{                image: url(:/Dorn/Resources/inputbox/inputbox.png);}"
    "#QLineEditEx:hover:focus{                image: url(:/Dorn/Resources/inputbox/inputbox_hov.png);}"
    "#QLineEditEx:disabled {                image: url(:/Dorn/Resources/inputbox/inputbox_dis.png);}";
const QString ButtonNormal =
    "#QPushButtonEx{border-image: url(:/Dorn/Resources/btn/btn1.png) 1 1 1 1 stretch stretch;"
    "border-width: 2;color:#666666;font-size:14px;border-radius: 2px;font-family: FZShuSong-Z01S;}";
const QString ButtonHover =
    "#QPushButtonEx:hover{border-image: url(:/Dorn/Resources/btn/btn1_hov.png) 1 1 1 1 stretch stretch;"
    "border-width: 2;color:#3876cb;font-size:14px;border-radius: 2px;font-family: FZShuSong-Z01S;}";
const QString ButtonRest =
    "#QPushButtonEx:pressed{border-image: url(:/Dorn/Resources/btn/btn1_sel.png) 1 1 1 1 stretch stretch;"
    "border-width: 2;color:#2d5fa4;font-size:14px;border-radius: 2px;font-family: FZShuSong-Z01S;}"
    "#QPushButtonEx:disabled{border-image: url(:/Dorn/Resources/btn/btn1_dis.png) 1 1 1 1 stretch stretch;"
    "border-width: 2;color:#cccccc;font-size:14px;border-radius: 2px;font-family: FZShuSong-Z01S;}";
const QString ColouredNormal =
    "#QPushButtonExColor{border-image: url(:/Dorn/Resources/btn/btn.png) 1 1 1 1 stretch stretch;"
    "border-width: 1;}";
const QString ColouredRest =
    "#QPushButtonExColor:hover{border-image: url(:/Dorn/Resources/btn/btn_hov.png) 1 1 1 1 stretch stretch;"
    "border-width: 1;}"
    "#QPushButtonExColor:pressed{border-image: url(:/Dorn/Resources/btn/btn_sel.png) 1 1 1 1 stretch stretch;"
    "border-width: 1;}"
    "#QPushButtonExColor:disabled{border-image: url(:/Dorn/Resources/btn/btn_dis.png) 1 1 1 1 stretch "
    "stretch;"
    "border-width: 1;}";

} // namespace

TEST_P(StyleSheetsTest, StylesItselfThroughItsOwnName)
{
    QWidget parent;
    const QWidget* const widget = GetParam().create(&parent);
    EXPECT_EQ(widget->objectName(), GetParam().objectName);
    EXPECT_EQ(widget->styleSheet(), GetParam().styleSheet);
    EXPECT_EQ(widget->parentWidget(), &parent);
}

INSTANTIATE_TEST_SUITE_P(
    Kit, StyleSheetsTest,
    testing::Values(
        StyledWidget{"ACheckBox", [](QWidget* parent) -> QWidget* { return new QCheckBoxEx(parent); },
                     "QCheckBoxEx", CheckBox},
        StyledWidget{"ACheckBoxWithText",
                     [](QWidget* parent) -> QWidget* { return new QCheckBoxEx("Text", parent); },
                     "QCheckBoxEx",
                     CheckBox + "#QCheckBoxEx{color:#666666;                "
                                "font-size:13px;                "
                                "font-family: Segoe UI;}"},
        StyledWidget{"ARadioButton", [](QWidget* parent) -> QWidget* { return new QRadioButtonEx(parent); },
                     "QRadioButtonEx", RadioButton},
        StyledWidget{"ARadioButtonWithText",
                     [](QWidget* parent) -> QWidget* { return new QRadioButtonEx("Text", parent); },
                     "QRadioButtonEx",
                     RadioButton + "#QRadioButtonEx{color:#666666;                                 "
                                   "font-size:13px;                                 "
                                   "font-family: FZShuSong-Z01S;}"},
        StyledWidget{"ALineEdit", [](QWidget* parent) -> QWidget* { return new QLineEditEx(parent); },
                     "QLineEditEx",
                     LineEdit + "#QLineEditEx{color:#666666;                              "
                                "font-size:13px;                              "
                                "font-family: Segoe UI;}"},
        StyledWidget{"ALineEditWithText",
                     [](QWidget* parent) -> QWidget* { return new QLineEditEx("Text", parent); },
                     "QLineEditEx", LineEdit},
        StyledWidget{"APushButton", [](QWidget* parent) -> QWidget* { return new QPushButtonEx(parent); },
                     "QPushButtonEx", ButtonNormal + ButtonHover + ButtonRest},
        StyledWidget{
            "APushButtonWithText",
            [](QWidget* parent) -> QWidget* { return new QPushButtonEx("Text", parent); }, "QPushButtonEx",
            "#QPushButtonEx{border-image: url(:/Dorn/Resources/btn/btn1.png)1 1 1 1 stretch stretch;"
            "border-width: 2;color:#666666;font-size:14px;border-radius: 2px;font-family: FZShuSong-Z01S;}" +
                ButtonHover + ButtonRest},
        StyledWidget{"APushButtonWithIcon",
                     [](QWidget* parent) -> QWidget* { return new QPushButtonEx(QIcon(), "Text", parent); },
                     "QPushButtonEx",
                     ButtonNormal +
                         "#QPushButtonEx:hover{border-image: url(:/Dorn/Resources/btn/btn1_hov.png) 1 1 1 1 "
                         "stretch stretch;"
                         "border-width: 2;color:#3876cb;font-size:14px;border-radius: 2px;}" +
                         ButtonRest},
        StyledWidget{"AColouredButton",
                     [](QWidget* parent) -> QWidget* { return new QPushButtonExColor(parent); },
                     "QPushButtonExColor",
                     ColouredNormal + ColouredRest +
                         "#QPushButtonEx{border-radius: 2px;                     "
                         "color:white;                     "
                         "font-size:14px;                     "
                         "font-family: FZShuSong-Z01S;}"},
        StyledWidget{
            "AColouredButtonWithText",
            [](QWidget* parent) -> QWidget* { return new QPushButtonExColor("Text", parent); },
            "QPushButtonExColor",
            "#QPushButtonExColor{border-image: url(:/Dorn/Resources/btn/btn.png) 1 1 1 1 stretch stretch;"
            "border-width: 1;color:white;font-size:14px;font-family:FZShuSong-Z01S;}" +
                ColouredRest},
        StyledWidget{
            "AColouredButtonWithIcon",
            [](QWidget* parent) -> QWidget* { return new QPushButtonExColor(QIcon(), "Text", parent); },
            "QPushButtonExColor",
            ColouredNormal + ColouredRest +
                "#QPushButtonEx{border-radius: 2px;                "
                "color:white;                "
                "font-size:14px;                "
                "font-family: FZShuSong-Z01S;}"},
        StyledWidget{"AStaticLabel", [](QWidget* parent) -> QWidget* { return new QStaticLabel(parent); }, "",
                     "QLabel{color:#666666;                  "
                     "font-size:13px;                  "
                     "font-family: FZShuSong-Z01S;}"},
        StyledWidget{"AStaticLabelWithText",
                     [](QWidget* parent) -> QWidget* { return new QStaticLabel("Text", parent); }, "",
                     "QLabel{color:#666666;                  "
                     "font-size:13px;                  "
                     "font-family: FZShuSong-Z01S;}"}),
    [](const testing::TestParamInfo<StyledWidget>& row) { return std::string(row.param.name); });

TEST(StyleSheetsTest, TextsGivenToConstructorsAreShown)
{
    const QString text = QStringLiteral("Static IP");
    EXPECT_EQ(QCheckBoxEx(text).text(), text);
    EXPECT_EQ(QRadioButtonEx(text).text(), text);
    EXPECT_EQ(QLineEditEx(text).text(), text);
    EXPECT_EQ(QStaticLabel(text).text(), text);
}

TEST(StyleSheetsTest, OnlyTheColouredButtonMadeFromATextHasAWhiteOne)
{
    QPushButtonExColor plain;
    QPushButtonExColor text(QStringLiteral("Save"));
    QPushButtonExColor icon(QIcon(), QStringLiteral("Save"));
    const QPushButton standard;
    for (QPushButtonExColor* const button : {&plain, &text, &icon})
        button->ensurePolished();
    EXPECT_EQ(text.palette().color(QPalette::ButtonText), QColor(Qt::white));
    EXPECT_EQ(text.font().family(), "FZShuSong-Z01S");
    EXPECT_EQ(text.font().pixelSize(), 14);
    for (const QPushButtonExColor* const button : {&plain, &icon}) {
        EXPECT_EQ(button->palette().color(QPalette::ButtonText),
                  standard.palette().color(QPalette::ButtonText));
        EXPECT_EQ(button->font(), standard.font());
    }
}

TEST(StyleSheetsTest, AStaticLabelShowsMarkupAsItIs)
{
    EXPECT_EQ(QStaticLabel().textFormat(), Qt::PlainText);
    QStaticLabel markup(QStringLiteral("<b>cam</b>"));
    markup.ensurePolished();
    EXPECT_EQ(markup.sizeHint().width(), markup.fontMetrics().size(0, markup.text()).width());
}

TEST(StyleSheetsTest, AScrollAreaHasASlimVerticalBarWithoutArrowsAndADefaultHorizontalOne)
{
    QScrollAreaEx area;
    EXPECT_EQ(area.objectName(), "");
    QScrollArea standard;
    for (QScrollArea* const one : {static_cast<QScrollArea*>(&area), &standard}) {
        auto* const content = new QWidget;
        content->setFixedSize(500, 500);
        one->setWidget(content);
        one->resize(200, 200);
        one->grab(); // Lays out what is not shown.
    }
    EXPECT_EQ(area.verticalScrollBar()->width(), 10);
    EXPECT_EQ(area.horizontalScrollBar()->height(), standard.horizontalScrollBar()->height());

    QStyleOptionSlider bar;
    bar.initFrom(area.verticalScrollBar());
    bar.orientation = Qt::Vertical;
    bar.maximum = area.verticalScrollBar()->maximum();
    bar.pageStep = area.verticalScrollBar()->pageStep();
    for (const auto part : {QStyle::SC_ScrollBarAddLine, QStyle::SC_ScrollBarSubLine}) {
        const QRect arrow =
            area.style()->subControlRect(QStyle::CC_ScrollBar, &bar, part, area.verticalScrollBar());
        EXPECT_TRUE(arrow.isEmpty()) << arrow.width() << " x " << arrow.height();
    }
}
