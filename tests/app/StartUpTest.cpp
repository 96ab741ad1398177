// SPDX-License-Identifier: Apache-2.0
#include "app/StartUp.h"

#include "app/Language.h"
#include "tests/save/DebugLines.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QFont>
#include <QTemporaryDir>

#include <gmock/gmock.h>

using testing::ElementsAre;

namespace {

/// Leaves the application's font as it was.
class ApplicationFont : public testing::Test
{
protected:
    void TearDown() override { QApplication::setFont(m_before); }

    DebugLines debug;

private:
    const QFont m_before = QApplication::font();
};

} // namespace

TEST_F(ApplicationFont, IsTheFirstFamilyOfTheFileAt13Points)
{
    InstallApplicationFont(QStringLiteral(PROGRAM_FOLDER "/segoeui.ttf"));
    const QFont font = QApplication::font();
    EXPECT_EQ(font.family(), QStringLiteral("Open Sans"));
    EXPECT_EQ(font.pointSize(), 13);
    EXPECT_EQ(font.weight(), QFont::Normal);
    EXPECT_FALSE(font.italic());
    EXPECT_THAT(debug.lines(), ElementsAre("addApplicationFont success \n"));
}

TEST_F(ApplicationFont, IsSegoeUiAtTheHostsSizeWithoutTheFile)
{
    const QFont before = QApplication::font();
    InstallApplicationFont(QStringLiteral("/nowhere/segoeui.ttf"));
    EXPECT_EQ(QApplication::font().family(), QStringLiteral("Segoe UI"));
    EXPECT_EQ(QApplication::font().pointSizeF(), before.pointSizeF());
    EXPECT_NE(QApplication::font().pointSize(), 13);
    EXPECT_THAT(debug.lines(), ElementsAre("addApplicationFont failed \n"));
}

TEST(GetCurLanguageVersion, IsEnglishWithoutASettingsFile)
{
    ASSERT_FALSE(QFile::exists(QCoreApplication::applicationDirPath() + "/LangConfig.ini"));
    int language = 7;
    EXPECT_TRUE(GetCurLanguageVersion(language));
    EXPECT_EQ(language, 0);
}

TEST(InitializeCodec, LetsQtLookForPlugInsInTheWorkingDirectory)
{
    const QTemporaryDir folder;
    const QString strPlugins = QFileInfo(folder.path()).canonicalFilePath() + QStringLiteral("/plugins");
    ASSERT_TRUE(QDir().mkdir(strPlugins));
    const QString strBefore = QDir::currentPath();
    ASSERT_TRUE(QDir::setCurrent(folder.path()));
    InitializeCodec();
    EXPECT_TRUE(QDir::setCurrent(strBefore));
    EXPECT_TRUE(QCoreApplication::libraryPaths().contains(strPlugins));
    QCoreApplication::removeLibraryPath(strPlugins);
}
