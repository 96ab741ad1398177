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
