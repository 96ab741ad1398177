// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "simulator/CameraConfig.h"

namespace simulator {

/// Which requests a camera is going to ignore.
class FaultPlan
{
public:
    /// Follows what is already planned for such requests; one without end makes those after it useless.
    void add(const CameraConfig::Fault& fault);
    /// Whether the request that has just come in is one of them; uses it up.
    bool drops(Request request);

private:
    std::vector<CameraConfig::Fault> m_faults;
};

} // namespace simulator
