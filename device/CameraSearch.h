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

/// From now on the camera of that MAC address, as QDevice has it, is listed by this process's enumerations
/// whenever it answers, whatever else does.
void ExpectCamera(const QString& strMacAddress);
