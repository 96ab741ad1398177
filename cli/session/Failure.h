// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <stdexcept>
#include <string>

namespace cli {

enum class ExitStatus
{
    Done = 0,
    Failed = 1, ///< Or refused.
    WrongArguments = 2,
    NoSuchCamera = 3,
    SomethingToDo = 4, ///< Where it was only to be found out whether there is.
    Interrupted = 130, ///< By a signal, while a change was under way.
};

/// Ends a command. Its text is one sentence or more for the user, who sees it on standard error.
class Failure : public std::runtime_error
{
public:
    Failure(ExitStatus status, const std::string& text) : std::runtime_error(text), m_status(status) {}

    ExitStatus status() const { return m_status; }

private:
    ExitStatus m_status;
};

} // namespace cli
