// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

namespace simulator {

class Farm;

/// Says what is wrong with a command, and what is allowed.
class CommandError : public std::runtime_error
{
    using std::runtime_error::runtime_error;
};

/// Changes or shows a camera of a running farm, as camera-farm(1) describes; gives the text to print. Throws
/// CommandError, and then has changed nothing.
std::string runCommand(Farm& farm, std::string_view line);

} // namespace simulator
