// SPDX-License-Identifier: Apache-2.0
#include "save/DottedText.h"

#include <QString>
#include <QVector>

bool DottedToDword(const QString& strText, unsigned long& nValue)
{
    const QVector<QStringRef> parts = strText.splitRef(QLatin1Char('.'));
    if (parts.size() != 4)
        return false;
    quint32 nAddress = 0;
    for (int i = 0; i < 4; ++i)
        nAddress += static_cast<quint32>(parts[i].toInt()) << (24 - 8 * i);
    nValue = static_cast<unsigned long>(static_cast<qint64>(static_cast<qint32>(nAddress)));
    return true;
}
