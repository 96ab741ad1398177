// SPDX-License-Identifier: Apache-2.0
#pragma once

/// Whether the system calls itself Ubuntu, where windows have their buttons on the left. Asks the program
/// `uname`, for at most a minute; without an answer: no.
bool IsUbuntuSystem();
