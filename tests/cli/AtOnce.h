// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tests/support/NetworkLab.h"

#include <future>
#include <vector>

/// Runs the commands side by side, since most of the time each one waits; their outputs in the same order.
inline std::vector<lab::Output> runAtOnce(const lab::Namespace& host,
                                          const std::vector<std::vector<std::string>>& commands)
{
    std::vector<std::future<lab::Output>> running;
    for (const auto& command : commands)
        running.push_back(
            std::async(std::launch::async, [&host, &command] { return host.execute(command); }));
    std::vector<lab::Output> outputs;
    for (auto& each : running)
        outputs.push_back(each.get());
    return outputs;
}
