// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "site/Apply.h"
#include "site/Plan.h"

#include <string>
#include <vector>

namespace cli {

/// For people: first what could not be put back, then a line for each place, then why.
std::string applyText(const site::Plan& plan, const std::vector<site::Outcome>& outcomes, bool coloured);

/// An array with an object for each place.
std::string applyJson(const site::Plan& plan, const std::vector<site::Outcome>& outcomes);

/// "static 192.168.10.21/24", and the name; what is hostile in it escaped.
std::string settingsText(const site::Settings& settings);

/// Of the sentences, fit for a terminal.
std::string shown(const std::vector<base::Sentence>& sentences);

} // namespace cli
