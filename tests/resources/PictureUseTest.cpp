// SPDX-License-Identifier: Apache-2.0
// What the windows' sources name, against what the program carries.
#include "tests/resources/PictureFiles.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>

#include <algorithm>
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

/// Sources name a picture by its whole path (":/Dorn/...") or, where a function puts the folder in front, by
/// the end of it.
bool isName(const QString& name, const QString& picture)
{
    const QString path = ":/" + picture;
    return path == name || (!name.startsWith(':') && path.endsWith('/' + name));
}

class PictureUse : public testing::Test
{
protected:
    void SetUp() override
    {
        for (const QString& folder : QString(WINDOW_FOLDERS).split(':')) {
            if (!QDir(folder).exists()) {
                GTEST_SKIP() << "without " << qPrintable(folder) << " most pictures have no user";
            }
            for (const QString& file : FilesBelow(folder)) {
                if (file.endsWith(".cpp") || file.endsWith(".h")) {
                    addNamesIn(folder + file);
                }
            }
        }
        ASSERT_FALSE(m_names.isEmpty());
    }

    QStringList m_names;

private:
    void addNamesIn(const QString& path)
    {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::ReadOnly)) << qPrintable(path);
        static const QRegularExpression Name(QStringLiteral("[\\w:/]+\\.(png|ico)\\b"));
        auto matches = Name.globalMatch(QString::fromUtf8(file.readAll()));
        while (matches.hasNext()) {
            m_names.append(matches.next().captured());
        }
    }
};

TEST_F(PictureUse, EveryPictureThatTheWindowsNameLoads)
{
    const QStringList pictures = CarriedPictures();
    for (const QString& name : m_names) {
        if (MeantToBeMissing.contains(name)) {
            continue;
        }
        const auto picture = std::find_if(pictures.begin(), pictures.end(),
                                          [&](const QString& candidate) { return isName(name, candidate); });
        if (picture == pictures.end()) {
            ADD_FAILURE() << "no picture " << qPrintable(name);
            continue;
        }
        EXPECT_FALSE(QImage(":/" + *picture).isNull()) << qPrintable(*picture);
    }
}

TEST_F(PictureUse, EveryPictureIsNamedByAWindow)
{
    for (const QString& picture : CarriedPictures()) {
        const QString plain = QString(picture).remove("@2x");
        EXPECT_TRUE(std::any_of(m_names.begin(), m_names.end(), [&](const QString& name) {
            return isName(name, plain);
        })) << qPrintable(picture);
    }
}

TEST(Pictures, WhatIsMeantToBeMissingIsMissing)
{
    for (const QString& name : MeantToBeMissing) {
        EXPECT_FALSE(QFile::exists(name)) << qPrintable(name);
    }
}

} // namespace
