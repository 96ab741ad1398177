// SPDX-License-Identifier: Apache-2.0
#include "widgets/QPushButtonEx.h"

#include "widgets/StyleRules.h"

namespace {

constexpr const char* Slices = " 1 1 1 1 stretch stretch";

QString Rule(const char* state, const char* picture, const char* slices, const char* color, bool bFont = true)
{
    QString strRest = QStringLiteral("border-width: 2;color:%1;font-size:14px;border-radius: 2px;")
                          .arg(QLatin1String(color));
    if (bFont)
        strRest += QStringLiteral("font-family: %1;").arg(QLatin1String(SongFamily));
    return BorderImageRule(QStringLiteral("QPushButtonEx") + QLatin1String(state),
                           QStringLiteral("btn/") + QLatin1String(picture), QLatin1String(slices), strRest);
}

} // namespace

QPushButtonEx::QPushButtonEx(QWidget* pParent) : QPushButtonEx(QIcon(), QString(), pParent, Slices, true) {}

QPushButtonEx::QPushButtonEx(const QString& strText, QWidget* pParent)
    : QPushButtonEx(QIcon(), strText, pParent, Slices + 1, true)
{}

QPushButtonEx::QPushButtonEx(const QIcon& icon, const QString& strText, QWidget* pParent)
    : QPushButtonEx(icon, strText, pParent, Slices, false)
{}

QPushButtonEx::QPushButtonEx(const QIcon& icon, const QString& strText, QWidget* pParent,
                             const char* normalSlices, bool bHoverFont)
    : QIndexedButton(icon, strText, pParent)
{
    setObjectName(QStringLiteral("QPushButtonEx"));
    setStyleSheet(Rule("", "btn1.png", normalSlices, TextColor) +
                  Rule(":hover", "btn1_hov.png", Slices, "#3876cb", bHoverFont) +
                  Rule(":pressed", "btn1_sel.png", Slices, "#2d5fa4") +
                  Rule(":disabled", "btn1_dis.png", Slices, "#cccccc"));
}
