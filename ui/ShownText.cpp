// SPDX-License-Identifier: Apache-2.0
#include "ui/ShownText.h"

#include "widgets/StyleRules.h"

#include <QHelpEvent>
#include <QTextDocument>
#include <QToolTip>

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

QString ToolTipSheet()
{
    return QStringLiteral("QToolTip{%1background-color:#ffffff;border:1px solid %2;padding:2px;}")
        .arg(TextLook(DarkTextColor), QLatin1String(HeaderColor));
}

void ShowToolTip(const QHelpEvent& event, QWidget& widget, const QString& strText)
{
    // Qt would take a camera's text for markup if it looks like that.
    const QString strShown =
        strText.isEmpty() ? QString() : Qt::convertFromPlainText(strText, Qt::WhiteSpaceNormal);
    QToolTip::showText(event.globalPos(), strShown, &widget);
}
