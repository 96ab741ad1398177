// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <vector>

/// How long the test program was ready to wait each time it waited for a file by ppoll(2), as Qt does for a
/// child process: in milliseconds, since forgetPollTimeouts(). So a test knows a time-out without waiting for
/// it.
std::vector<long> pollTimeouts();

void forgetPollTimeouts();
