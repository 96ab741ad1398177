// SPDX-License-Identifier: Apache-2.0
#include "widgets/QLineEditEx.h"

#include "widgets/FocusRing.h"
#include "widgets/StyleRules.h"

#include <QKeyEvent>

QLineEditEx::QLineEditEx(QWidget* pParent) : QLineEdit(pParent)
{
    Init();
    setStyleSheet(styleSheet() +
                  QStringLiteral("#QLineEditEx{%1}").arg(TextLook(TextColor, 13, SegoeFamily, 30)));
}

QLineEditEx::QLineEditEx(const QString& strText, QWidget* pParent) : QLineEdit(strText, pParent)
{
    Init();
}

void QLineEditEx::Init()
{
    setObjectName(QStringLiteral("QLineEditEx"));
    // Not the desktop's colour: the text stands on the kit's picture.
    QPalette palette;
    palette.setColor(QPalette::Text, QColor(TextColor));
    setPalette(palette);
    setStyleSheet(
        ImageRule(QStringLiteral("QLineEditEx"), QStringLiteral("inputbox/inputbox.png")) +
        ImageRule(QStringLiteral("QLineEditEx:hover:focus"), QStringLiteral("inputbox/inputbox_hov.png")) +
        ImageRule(QStringLiteral("QLineEditEx:disabled "), QStringLiteral("inputbox/inputbox_dis.png")));
}

void QLineEditEx::keyPressEvent(QKeyEvent* pEvent)
{
    if (pEvent->key() == Qt::Key_Return || pEvent->key() == Qt::Key_Enter)
        emit SigEnterKeyPress(text());
    QLineEdit::keyPressEvent(pEvent);
}

void QLineEditEx::focusOutEvent(QFocusEvent* pEvent)
{
    QLineEdit::focusOutEvent(pEvent);
    emit SigFocusOutEvent(text());
}

void QLineEditEx::paintEvent(QPaintEvent* pEvent)
{
    QLineEdit::paintEvent(pEvent);
    DrawFocusRing(*this);
}
