// SPDX-License-Identifier: Apache-2.0
#include "cli/ChangeReport.h"

#include "cli/Cameras.h"
#include "cli/DeviceTable.h"
#include "cli/DisplayText.h"
#include "cli/Failure.h"
#include "cli/Session.h"
#include "cli/SetRequest.h"

#include <ostream>

namespace cli {

void reportChange(const QDevice& before, const QDevice& after, const Session& session)
{
    session.out << changeTable(before, after, session.coloured) << std::flush;
    if (!session.out)
        throw Failure(ExitStatus::Failed,
                      describe(after) + " has what was asked for (user name \"" +
                          displayText(after.m_strUserDefinedName) + "\", " + describeAddressing(after) +
                          "), as it was seen to report, but the report of it cannot be written: standard "
                          "output is closed or full");
}

} // namespace cli
