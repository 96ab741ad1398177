// SPDX-License-Identifier: Apache-2.0
#include "app/StartUp.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QFont>
#include <QTemporaryDir>

#include <gtest/gtest.h>

TEST(ApplicationFont, IsTheFirstFamilyOfTheFileAt13Points)
{
    InstallApplicationFont(QStringLiteral(PROGRAM_FOLDER "/segoeui.ttf"));
    const QFont font = QApplication::font();
    EXPECT_EQ(font.family(), QStringLiteral("Open Sans"));
    EXPECT_EQ(font.pointSize(), 13);
    EXPECT_EQ(font.weight(), QFont::Normal);
    EXPECT_FALSE(font.italic());
}

TEST(ApplicationFont, IsSegoeUiAtTheHostsSizeWithoutTheFile)
{
    const QFont before = QApplication::font();
    InstallApplicationFont(QStringLiteral("/nowhere/segoeui.ttf"));
    EXPECT_EQ(QApplication::font().family(), QStringLiteral("Segoe UI"));
    EXPECT_EQ(QApplication::font().pointSizeF(), before.pointSizeF());
    EXPECT_NE(QApplication::font().pointSize(), 13);
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
