// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QLabel>

/// A text of several paragraphs, each meant for one line. Where the font is too wide for that the letters
/// stand closer, and what is still too long is wrapped.
class QNoteLabel : public QLabel
{
    Q_OBJECT

public:
    explicit QNoteLabel(QWidget* pParent);

    /// The text is markup, and `nWidth` the room for it in pixels.
    void SetNote(const QString& strNote, int nWidth);

private:
    void SetLetterSpacing(qreal pixels);
};
