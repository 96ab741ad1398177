// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "widgets/QPushButtonEx.h"

/// A button without a border: a text on white beside a picture.
class QPictureButton : public QPushButtonEx
{
    Q_OBJECT

public:
    /// The picture is `picture`.png and, for hover, pressed and disabled, the same with "_hov", "_sel" and
    /// "_dis" (":/Dorn/Resources/btn/").
    QPictureButton(const char* picture, const QSize& size, QWidget* pParent);
};
