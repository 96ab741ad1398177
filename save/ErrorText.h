// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>

/// The text of the last failure: at most 511 bytes, longer ones are cut; nothing of the text before stays.
class ErrorText
{
public:
    static constexpr std::size_t Size = 512; ///< With the terminator.

    [[gnu::format(printf, 2, 3)]] void Format(const char* pchFormat, ...);

    /// Ends in a NUL; empty before the first failure.
    const char* Get() const { return m_chText; }

private:
    char m_chText[Size] = {};
};
