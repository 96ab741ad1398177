// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QStringList>

/// Runs a program that pings and looks for "ms" in what it prints to standard output, as a reply's line has
/// its time in milliseconds. False when the program cannot be started, crashes, or runs for longer than it
/// may from its start on; it is killed then.
bool PingAnswers(const QString& program, const QStringList& arguments, int nFinishMilliseconds);
