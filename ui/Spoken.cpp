// SPDX-License-Identifier: Apache-2.0
#include "ui/Spoken.h"

#include <QCoreApplication>

#include <algorithm>

namespace {

bool DoesHarm(uint nCharacter)
{
    const auto category = QChar::category(nCharacter);
    return category == QChar::Other_Control || category == QChar::Other_Format ||
           category == QChar::Other_Surrogate || category == QChar::Separator_Line ||
           category == QChar::Separator_Paragraph;
}

/// Marks of the East end a sentence with room of their own.
bool NeedsBlankAfter(const QString& strText)
{
    constexpr ushort FirstEastern = 0x2E80;
    return !strText.isEmpty() && strText.back().unicode() < FirstEastern;
}

} // namespace

std::string Harmless(const std::string& text)
{
    QString strShown;
    for (const uint nCharacter : QString::fromStdString(text).toUcs4()) {
        if (DoesHarm(nCharacter))
            strShown += QString::asprintf(nCharacter > 0xFFFF ? "\\U%08X" : "\\u%04X", nCharacter);
        else if (nCharacter == '\\')
            strShown += QStringLiteral("\\\\");
        else
            strShown += QString::fromUcs4(&nCharacter, 1);
    }
    return strShown.toStdString();
}

QString Spoken(const base::Sentence& sentence)
{
    base::Sentence harmless = sentence;
    std::transform(harmless.values.begin(), harmless.values.end(), harmless.values.begin(), Harmless);
    const QString strFormat = QCoreApplication::translate("Sentence", sentence.format.c_str());
    return QString::fromStdString(harmless.filled(strFormat.toStdString()));
}

QString Spoken(const std::vector<base::Sentence>& sentences)
{
    QString strText;
    for (const base::Sentence& sentence : sentences) {
        if (NeedsBlankAfter(strText))
            strText += QLatin1Char(' ');
        strText += Spoken(sentence);
    }
    return strText;
}
