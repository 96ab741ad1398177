// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "simulator/Fault.h"

#include <vector>

namespace simulator {

/// Which requests to a camera are going to go wrong.
class FaultPlan
{
public:
    /// Of several that hit the same request the earlier one counts.
    void add(Fault fault);
    void clear() { m_entries.clear(); }
    /// The fault that hits the request which has just come in; uses it up.
    std::optional<Fault> hit(Request request);

private:
    struct Entry
    {
        Fault fault;
        unsigned seen = 0; ///< Requests that it concerns.
    };

    static bool isDue(const Entry& entry);

    std::vector<Entry> m_entries;
};

} // namespace simulator
