// SPDX-License-Identifier: Apache-2.0
#include "tests/resources/PictureFiles.h"

#include <QImageReader>
#include <QMap>
#include <QRegularExpression>

#include <gmock/gmock.h>

#include <cmath>

namespace {

const QColor TitleBar(62, 134, 227);
const QString Folder = QStringLiteral(":/Dorn/Resources/");

/// Each control's pictures, by the name without the state.
QMap<QString, QStringList> controls()
{
    static const QRegularExpression State(QStringLiteral("(_sel)?(_hov|_dis)?\\.png$"));
    QMap<QString, QStringList> controls;
    for (const QString& file : FilesBelow(Folder)) {
        if (!file.contains('@')) {
            controls[QString(file).remove(State)].append(file);
        }
    }
    return controls;
}

QImage shapeOf(const QString& name)
{
    return QImage(Folder + name).convertToFormat(QImage::Format_Alpha8);
}

/// The part of the pixels, of those that either covers, that one of the two leaves bare.
double shapeDifference(const QImage& first, const QImage& second)
{
    int covered = 0;
    int different = 0;
    for (int y = 0; y < first.height(); ++y) {
        for (int x = 0; x < first.width(); ++x) {
            const bool inFirst = qAlpha(first.pixel(x, y)) > 127;
            const bool inSecond = qAlpha(second.pixel(x, y)) > 127;
            covered += inFirst || inSecond ? 1 : 0;
            different += inFirst != inSecond ? 1 : 0;
        }
    }
    return static_cast<double>(different) / covered;
}

/// The ratio of their luminances, from 1 to 21.
double contrastToWhite(const QColor& color)
{
    const auto linear = [](double part) {
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    const double luminance =
        0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
    return 1.05 / (luminance + 0.05);
}

TEST(PictureStates, EveryControlHasPicturesOfItsStates)
{
    QStringList withStates;
    const auto all = controls();
    for (auto control = all.begin(); control != all.end(); ++control) {
        if (control.value().size() > 1) {
            withStates.append(control.key());
        }
    }
    EXPECT_THAT(Readable(withStates),
                testing::UnorderedElementsAre(
                    "btn/btn", "btn/btn1", "btn/diagnose", "btn/forceip", "btn/plan", "btn/refresh",
                    "checkbox/checkbox", "dialog/max", "dialog/min", "dialog/recovery", "dialog/title_close",
                    "inputbox/inputbox", "radiobox/radiobox", "scrollbar/scrollbar", "scrollbar/scrollbar2"));
}

TEST(PictureStates, TheStatesOfAControlHaveOneSizeAndDoNotLookAlike)
{
    constexpr double Visible = 10;
    for (const QStringList& states : controls()) {
        const QColor background = states.first().startsWith("dialog/") ? TitleBar : QColor(Qt::white);
        for (int first = 0; first < states.size(); ++first) {
            for (int second = first + 1; second < states.size(); ++second) {
                const QImage a(Folder + states[first]);
                const QImage b(Folder + states[second]);
                ASSERT_EQ(a.size(), b.size()) << qPrintable(states[first]);
                EXPECT_GT(Difference(a, b, background), Visible)
                    << qPrintable(states[first] + " and " + states[second]);
            }
        }
    }
}

TEST(PictureStates, ACamerasStatesDifferInShapeAndNotInColourAlone)
{
    const QImage free = shapeOf("use.png");
    const QImage inUse = shapeOf("notuse.png");
    const QImage unreachable = shapeOf("notreach.png");
    constexpr double Visible = 0.2;
    EXPECT_GT(shapeDifference(free, inUse), Visible);
    EXPECT_GT(shapeDifference(free, unreachable), Visible);
    EXPECT_GT(shapeDifference(inUse, unreachable), Visible);
}

TEST(PictureStates, WhatStandsInWhiteOnAPictureIsReadableInEachStateInUse)
{
    constexpr double Readable =
        3; // As the guidelines for accessible content have it for signs and large letters.
    for (const char* const control :
         {"btn/btn", "dialog/min", "dialog/recovery", "dialog/max", "dialog/title_close"}) {
        for (const char* const state : {"", "_hov", "_sel"}) {
            const QImage picture(Folder + control + state + ".png");
            const QRgb pixel = picture.pixel(picture.width() / 2, 4);
            const QColor ground = qAlpha(pixel) == 255 ? QColor(pixel) : TitleBar;
            EXPECT_GT(contrastToWhite(ground), Readable) << control << state;
        }
    }
}

TEST(PictureStates, TheOnesForScaledScreensAreTwiceAsLargeAsTheOthers)
{
    int count = 0;
    for (const QString& file : FilesBelow(Folder)) {
        if (file.contains("@2x")) {
            const QImage normal(Folder + QString(file).remove("@2x"));
            // Of the edges of a title bar's button a style sheet takes five pixels, however fine they are.
            const QSize edges = file.startsWith("dialog/") ? QSize(10, 10) : QSize(0, 0);
            EXPECT_EQ(QImage(Folder + file).size(), 2 * (normal.size() - edges) + edges) << qPrintable(file);
            ++count;
        }
    }
    // Check box, radio button, input field, the four buttons with a sign in front, a camera's status, and
    // the title bar's buttons.
    EXPECT_EQ(count, 49);
}

TEST(PictureStates, TheIconHasThePicturesForEachPlaceThatADesktopShowsItIn)
{
    QImageReader icon(QStringLiteral(":/Dorn_Ip_Configrator/Resources/IPConfig.ico"));
    QList<int> sizes;
    for (int index = 0; index < icon.imageCount(); ++index) {
        ASSERT_TRUE(icon.jumpToImage(index));
        const QImage image = icon.read();
        EXPECT_EQ(image.width(), image.height());
        EXPECT_LT(qAlpha(image.pixel(0, 0)), 128) << "no round corner at " << image.width();
        sizes.append(image.width());
    }
    EXPECT_THAT(sizes, testing::UnorderedElementsAre(16, 24, 32, 48, 64, 128, 256));
}

} // namespace
