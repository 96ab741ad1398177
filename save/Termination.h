// SPDX-License-Identifier: Apache-2.0
#pragma once

/// QThread::terminate() cancels its thread, which unwinds from almost any system call: out of Qt's and GLib's
/// locks, past a posted event that nobody is woken for, through destructors, where it ends the whole process.
/// So a worker that may be terminated lets that happen at places of its own choice alone.

/// From now on, to its very end, the calling thread is only terminated in TerminationPoint(). That covers
/// what Qt does after run(), which Qt itself leaves open to it.
void HoldTermination();

/// Where a thread that was terminated meanwhile unwinds (abi::__forced_unwind). The callers hold nothing but
/// what their destructors give back.
void TerminationPoint();
