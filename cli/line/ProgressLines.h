// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "site/Apply.h"
#include "site/Plan.h"

#include <iosfwd>
#include <map>
#include <optional>
#include <string>

namespace cli {

struct TerminalSize
{
    unsigned lines = 24;
    unsigned columns = 80;
};

/// Of the terminal that standard error is; nothing when it is none.
std::optional<TerminalSize> terminalSize();

/// Tells how a plan is carried out: a line for each camera that is changed, updated in place on a terminal
/// that has room for all of them, and else a line whenever there is something to say.
class ProgressLines
{
public:
    /// The plan outlives this.
    ProgressLines(const site::Plan& plan, std::ostream& out, std::optional<TerminalSize> terminal);

    /// What is to be told; this outlives it. Nothing interrupts.
    site::Progress progress();

private:
    void tell(std::size_t task, const std::string& text);
    std::string lineOf(std::size_t task, const std::string& text) const;

    const site::Plan& m_plan;
    std::ostream& m_out;
    std::map<std::size_t, unsigned> m_lines; ///< Which line, from the top, is whose.
    std::optional<TerminalSize> m_terminal;  ///< Nothing: lines are not updated.
    std::size_t m_width = 0;                 ///< Of the longest place, in columns.
};

} // namespace cli
