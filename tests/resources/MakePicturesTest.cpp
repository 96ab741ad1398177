// SPDX-License-Identifier: Apache-2.0
#include "tests/resources/PictureFiles.h"

#include <QProcess>
#include <QTemporaryDir>

#include <gmock/gmock.h>

namespace {

TEST(MakePictures, DrawsThePicturesThatTheProgramCarries)
{
    QTemporaryDir scratch;
    ASSERT_TRUE(scratch.isValid());
    QProcess script;
    script.start(MAKE_PICTURES, {scratch.path()});
    ASSERT_TRUE(script.waitForFinished(100000));
    ASSERT_EQ(script.exitCode(), 0) << script.readAllStandardError().constData();

    QStringList drawn = FilesBelow(scratch.path() + '/');
    ASSERT_TRUE(drawn.removeOne("pictures.qrc"));
    const QStringList carried = CarriedPictures();
    ASSERT_EQ(Readable(drawn), Readable(carried));
    constexpr double OtherSmoothing = 4; // What another version of the renderer may do at the edges.
    for (const QString& file : carried) {
        const QImage expected(":/" + file);
        const QImage actual(scratch.filePath(file));
        ASSERT_EQ(actual.size(), expected.size()) << qPrintable(file);
        EXPECT_LT(Difference(actual, expected, Qt::white), OtherSmoothing) << qPrintable(file);
    }
}

} // namespace
