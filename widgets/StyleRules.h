// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

#include <initializer_list>
#include <utility>

// The look that the windows' texts share: colours and families as style sheets write them.
constexpr const char* TextColor = "#666666";
constexpr const char* DarkTextColor = "#333333";
constexpr const char* DisabledTextColor = "#b0b0b0";
constexpr const char* HighlightColor = "#2C88E5";
constexpr const char* HeaderColor = "#879aad";
constexpr const char* SongFamily = "FZShuSong-Z01S";
constexpr const char* SegoeFamily = "Segoe UI";

/// Declarations of a text's colour and font with so many blanks between them: the sheets of the kit are
/// agreed to the letter, their blanks included.
QString TextLook(const char* color, int nPixels = 13, const char* family = SongFamily, int nBlanks = 0);

// Rules of style sheets. Selectors are written without the "#" of an object name in front; pictures by their
// path below ":/Dorn/Resources/".

/// Draws the picture inside of what is selected.
QString ImageRule(const QString& strSelector, const QString& strPicture);

/// Draws the indicator of a class of buttons: a picture for each state.
QString IndicatorRules(const char* className,
                       std::initializer_list<std::pair<const char*, const char*>> statePictures);

/// Draws the picture as the border and the ground of what is selected, with `strSlices` saying (leading blank
/// included) what of it is border; `strRest` holds further declarations.
QString BorderImageRule(const QString& strSelector, const QString& strPicture, const QString& strSlices,
                        const QString& strRest);

/// Draws slim scroll bars of this orientation; their arrow buttons are left as they are.
QString ScrollBarRules(Qt::Orientation orientation);
