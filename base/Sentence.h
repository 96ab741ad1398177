// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

/// Marks a text for the translators' tools where it stands in the code, and is that text. The context of a
/// Sentence's is "Sentence".
#define TRANSLATABLE(context, text) text

namespace base {

/// Something to say to the user, in no language yet: what finds it out knows none. `format` is English text
/// with %1 to %9 in the places of `values`; a window looks up its translation (context "Sentence") and fills
/// that. Values can be texts of a camera, as they came; whoever shows them sees to it that they do no harm.
struct Sentence
{
    std::string format;
    std::vector<std::string> values;

    bool operator==(const Sentence&) const = default;

    std::string english() const { return filled(format); }
    /// The given text, with the values in their places; "%%" is a percent sign.
    std::string filled(const std::string& text) const;
};

/// One after the other, with a blank between them.
std::string english(const std::vector<Sentence>& sentences);

} // namespace base
