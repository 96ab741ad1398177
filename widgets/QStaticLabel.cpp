// SPDX-License-Identifier: Apache-2.0
#include "widgets/QStaticLabel.h"

#include "widgets/StyleRules.h"

QStaticLabel::QStaticLabel(QWidget* pParent, Qt::WindowFlags f) : QStaticLabel(QString(), pParent, f) {}

QStaticLabel::QStaticLabel(const QString& strText, QWidget* pParent, Qt::WindowFlags f)
    : QLabel(strText, pParent, f)
{
    setTextFormat(Qt::PlainText);
    setStyleSheet(QStringLiteral("QLabel{%1}").arg(TextLook(TextColor, 13, SongFamily, 18)));
}
