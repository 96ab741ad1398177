// SPDX-License-Identifier: Apache-2.0
#include "cli/text/TextTable.h"

#include "cli/text/DisplayText.h"

#include <algorithm>

namespace cli {
namespace {

constexpr std::size_t Gap = 2;
constexpr const char* NoColour = "\x1B[0m";

} // namespace

std::string TextTable::text() const
{
    std::vector<std::size_t> widths;
    for (const Row& row : m_rows) {
        widths.resize(row.size());
        for (std::size_t i = 0; i < row.size(); ++i)
            widths[i] = std::max(widths[i], static_cast<std::size_t>(displayWidth(row[i].text)));
    }

    std::string result;
    for (const Row& row : m_rows) {
        std::size_t owedSpaces = 0; // Only what follows them pays them out, so that no line ends in spaces.
        for (std::size_t i = 0; i < row.size(); ++i) {
            const Cell& cell = row[i];
            if (!cell.text.empty()) {
                result.append(owedSpaces, ' ');
                result += cell.colour.empty() ? cell.text : cell.colour + cell.text + NoColour;
                owedSpaces = 0;
            }
            owedSpaces += widths[i] - static_cast<std::size_t>(displayWidth(cell.text)) + Gap;
        }
        result += '\n';
    }
    return result;
}

} // namespace cli
