// SPDX-License-Identifier: Apache-2.0
#include "ui/QPictureButton.h"

QPictureButton::QPictureButton(const char* picture, const QSize& size, QWidget* pParent)
    : QPushButtonEx(pParent)
{
    setFixedSize(size);
    setStyleSheet(
        QStringLiteral("#QPushButtonEx{border:none;background-color:white;color:#666666;font-size:13px;"
                       "font-family:FZShuSong-Z01S;text-align:left;padding-left:22px;"
                       "background-image:url(:/Dorn/Resources/btn/%1.png);"
                       "background-repeat:no-repeat;background-position:left center;}"
                       "#QPushButtonEx:hover{color:#2C88E5;"
                       "background-image:url(:/Dorn/Resources/btn/%1_hov.png);}"
                       "#QPushButtonEx:pressed{background-image:url(:/Dorn/Resources/btn/%1_sel.png);}"
                       "#QPushButtonEx:disabled{color:#EDEDED;"
                       "background-image:url(:/Dorn/Resources/btn/%1_dis.png);}")
            .arg(QLatin1String(picture)));
}
