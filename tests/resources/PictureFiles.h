// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QColor>
#include <QImage>
#include <QStringList>

#include <string>
#include <vector>

/// The files below a folder, whose path ends with a slash, each with its path from there, sorted.
QStringList FilesBelow(const QString& folder);

/// The files that are compiled into the program, each with its path below ":/".
QStringList CarriedPictures();

/// For comparisons that print what differs.
std::vector<std::string> Readable(const QStringList& texts);

/// How far two pictures of one size are apart, as the eye has it on this background: the colours' mean
/// difference, 0 to 255, over the pixels that are painted in one of them at least.
double Difference(const QImage& first, const QImage& second, const QColor& background);
