// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "base/Sentence.h"

#include <QString>

#include <string>
#include <vector>

/// The sentence in the language of now, as plain text of one line: what a camera says in it begins no line,
/// turns no writing direction and hides nothing.
QString Spoken(const base::Sentence& sentence);

/// One after the other.
QString Spoken(const std::vector<base::Sentence>& sentences);

/// A device's text, UTF-8, as it can stand in a line of text: control and format characters, separators of
/// lines among them, as "\u202E", a backslash as two.
std::string Harmless(const std::string& text);
