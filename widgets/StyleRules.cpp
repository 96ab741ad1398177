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

QString ScrollBarRules(Qt::Orientation orientation)
{
    const bool bVertical = orientation == Qt::Vertical;
    return QStringLiteral("QScrollBar:%1{border-image: url(:/Dorn/Resources/scrollbar/scrollbar%2.png);%3: "
                          "10px;margin: 0px;}"
                          "QScrollBar::handle:%1{border-image: "
                          "url(:/Dorn/Resources/scrollbar/scrollbar%2_sel.png);border-radius: 0px;}"
                          "QScrollBar::handle:%1:hover{border-image: "
                          "url(:/Dorn/Resources/scrollbar/scrollbar%2_hov.png);border-radius: 0px;}")
        .arg(QLatin1String(bVertical ? "vertical" : "horizontal"), QLatin1String(bVertical ? "" : "2"),
             QLatin1String(bVertical ? "width" : "height"));
}
