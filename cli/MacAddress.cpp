// SPDX-License-Identifier: Apache-2.0
#include "cli/MacAddress.h"

#include "cli/DisplayText.h"
#include "cli/Failure.h"

#include <QRegularExpression>

namespace cli {
namespace {

[[noreturn]] void refuse(const std::string& text, const std::string& reason)
{
    throw Failure(ExitStatus::WrongArguments, "MAC \"" + displayText(text) + "\" " + reason);
}

} // namespace

QString parseMacAddress(const std::string& text)
{
    static const QRegularExpression form(QRegularExpression::anchoredPattern(
        QStringLiteral("[0-9A-Fa-f]{2}(?:([:-]?)[0-9A-Fa-f]{2})(?:\\1[0-9A-Fa-f]{2}){4}")));
    QString digits = QString::fromStdString(text);
    if (!form.match(digits).hasMatch())
        refuse(text,
               "is no MAC address: twelve hexadecimal digits are allowed, the pairs separated by colons, "
               "dashes or nothing, such as 00:1A:2B:3C:4D:5E");
    digits = digits.remove(QLatin1Char(':')).remove(QLatin1Char('-')).toUpper();

    const quint64 number = digits.toULongLong(nullptr, 16);
    constexpr quint64 groupBit = 1ULL << 40;
    if (number == 0)
        refuse(text, "is all zeros, which is no camera's; the list command shows the cameras' own");
    if (number & groupBit)
        refuse(text,
               "is the address of a group (its first pair is odd), which is no camera's; the list command "
               "shows the cameras' own");

    for (int i = digits.size() - 2; i > 0; i -= 2)
        digits.insert(i, QLatin1Char(':'));
    return digits;
}

} // namespace cli
