// SPDX-License-Identifier: Apache-2.0
#include "resources/Fonts.h"

#include <QFontDatabase>
#include <QFontInfo>
#include <QGlyphRun>
#include <QGuiApplication>
#include <QRawFont>
#include <QTextLayout>

#include <gmock/gmock.h>

namespace {

/// An application without a screen, dressed as start-up does it. (The platform "offscreen" has leaks.)
class Fonts : public testing::TestWithParam<const char*>
{
protected:
    void SetUp() override
    {
        const int font = QFontDatabase::addApplicationFont(FONT_FILE);
        ASSERT_THAT(QFontDatabase::applicationFontFamilies(font), testing::ElementsAre("Open Sans"));
        InstallFontSubstitutes();
    }

    /// The font that a text in this family is drawn with in the end.
    static QRawFont fontFor(const QString& family, const QString& text)
    {
        QTextLayout layout(text, QFont(family, 13));
        layout.beginLayout();
        layout.createLine();
        layout.endLayout();
        const auto runs = layout.glyphRuns();
        return runs.size() == 1 ? runs.first().rawFont() : QRawFont();
    }

private:
    int m_argumentCount = 3;
    char m_programName[6] = "tests";
    char m_option[10] = "-platform";
    char m_platform[21] = "minimal:enable_fonts";
    char* m_arguments[4] = {m_programName, m_option, m_platform, nullptr};
    QGuiApplication m_application{m_argumentCount, m_arguments};
};

TEST_P(Fonts, AFamilyThatTheHostLacksIsOpenSansForLatinAndNotoForChineseTexts)
{
    if (QFontDatabase().families().contains(GetParam()) && QString(GetParam()) != "Open Sans") {
        GTEST_SKIP() << "the host has " << GetParam();
    }
    EXPECT_EQ(QFontInfo(QFont(GetParam(), 13)).family().toStdString(), "Open Sans");
    EXPECT_EQ(fontFor(GetParam(), "Subnet Mask:").fontTable("head"),
              QRawFont(QString(FONT_FILE), 13).fontTable("head"));
    EXPECT_EQ(fontFor(GetParam(), QString::fromUtf8("子网掩码")).familyName().toStdString(),
              "Noto Sans CJK SC");
}

INSTANTIATE_TEST_SUITE_P(Families, Fonts, testing::Values("Segoe UI", "FZShuSong-Z01S", "Open Sans"));

} // namespace
