// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

/// Takes the lock that one process on this host has at a time: on /var/run/<name of the program's file>.pid,
/// in which it then writes its process id. False, and a line on standard output, when another process has it.
///
/// The lock is the process's own until it ends, however that happens. Where the file cannot be opened or
/// written to, and where the program's file has no name, the process ends with status 1. Call it once, on the
/// main thread, before any child process is started.
bool runSingleInstance();

/// The name of the file that this process runs, without its folder; empty when it cannot be found out.
std::string currentExeName();
