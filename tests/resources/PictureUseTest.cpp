// SPDX-License-Identifier: Apache-2.0
// What the windows' sources name, against what the program carries.
#include "tests/resources/PictureFiles.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>

#include <gmock/gmock.h>

namespace {

/// Named by style sheets and labels that are meant to show nothing.
const QStringList MeantToBeMissing{
    ":/Dorn/Resources/project2.ico",
    ":/Vennik/Resources/common2/dialog/dialog_title_left.png",
    ":/Vennik/Resources/common2/dialog/dialog_title_left1.png",
    ":/Vennik/Resources/common2/dialog/dialog_title_middle.png",
    ":/Vennik/Resources/common2/dialog/dialog_title_middle1.png",
    ":/Vennik/Resources/common2/dialog/dialog_title_right.png",
    ":/Vennik/Resources/common2/dialog/dialog_title_right1.png",
};

/// The paths that a name can stand for; the twins for scaled screens are never named.
QStringList carriedPaths()
{
    QStringList paths;
    for (const QString& picture : CarriedPictures()) {
        if (!picture.contains("@2x")) {
            paths.append(":/" + picture);
        }
    }
    return paths;
}

class PictureUse : public testing::Test
{
protected:
    void SetUp() override
    {
        QString sources;
        for (const QString& folder : QString(WINDOW_FOLDERS).split(':')) {
            ASSERT_TRUE(QDir(folder).exists()) << qPrintable(folder);
            for (const QString& name : FilesBelow(folder)) {
                QFile file(folder + name);
                ASSERT_TRUE(file.open(QIODevice::ReadOnly)) << qPrintable(file.fileName());
                sources += QString::fromUtf8(file.readAll());
            }
        }
        m_names = allMatches("[\\w:/%]+\\.(png|ico)\\b", sources);
        ASSERT_FALSE(m_names.isEmpty());
        m_words = allMatches("(?<=\")\\w+(?=\")", sources);
    }

    /// The paths below ":/" that a name in the sources stands for. It is a whole path (":/Dorn/...") or,
    /// where a function puts the folder in front, the end of one; its %1 stands for any text that the sources
    /// hold, or none.
    QRegularExpression pathsOf(const QString& name) const
    {
        static const QRegularExpression Placeholder(QStringLiteral("%\\d"));
        QString pattern = QString(name).replace('.', "\\.");
        pattern.replace(Placeholder, "(" + m_words.join('|') + ")?");
        return QRegularExpression((name.startsWith(':') ? "^" : "/") + pattern + '$');
    }

    QStringList m_names;

private:
    static QStringList allMatches(const QString& pattern, const QString& text)
    {
        QStringList found;
        auto matches = QRegularExpression(pattern).globalMatch(text);
        while (matches.hasNext()) {
            found.append(matches.next().captured());
        }
        found.removeDuplicates();
        return found;
    }

    QStringList m_words;
};

TEST_F(PictureUse, EveryPictureThatTheWindowsNameLoads)
{
    for (const QString& name : m_names) {
        const QStringList named = (carriedPaths() + MeantToBeMissing).filter(pathsOf(name));
        EXPECT_FALSE(named.isEmpty()) << "no picture " << qPrintable(name);
        for (const QString& path : named) {
            EXPECT_EQ(QImage(path).isNull(), MeantToBeMissing.contains(path)) << qPrintable(path);
        }
    }
}

TEST_F(PictureUse, EveryPictureIsNamedByAWindow)
{
    QStringList unused = carriedPaths();
    for (const QString& name : m_names) {
        for (const QString& path : unused.filter(pathsOf(name))) {
            unused.removeOne(path);
        }
    }
    EXPECT_THAT(Readable(unused), testing::IsEmpty());
}

TEST(Pictures, WhatIsMeantToBeMissingIsMissing)
{
    for (const QString& name : MeantToBeMissing) {
        EXPECT_FALSE(QFile::exists(name)) << qPrintable(name);
    }
}

} // namespace
