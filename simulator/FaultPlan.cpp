// SPDX-License-Identifier: Apache-2.0
#include "simulator/FaultPlan.h"

#include <algorithm>

namespace simulator {

void FaultPlan::add(const CameraConfig::Fault& fault)
{
    m_faults.push_back(fault);
}

bool FaultPlan::drops(Request request)
{
    const auto found =
        std::find_if(m_faults.begin(), m_faults.end(), [request](const CameraConfig::Fault& fault) {
            return fault.request == request && fault.times != 0u;
        });
    if (found == m_faults.end())
        return false;
    if (found->times)
        --*found->times;
    return true;
}

} // namespace simulator
