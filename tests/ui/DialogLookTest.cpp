// SPDX-License-Identifier: Apache-2.0
#include "device/QDevice.h"
#include "resources/Fonts.h"
#include "tests/support/WindowActions.h"
#include "tests/ui/Chinese.h"
#include "ui/QNoteLabel.h"
#include "ui/QSetIpAddrDlg.h"

#include <QApplication>
#include <QFontDatabase>
#include <QLineEdit>
#include <QPushButton>

#include <gmock/gmock.h>

#include <algorithm>

using testing::Each;

namespace {

/// The dialog dressed as the program dresses it.
class DialogLookTest : public testing::Test
{
protected:
    void SetUp() override
    {
        QFontDatabase::addApplicationFont(QCoreApplication::applicationDirPath() + "/../bin/segoeui.ttf");
        InstallFontSubstitutes();
    }

    static const QNoteLabel& note(const QSetIpAddrDlg& dialog) { return *dialog.findChild<QNoteLabel*>(); }

    /// The one of all labels with such a text.
    static const QLabel* label(const QSetIpAddrDlg& dialog, const QString& part)
    {
        const auto labels = dialog.findChildren<QLabel*>();
        const auto found = std::find_if(labels.begin(), labels.end(),
                                        [&](const QLabel* one) { return one->text().contains(part); });
        return found == labels.end() ? nullptr : *found;
    }
};

} // namespace

TEST_F(DialogLookTest, ItsTextsHaveTheirWordingAndColours)
{
    const QSetIpAddrDlg dialog(nullptr);
    EXPECT_EQ(note(dialog).text(),
              "<p style='margin:10px; margin-left: 35px'>If the camera IP is not static IP address,</p>"
              "<p style='margin:10px'> the subnet mask and default gateway cannot</p>"
              "<p style='margin:10px'>be modified.</p>");
    EXPECT_EQ(note(dialog).styleSheet(), "color:#333333;                                       "
                                         "font-size:14px;                                       "
                                         "font-family: Segoe UI;");
    QSetIpAddrDlg filled(nullptr);
    filled.SetCurDevice(QDevice());
    const QLabel* const range = label(filled, "Valid Range:");
    ASSERT_NE(range, nullptr);
    EXPECT_EQ(range->styleSheet(), "color:#666666;    font-size:14px;    font-family: Segoe UI;");
    ASSERT_TRUE(showActive(filled));
    for (const QLabel* const text : {range, static_cast<const QLabel*>(&note(filled))}) {
        EXPECT_EQ(text->font().pixelSize(), 14);
        EXPECT_EQ(text->font().family(), "Segoe UI");
    }
    EXPECT_EQ(range->palette().color(range->foregroundRole()), QColor("#666666"));
    EXPECT_EQ(note(filled).palette().color(note(filled).foregroundRole()), QColor("#333333"));
}

TEST_F(DialogLookTest, EverythingStandsInLine)
{
    QSetIpAddrDlg dialog(nullptr);
    dialog.SetCurDevice(QDevice());
    dialog.grab(); // Lays out what is not shown.
    const auto place = [&dialog](const QWidget* widget) {
        return QRect(widget->mapTo(&dialog, QPoint()), widget->size());
    };
    std::vector<int> tops = {place(&note(dialog)).top(), place(label(dialog, "Valid Range:")).top()};
    std::vector<int> captionsX;
    std::vector<int> editsX;
    const auto edits = dialog.findChildren<QLineEdit*>();
    const std::vector<QString> captions = {"IP Address:", "Subnet Mask:", "Default Gateway:"};
    ASSERT_EQ(edits.size(), 3);
    for (int index = 0; index < edits.size(); ++index) {
        const QLabel* const caption = label(dialog, captions[static_cast<size_t>(index)]);
        EXPECT_EQ(caption->buddy(), edits[index]);
        EXPECT_LE(std::abs(place(caption).center().y() - place(edits[index]).center().y()), 1);
        EXPECT_LT(place(caption).right(), place(edits[index]).left());
        captionsX.push_back(place(caption).left());
        editsX.push_back(place(edits[index]).left());
        tops.push_back(place(edits[index]).top());
    }
    EXPECT_THAT(captionsX, Each(captionsX.front()));
    EXPECT_THAT(editsX, Each(editsX.front()));

    const auto* const ok = dialog.findChild<QPushButton*>("QPushButtonExColor");
    const auto* const cancel = dialog.findChild<QPushButton*>("QPushButtonEx");
    EXPECT_EQ(place(ok).top(), place(cancel).top());
    EXPECT_LT(place(ok).right(), place(cancel).left());
    tops.push_back(place(ok).top());
    EXPECT_TRUE(std::is_sorted(tops.begin(), tops.end()));
}

TEST_F(DialogLookTest, WhatRoomThereIsStandsBetweenItsPartsInFixedShares)
{
    QSetIpAddrDlg dialog(nullptr);
    dialog.SetCurDevice(QDevice());
    const auto places = [&dialog](const QSize& size) {
        dialog.setFixedSize(size);
        dialog.grab(); // Lays out what is not shown.
        std::vector<QRect> all;
        for (const QWidget* const widget :
             {static_cast<const QWidget*>(&note(dialog)),
              static_cast<const QWidget*>(label(dialog, "Valid Range:")),
              static_cast<const QWidget*>(label(dialog, "IP Address:")),
              static_cast<const QWidget*>(dialog.findChild<QLineEdit*>()),
              static_cast<const QWidget*>(dialog.findChild<QPushButton*>("QPushButtonExColor")),
              static_cast<const QWidget*>(dialog.findChild<QPushButton*>("QPushButtonEx"))})
            all.emplace_back(widget->mapTo(&dialog, QPoint()), widget->size());
        return all;
    };
    enum
    {
        Note,
        Range,
        Caption,
        Edit,
        Ok,
        Cancel
    };
    // From top to bottom 1, the note and the range, 3, the fields, 1, the buttons.
    const auto low = places({300, 400});
    const auto high = places({300, 500});
    const auto moved = [&](int which) { return high[which].top() - low[which].top(); };
    EXPECT_NEAR(moved(Note), 20, 1);
    EXPECT_NEAR(moved(Range), 20, 1);
    EXPECT_NEAR(moved(Caption), 80, 1);
    EXPECT_NEAR(moved(Edit), 80, 1);
    EXPECT_NEAR(moved(Ok), 100, 1);

    // From left to right 1, captions and fields, 2; and 1, "OK", 2, "Cancel", 1.
    const auto narrow = places({600, 500});
    const auto wide = places({720, 500});
    const auto shifted = [&](int which) { return wide[which].left() - narrow[which].left(); };
    EXPECT_NEAR(shifted(Caption), 40, 1);
    EXPECT_NEAR(shifted(Edit), 40, 1);
    EXPECT_NEAR(shifted(Ok), 30, 1);
    EXPECT_NEAR(shifted(Cancel), 90, 1);
}

TEST_F(DialogLookTest, ItHasNoButtonToMinimiseIt)
{
    const QSetIpAddrDlg dialog(nullptr);
    QStringList names;
    for (const auto* const button : dialog.findChildren<QAbstractButton*>()) {
        if (button->isVisibleTo(&dialog) && button->text().isEmpty())
            names << button->accessibleName();
    }
    EXPECT_EQ(names, QStringList{"Close"});
}

TEST_F(DialogLookTest, EachParagraphOfTheNoteStandsOnALineInEitherLanguage)
{
    const auto neededWidth = [](const QNoteLabel& label) {
        QLabel unwrapped;
        unwrapped.setFont(label.font());
        unwrapped.setStyleSheet(label.styleSheet());
        unwrapped.setText(label.text());
        unwrapped.ensurePolished();
        return unwrapped.sizeHint().width();
    };
    constexpr int Room = 298; // Less the frame's borders.
    const QSetIpAddrDlg english(nullptr);
    EXPECT_LE(neededWidth(note(english)), Room);

    const Chinese language;
    const QSetIpAddrDlg chinese(nullptr);
    EXPECT_LE(neededWidth(note(chinese)), Room);
    EXPECT_EQ(note(chinese).font().letterSpacing(), 0); // There is room enough.
}

TEST_F(DialogLookTest, ALanguageThatIsTakenOnWhileItIsOpenChangesEverythingButTheRange)
{
    QSetIpAddrDlg dialog(nullptr);
    dialog.SetCurDevice(QDevice());
    ASSERT_TRUE(showActive(dialog));
    const QString english = note(dialog).text();
    {
        const Chinese language;
        EXPECT_EQ(dialog.windowTitle(), QString::fromUtf8("修改 IP 地址"));
        EXPECT_TRUE(note(dialog).text().contains(QString::fromUtf8("静态 IP")));
        for (const char* const caption : {"IP 地址：", "子网掩码：", "默认网关："})
            EXPECT_NE(label(dialog, QString::fromUtf8(caption)), nullptr) << caption;
        EXPECT_NE(label(dialog, "Valid Range:"), nullptr);
        EXPECT_EQ(dialog.findChild<QPushButton*>("QPushButtonExColor")->text(), QString::fromUtf8("确定"));
        EXPECT_EQ(dialog.findChild<QPushButton*>("QPushButtonEx")->text(), QString::fromUtf8("取消"));
    }
    EXPECT_EQ(note(dialog).text(), english);
}
