// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QStringList>

/// Runs a program that pings and looks for "ms" in what it prints to standard output, as a reply's line has
/// its time in milliseconds. False when the program cannot be started or crashes, and when it runs for
/// longer than `nFinishMilliseconds`; it is killed then.
bool PingAnswers(const QString& program, const QStringList& arguments, int nFinishMilliseconds);
