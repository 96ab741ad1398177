// SPDX-License-Identifier: Apache-2.0
#include "widgets/QStaticLabel.h"

QStaticLabel::QStaticLabel(QWidget* pParent, Qt::WindowFlags f) : QStaticLabel(QString(), pParent, f) {}

QStaticLabel::QStaticLabel(const QString& strText, QWidget* pParent, Qt::WindowFlags f)
    : QLabel(strText, pParent, f)
{
    setTextFormat(Qt::PlainText);
    setStyleSheet(QStringLiteral("QLabel{color:#666666;                  "
                                 "font-size:13px;                  "
                                 "font-family: FZShuSong-Z01S;}"));
}
