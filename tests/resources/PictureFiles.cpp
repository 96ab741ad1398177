// SPDX-License-Identifier: Apache-2.0
#include "tests/resources/PictureFiles.h"

#include <QDirIterator>
#include <QRegularExpression>

#include <algorithm>
#include <cstdlib>

namespace {

QColor over(const QColor& background, QRgb pixel)
{
    const auto mix = [&](int above, int below) { return below + (above - below) * qAlpha(pixel) / 255; };
    return {mix(qRed(pixel), background.red()), mix(qGreen(pixel), background.green()),
            mix(qBlue(pixel), background.blue())};
}

int difference(const QColor& a, const QColor& b)
{
    return std::max(
        {std::abs(a.red() - b.red()), std::abs(a.green() - b.green()), std::abs(a.blue() - b.blue())});
}

} // namespace

QStringList FilesBelow(const QString& folder)
{
    QStringList files;
    QDirIterator entries(folder, QDir::Files, QDirIterator::Subdirectories);
    while (entries.hasNext()) {
        files.append(entries.next().mid(folder.size()));
    }
    files.sort();
    return files;
}

QStringList CarriedPictures()
{
    static const QRegularExpression OfTheProgram(QStringLiteral("^Dorn")); // Qt brings files of its own.
    return FilesBelow(QStringLiteral(":/")).filter(OfTheProgram);
}

std::vector<std::string> Readable(const QStringList& texts)
{
    std::vector<std::string> readable;
    for (const QString& text : texts) {
        readable.push_back(text.toStdString());
    }
    return readable;
}

double Difference(const QImage& first, const QImage& second, const QColor& background)
{
    int painted = 0;
    int sum = 0;
    for (int y = 0; y < first.height(); ++y) {
        for (int x = 0; x < first.width(); ++x) {
            const QRgb a = first.pixel(x, y);
            const QRgb b = second.pixel(x, y);
            if (qAlpha(a) != 0 || qAlpha(b) != 0) {
                ++painted;
                sum += difference(over(background, a), over(background, b));
            }
        }
    }
    return painted == 0 ? 0 : static_cast<double>(sum) / painted;
}
