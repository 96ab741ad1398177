// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "sdk/CameraHandle.h"

#include <map>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

namespace sdk {

/// The handles given out and not yet destroyed. Thread-safe: a handle that is destroyed while a call uses it
/// lives until that call returns.
class HandleTable
{
public:
    static HandleTable& instance();

    void* create(const RZ_CC_DEVICE_INFO& info);
    /// Closes the camera too.
    bool destroy(void* handle);
    /// Null when there is no such handle.
    std::shared_ptr<CameraHandle> find(void* handle) const;

    /// Closes this camera in whichever handle it is open.
    void closeCamera(const base::MacAddress& mac);
    /// Closes the cameras that this thread has opened.
    void closeOpenedBy(std::thread::id thread);

private:
    template <typename Predicate>
    void closeIf(Predicate isMeant);

    mutable std::mutex m_mutex;
    std::map<void*, std::shared_ptr<CameraHandle>> m_handles;
};

} // namespace sdk
