// SPDX-License-Identifier: Apache-2.0
#include "widgets/StyleRules.h"

QString ImageRule(const QString& strSelector, const QString& strPicture)
{
    return QStringLiteral("#%1{                image: url(:/Dorn/Resources/%2);}")
        .arg(strSelector, strPicture);
}

QString BorderImageRule(const QString& strSelector, const QString& strPicture, const QString& strSlices,
                        const QString& strRest)
{
    return QStringLiteral("#%1{border-image: url(:/Dorn/Resources/%2)%3;%4}")
        .arg(strSelector, strPicture, strSlices, strRest);
}
