// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <sys/types.h>
#include <vector>

namespace lab {

/// A started program; whoever started it reaps it and closes the descriptors.
struct Child
{
    pid_t pid = 0;   ///< Also the number of its process group.
    int output = -1; ///< Its standard output.
    int errors = -1; ///< Its standard error, if captured.
};

enum class CaptureErrors
{
    No,
    Yes
};

/// Starts a program in a network namespace, with no files open but the standard ones: what this process was
/// given by whoever started it is not handed on. It is killed when this process ends, however that happens. A
/// program that cannot be executed ends with status 127 and says so on its standard error. Any thread.
Child launchChild(int namespaceFd, const std::vector<std::string>& arguments, CaptureErrors captureErrors);

/// A descriptor that is readable when the process has ended; throws when there is no such process.
int openProcess(pid_t pid);

} // namespace lab
