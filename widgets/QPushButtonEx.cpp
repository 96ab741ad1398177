// SPDX-License-Identifier: Apache-2.0
#include "widgets/QPushButtonEx.h"

#include "widgets/StyleRules.h"

namespace {

constexpr const char* Slices = " 1 1 1 1 stretch stretch";
constexpr const char* Font = "font-family: FZShuSong-Z01S;";

QString Rule(const char* state, const char* picture, const char* slices, const char* color, const char* font)
{
    return BorderImageRule(QStringLiteral("QPushButtonEx") + QLatin1String(state),
                           QStringLiteral("btn/") + QLatin1String(picture), QLatin1String(slices),
                           QStringLiteral("border-width: 2;color:%1;font-size:14px;border-radius: 2px;%2")
                               .arg(QLatin1String(color), QLatin1String(font)));
}

} // namespace

QPushButtonEx::QPushButtonEx(QWidget* pParent) : QPushButtonEx(QIcon(), QString(), pParent, Slices, Font) {}

QPushButtonEx::QPushButtonEx(const QString& strText, QWidget* pParent)
    : QPushButtonEx(QIcon(), strText, pParent, Slices + 1, Font)
{}

QPushButtonEx::QPushButtonEx(const QIcon& icon, const QString& strText, QWidget* pParent)
    : QPushButtonEx(icon, strText, pParent, Slices, "")
{}

QPushButtonEx::QPushButtonEx(const QIcon& icon, const QString& strText, QWidget* pParent,
                             const char* normalSlices, const char* hoverFont)
    : QIndexedButton(icon, strText, pParent)
{
    setObjectName(QStringLiteral("QPushButtonEx"));
    setStyleSheet(Rule("", "btn1.png", normalSlices, "#666666", Font) +
                  Rule(":hover", "btn1_hov.png", Slices, "#3876cb", hoverFont) +
                  Rule(":pressed", "btn1_sel.png", Slices, "#2d5fa4", Font) +
                  Rule(":disabled", "btn1_dis.png", Slices, "#cccccc", Font));
}
