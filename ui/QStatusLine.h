// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "base/Sentence.h"
#include "ui/QElidedLabel.h"

#include <vector>

/// One line that tells what goes on; what there is no room for is in its tool tip.
class QStatusLine : public QElidedLabel
{
    Q_OBJECT

public:
    explicit QStatusLine(QWidget* pParent);

    /// Tells this in place of what it told before.
    void Tell(std::vector<base::Sentence> news);

    /// Sets its text again, in the language of now.
    void RefreshTexts();

private:
    std::vector<base::Sentence> m_news;
};
