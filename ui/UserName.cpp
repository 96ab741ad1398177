// SPDX-License-Identifier: Apache-2.0
#include "ui/UserName.h"

QString CutUserName(const QString& strName)
{
    constexpr int MaxBytes = 15;
    const QByteArray utf8 = strName.toUtf8();
    return utf8.size() > MaxBytes ? QString::fromLatin1(utf8.left(MaxBytes)) : strName;
}
