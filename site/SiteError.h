// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "base/Sentence.h"

#include <stdexcept>
#include <utility>

namespace site {

/// A site file that is wrong: where, what, and what would be right.
class SiteError : public std::runtime_error
{
public:
    /// Line and column are counted from 1; 0 when it is about none.
    SiteError(int line, int column, base::Sentence sentence)
        : std::runtime_error(sentence.english()),
          m_line(line),
          m_column(column),
          m_sentence(std::move(sentence))
    {}

    int line() const { return m_line; }
    int column() const { return m_column; }
    const base::Sentence& sentence() const { return m_sentence; }

private:
    int m_line;
    int m_column;
    base::Sentence m_sentence;
};

} // namespace site
