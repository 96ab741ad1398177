// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <stdexcept>

namespace simulator {

/// Says which camera and member of the configuration is wrong, and what is allowed there.
class ConfigError : public std::runtime_error
{
    using std::runtime_error::runtime_error;
};

} // namespace simulator
