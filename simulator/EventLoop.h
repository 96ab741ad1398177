// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace simulator {

class ControlSocket;
class Farm;
class TimerQueue;
class Wire;

/// Keeps SIGTERM and SIGINT until `runUntilSignal` looks for them. To be called before anything that they
/// must not interrupt.
void holdSignals();

/// Serves the wire, the timers and, if there is one, the control socket, until SIGTERM or SIGINT.
void runUntilSignal(Wire& wire, Farm& farm, TimerQueue& timers, ControlSocket* control);

} // namespace simulator
