// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

#include <initializer_list>
#include <utility>

// Rules of style sheets. Selectors are written without the "#" of an object name in front; pictures by their
// path below ":/Dorn/Resources/".

/// Draws the picture inside of what is selected.
QString ImageRule(const QString& strSelector, const QString& strPicture);

/// Draws the indicator of a class of buttons: a picture for each state.
QString IndicatorRules(const char* className,
                       std::initializer_list<std::pair<const char*, const char*>> statePictures);

/// Draws the picture as the border and the ground of what is selected, with `strSlices` saying (leading blank
/// included) what of it is border; `strRest` are declarations more.
QString BorderImageRule(const QString& strSelector, const QString& strPicture, const QString& strSlices,
                        const QString& strRest);
