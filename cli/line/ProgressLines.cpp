// SPDX-License-Identifier: Apache-2.0
#include "cli/line/ProgressLines.h"

#include "cli/text/DisplayText.h"
#include "site/Words.h"

#include <algorithm>
#include <ostream>
#include <sys/ioctl.h>
#include <unistd.h>

namespace cli {
namespace {

/// As much of it as fits into so many columns.
std::string cut(std::string text, unsigned columns)
{
    while (displayWidth(text) > static_cast<int>(columns)) {
        // The whole of a character: what follows its first byte, and that.
        while ((text.back() & 0xC0) == 0x80)
            text.pop_back();
        text.pop_back();
    }
    return text;
}

} // namespace

std::optional<TerminalSize> terminalSize()
{
    winsize size{};
    if (::ioctl(STDERR_FILENO, TIOCGWINSZ, &size) != 0)
        return std::nullopt;
    return size.ws_row == 0 || size.ws_col == 0 ? TerminalSize{} : TerminalSize{size.ws_row, size.ws_col};
}

ProgressLines::ProgressLines(const site::Plan& plan, std::ostream& out, std::optional<TerminalSize> terminal)
    : m_plan(plan),
      m_out(out),
      m_terminal(terminal)
{
    for (std::size_t i = 0; i < plan.tasks.size(); ++i)
        if (!plan.tasks[i].actions.empty()) {
            m_lines.emplace(i, static_cast<unsigned>(m_lines.size()));
            m_width = std::max(m_width,
                               static_cast<std::size_t>(displayWidth(displayText(plan.tasks[i].place.name))));
        }
    // What has left the screen at its top cannot be updated any more.
    if (m_terminal && m_lines.size() >= m_terminal->lines)
        m_terminal.reset();
    if (m_terminal)
        for (const auto& [task, line] : m_lines)
            m_out << lineOf(task, "waits") << '\n';
    m_out << std::flush;
}

site::Progress ProgressLines::progress()
{
    site::Progress progress;
    progress.onAction = [this](std::size_t task, site::Action action) {
        tell(task, displayText(actionInWords(action, m_plan.tasks[task].after).english()) + " ...");
    };
    progress.onReturn = [this](std::size_t task) { tell(task, "is put back ..."); };
    progress.onOutcome = [this](std::size_t task, const site::Outcome& outcome) {
        std::string text = displayText(resultInWords(outcome.result).english());
        if (!outcome.reason.empty())
            text += ": " + displayText(base::english(outcome.reason));
        tell(task, text);
    };
    return progress;
}

void ProgressLines::tell(std::size_t task, const std::string& text)
{
    const auto line = m_lines.find(task);
    if (line == m_lines.end())
        return;
    if (m_terminal) {
        // Up to its line, where all to the right of the text goes, and down again.
        const std::string distance = std::to_string(m_lines.size() - line->second);
        m_out << "\x1B[" << distance << "A\r" << lineOf(task, text) << "\x1B[K\x1B[" << distance << "B\r";
    } else {
        m_out << lineOf(task, text) << '\n';
    }
    m_out << std::flush;
}

std::string ProgressLines::lineOf(std::size_t task, const std::string& text) const
{
    const std::string place = displayText(m_plan.tasks[task].place.name);
    const auto missing = m_terminal ? m_width - static_cast<std::size_t>(displayWidth(place)) : 0;
    const std::string line = place + ": " + std::string(missing, ' ') + text;
    return m_terminal ? cut(line, m_terminal->columns - 1) : line;
}

} // namespace cli
