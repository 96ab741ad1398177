// SPDX-License-Identifier: Apache-2.0
#include "ui/QPictureButton.h"

#include "widgets/StyleRules.h"

QPictureButton::QPictureButton(const char* picture, const QSize& size, QWidget* pParent)
    : QPushButtonEx(pParent)
{
    setFixedSize(size);
    setStyleSheet(QStringLiteral(
                      "#QPushButtonEx{%2border:none;background-color:white;text-align:left;padding-left:22px;"
                      "background-image:url(:/Dorn/Resources/btn/%1.png);"
                      "background-repeat:no-repeat;background-position:left center;}"
                      "#QPushButtonEx:hover{color:%3;"
                      "background-image:url(:/Dorn/Resources/btn/%1_hov.png);}"
                      "#QPushButtonEx:pressed{background-image:url(:/Dorn/Resources/btn/%1_sel.png);}"
                      "#QPushButtonEx:disabled{color:#EDEDED;"
                      "background-image:url(:/Dorn/Resources/btn/%1_dis.png);}")
                      .arg(QLatin1String(picture), TextLook(TextColor), QLatin1String(HighlightColor)));
}
