// SPDX-License-Identifier: Apache-2.0
#include "ui/QNoteLabel.h"

#include "widgets/StyleRules.h"

QNoteLabel::QNoteLabel(QWidget* pParent) : QLabel(pParent)
{
    setTextFormat(Qt::RichText);
    setStyleSheet(TextLook(DarkTextColor, 14, SegoeFamily, 39));
}

void QNoteLabel::SetNote(const QString& strNote, int nWidth)
{
    setText(strNote);
    SetLetterSpacing(0);
    setWordWrap(false);
    ensurePolished();
    if (sizeHint().width() > nWidth)
        SetLetterSpacing(-0.5); // As much as is still easy to read.
    setWordWrap(true);
}

void QNoteLabel::SetLetterSpacing(qreal pixels)
{
    QFont spaced = font();
    spaced.setLetterSpacing(QFont::AbsoluteSpacing, pixels);
    setFont(spaced);
}
