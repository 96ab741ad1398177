// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "cli/session/Failure.h"

#include <functional>
#include <gtest/gtest.h>
#include <string>

/// What the user is told when `attempt` refuses its arguments; the test fails when it does not.
inline std::string refusal(const std::function<void()>& attempt)
{
    try {
        attempt();
    } catch (const cli::Failure& failure) {
        EXPECT_EQ(failure.status(), cli::ExitStatus::WrongArguments);
        EXPECT_EQ(std::string(failure.what()).find('\n'), std::string::npos) << "it is one line";
        return failure.what();
    }
    ADD_FAILURE() << "nothing was refused";
    return {};
}
