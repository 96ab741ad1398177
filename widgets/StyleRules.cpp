// SPDX-License-Identifier: Apache-2.0
#include "widgets/StyleRules.h"

QString TextLook(const char* color, int nPixels, const char* family, int nBlanks)
{
    return QStringLiteral("color:%1;%2font-size:%3px;%2font-family: %4;")
        .arg(QLatin1String(color), QString(nBlanks, QLatin1Char(' ')), QString::number(nPixels),
             QLatin1String(family));
}

QString ImageRule(const QString& strSelector, const QString& strPicture)
{
    return QStringLiteral("#%1{                image: url(:/Dorn/Resources/%2);}")
        .arg(strSelector, strPicture);
}

QString IndicatorRules(const char* className,
                       std::initializer_list<std::pair<const char*, const char*>> statePictures)
{
    QString strRules;
    for (const auto& [state, picture] : statePictures)
        strRules +=
            ImageRule(QLatin1String(className) + QStringLiteral("::indicator:") + QLatin1String(state),
                      QLatin1String(picture));
    return strRules;
}

QString BorderImageRule(const QString& strSelector, const QString& strPicture, const QString& strSlices,
                        const QString& strRest)
{
    return QStringLiteral("#%1{border-image: url(:/Dorn/Resources/%2)%3;%4}")
        .arg(strSelector, strPicture, strSlices, strRest);
}
