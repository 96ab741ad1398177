// SPDX-License-Identifier: Apache-2.0
#include "base/Sentence.h"

namespace base {

std::string Sentence::filled(const std::string& text) const
{
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char next = text[i] == '%' && i + 1 < text.size() ? text[i + 1] : '\0';
        const auto number = static_cast<std::size_t>(next - '1');
        if (next == '%')
            result += '%';
        else if (next >= '1' && next <= '9' && number < values.size())
            result += values[number];
        else {
            result += text[i];
            continue;
        }
        ++i;
    }
    return result;
}

std::string english(const std::vector<Sentence>& sentences)
{
    std::string text;
    for (const Sentence& sentence : sentences)
        text += (text.empty() ? "" : " ") + sentence.english();
    return text;
}

} // namespace base
