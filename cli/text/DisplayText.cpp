// SPDX-License-Identifier: Apache-2.0
#include "cli/text/DisplayText.h"

#include <QVector>

#include <uniwidth.h>

namespace cli {
namespace {

bool isHarmless(uint character)
{
    switch (QChar::category(character)) {
    case QChar::Other_Control:
    case QChar::Other_Format:
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph:
        return false;
    default:
        return true;
    }
}

QString escaped(uint character)
{
    if (character <= 0xFF)
        return QString::asprintf("\\x%02X", character);
    if (character <= 0xFFFF)
        return QString::asprintf("\\u%04X", character);
    return QString::asprintf("\\U%08X", character);
}

} // namespace

std::string displayText(const QString& text)
{
    QString result;
    for (const uint character : text.toUcs4()) {
        if (character == '\\')
            result += QLatin1String("\\\\");
        else if (isHarmless(character))
            result += QString::fromUcs4(&character, 1);
        else
            result += escaped(character);
    }
    return result.toStdString();
}

std::string displayText(const std::string& utf8)
{
    return displayText(QString::fromStdString(utf8));
}

int displayWidth(const std::string& utf8)
{
    return u8_strwidth(reinterpret_cast<const uint8_t*>(utf8.c_str()), "UTF-8");
}

} // namespace cli
