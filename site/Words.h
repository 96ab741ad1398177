// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "base/Sentence.h"
#include "site/Apply.h"
#include "site/Plan.h"

#include <string>
#include <vector>

/// What the window and the command line say alike.
namespace site {

/// "static 192.168.10.21/24", "DHCP 192.168.10.105/24", "DHCP" ...; with " via GATEWAY" where there is one.
base::Sentence settingsInWords(const Settings& settings);

/// "force 192.168.10.21", "store the address", "switch to static", "rename to left", "restart".
base::Sentence actionInWords(Action action, const Settings& after);

/// "changed", "put back", "not begun" ...
base::Sentence resultInWords(Result result);

/// Of a camera that is neither as planned nor seen to be as before: which one, and what it has now.
base::Sentence lossOf(const Task& task, const Outcome& outcome);

/// What could not be put back first; then how many changed, were put back ...
std::vector<base::Sentence> summaryOf(const Plan& plan, const std::vector<Outcome>& outcomes);

} // namespace site
