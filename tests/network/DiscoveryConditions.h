// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tests/network/Site.h"

#include <functional>
#include <ostream>
#include <string>
#include <vector>

/// A network on which every camera is to be found. The tests go through them with the SDK; the benchmark also
/// with what a user might take instead.
struct DiscoveryCondition
{
    std::string name;        ///< CamelCase, a test's name.
    std::string description; ///< For people.
    unsigned cameras;        ///< Different ones.
    std::function<void(Site&)> build;
    unsigned enumerations = 1;
    double share = 1.0; ///< Of cameras x enumerations that must be found.
};

std::ostream& operator<<(std::ostream& out, const DiscoveryCondition& condition);

const std::vector<DiscoveryCondition>& discoveryConditions();

/// The one of that name.
const DiscoveryCondition& discoveryCondition(const std::string& name);
