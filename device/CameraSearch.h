// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

/// What the process's latest enumeration left out.
struct SearchReport
{
    unsigned nUnlisted = 0; ///< Cameras that answered beyond those for which the list has room.
    QString strNotSearched; ///< "eth1: Too many open files; ...", or why nothing was; empty when all was.
};

SearchReport GetSearchReport();

enum class ListenerState
{
    Hears,        ///< All that can be heard is.
    Missing,      ///< The program is not there.
    Forbidden,    ///< This user may not run it, or nobody.
    Unprivileged, ///< It may not open its socket.
    Failed,       ///< Another reason, or it ended too often.
};

/// How the process's latest enumeration heard what this computer's reverse-path filter or firewall keeps from
/// ordinary programs: by the listener, a program of its own.
struct ListenerReport
{
    ListenerState state = ListenerState::Hears;
    QString strProgram; ///< Its file.
};

ListenerReport GetListenerReport();

/// From now on the camera of that MAC address, as QDevice has it, is listed by this process's enumerations
/// whenever it answers, whatever else does.
void ExpectCamera(const QString& strMacAddress);
