// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "simulator/config/ReadFarm.h"

#include <string>

/// What is said of a farm's file that cannot be read; "no error" of one that can.
inline std::string errorOf(const std::string& json)
{
    try {
        simulator::readFarm(json);
    } catch (const simulator::ConfigError& error) {
        return error.what();
    }
    return "no error";
}
