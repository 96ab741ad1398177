// SPDX-License-Identifier: Apache-2.0
#include "ui/QStatusLine.h"

#include "ui/Spoken.h"

#include <QStringList>

QStatusLine::QStatusLine(QWidget* pParent) : QElidedLabel(pParent) {}

void QStatusLine::Tell(std::vector<base::Sentence> news)
{
    m_news = std::move(news);
    RefreshTexts();
}

void QStatusLine::RefreshTexts()
{
    QStringList texts;
    for (const base::Sentence& sentence : m_news)
        texts << Spoken(sentence);
    setText(texts.join(QStringLiteral("  \u00B7  ")));
}
