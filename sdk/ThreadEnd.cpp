// SPDX-License-Identifier: Apache-2.0
#include "sdk/ThreadEnd.h"

#include "base/CancellationHold.h"
#include "sdk/HandleTable.h"

namespace sdk {

namespace {

struct ThreadEnd
{
    ThreadEnd() = default;
    ThreadEnd(const ThreadEnd&) = delete;
    ThreadEnd& operator=(const ThreadEnd&) = delete;
    ~ThreadEnd()
    {
        // A cancellation that comes as late as this would have nowhere to unwind to.
        const base::CancellationHold hold;
        HandleTable::instance().closeOpenedBy(std::this_thread::get_id());
    }
};

} // namespace

void closeCamerasWhenThisThreadEnds()
{
    const thread_local ThreadEnd end;
}

} // namespace sdk
