// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

namespace genapi {

/// Hears what the engine and the libraries below it complain of on this thread (assertions that failed,
/// criticals, warnings) for as long as this lives. They are not printed. The engine goes on after them as if
/// nothing had happened, so whoever calls it asks here whether anything has.
///
/// Complaints of other threads are printed meanwhile as GLib prints them by default.
class Complaints
{
public:
    Complaints();
    Complaints(const Complaints&) = delete;
    Complaints& operator=(const Complaints&) = delete;
    ~Complaints();

    /// Empty when there was none.
    const std::string& first() const { return m_first; }

    /// Lives while other code runs in the midst of a call into the engine: what that code complains of is
    /// printed as ever.
    class Pause
    {
    public:
        Pause();
        Pause(const Pause&) = delete;
        Pause& operator=(const Pause&) = delete;
        ~Pause();

    private:
        std::string* m_paused;
    };

private:
    std::string m_first;
    std::string* m_outer; ///< Where complaints go again afterwards; null for nowhere.
};

} // namespace genapi
