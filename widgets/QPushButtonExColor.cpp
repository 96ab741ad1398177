// SPDX-License-Identifier: Apache-2.0
#include "widgets/QPushButtonExColor.h"

#include "widgets/StyleRules.h"

namespace {

QString Rule(const char* state, const char* picture, const QString& strText = QString())
{
    return BorderImageRule(QStringLiteral("QPushButtonExColor") + QLatin1String(state),
                           QStringLiteral("btn/") + QLatin1String(picture),
                           QStringLiteral(" 1 1 1 1 stretch stretch"),
                           QStringLiteral("border-width: 1;") + strText);
}

/// Selects the other kind of button, so that it has no effect here.
QString RuleOfTheOtherKind(int nBlanks)
{
    return QStringLiteral("#QPushButtonEx{border-radius: 2px;%1%2}")
        .arg(QString(nBlanks, QLatin1Char(' ')), TextLook("white", 14, SongFamily, nBlanks));
}

} // namespace

QPushButtonExColor::QPushButtonExColor(QWidget* pParent)
    : QPushButtonExColor(QIcon(), QString(), pParent, QString(), RuleOfTheOtherKind(21))
{}

QPushButtonExColor::QPushButtonExColor(const QString& strText, QWidget* pParent)
    : QPushButtonExColor(
          QIcon(), strText, pParent,
          QStringLiteral("color:white;font-size:14px;font-family:%1;").arg(QLatin1String(SongFamily)),
          QString())
{}

QPushButtonExColor::QPushButtonExColor(const QIcon& icon, const QString& strText, QWidget* pParent)
    : QPushButtonExColor(icon, strText, pParent, QString(), RuleOfTheOtherKind(16))
{}

QPushButtonExColor::QPushButtonExColor(const QIcon& icon, const QString& strText, QWidget* pParent,
                                       const QString& strNormalText, const QString& strLastRule)
    : QIndexedButton(icon, strText, pParent)
{
    setObjectName(QStringLiteral("QPushButtonExColor"));
    setStyleSheet(Rule("", "btn.png", strNormalText) + Rule(":hover", "btn_hov.png") +
                  Rule(":pressed", "btn_sel.png") + Rule(":disabled", "btn_dis.png") + strLastRule);
}
