// SPDX-License-Identifier: Apache-2.0
#include "resources/Fonts.h"

#include <QFont>

void InstallFontSubstitutes()
{
    const QString strLatin = QStringLiteral("Open Sans");
    const QString strChinese = QStringLiteral("Noto Sans CJK SC");

    // The letters of a song face are too fine for 13 pixels on a screen: both families become the same sans
    // serif.
    QFont::insertSubstitutions(QStringLiteral("Segoe UI"), {strLatin, strChinese});
    QFont::insertSubstitutions(QStringLiteral("FZShuSong-Z01S"), {strLatin, strChinese});
    QFont::insertSubstitution(strLatin, strChinese);
}
