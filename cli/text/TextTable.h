// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace cli {

/// Lines of cells in aligned columns.
class TextTable
{
public:
    struct Cell
    {
        std::string text;   ///< Fit for a terminal, see displayText().
        std::string colour; ///< A terminal's colour sequence; empty for none.
    };
    using Row = std::vector<Cell>;

    /// Every row has as many cells as the first.
    void addRow(Row row) { m_rows.push_back(std::move(row)); }

    /// A line for each row, each with its newline and without spaces before it.
    std::string text() const;

private:
    std::vector<Row> m_rows;
};

} // namespace cli
