// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "base/MacAddress.h"
#include "base/Sentence.h"

#include <optional>
#include <string>
#include <vector>

namespace doctor {

/// The worst first.
enum class Severity
{
    Error,
    Warning,
    Note
};

/// Something that is wrong on these networks, or that one ought to know.
struct Finding
{
    std::string id; ///< "outside-subnet", as ip-configurator-cli(1) lists them.
    Severity severity = Severity::Note;
    std::string adapterName;                ///< Empty when it is about none.
    std::optional<base::MacAddress> camera; ///< Or another device; nothing when it is about no single one.
    std::vector<base::Sentence> text;       ///< What is wrong; and what hands must do where no command can.
    std::vector<base::Sentence> reason;     ///< Why, with the evidence seen.
    /// Command lines that make it go away, run by root on this computer, in their order. Quoted for a shell.
    std::vector<std::string> repair;
};

} // namespace doctor
