// SPDX-License-Identifier: Apache-2.0
#include "ui/InOneLine.h"

#include <algorithm>

QString InOneLine(QString strText)
{
    const auto isBreak = [](QChar character) {
        return (character >= QLatin1Char('\t') && character <= QLatin1Char('\r')) ||
               character == QChar::LineSeparator || character == QChar::ParagraphSeparator;
    };
    std::replace_if(strText.begin(), strText.end(), isBreak, QLatin1Char(' '));
    return strText;
}
