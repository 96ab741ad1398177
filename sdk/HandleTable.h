// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "sdk/RzCameraSdk.h"

#include <map>
#include <memory>
#include <mutex>

namespace sdk {

/// The handles given out and not yet destroyed. Thread-safe: a handle that is destroyed while a call uses it
/// lives until that call returns.
class HandleTable
{
public:
    static HandleTable& instance();

    void* create(const RZ_CC_DEVICE_INFO& info);
    bool destroy(void* handle);
    /// What the handle was made for; null when there is no such handle.
    std::shared_ptr<const RZ_CC_DEVICE_INFO> find(void* handle) const;

private:
    mutable std::mutex m_mutex;
    std::map<void*, std::shared_ptr<const RZ_CC_DEVICE_INFO>> m_handles;
};

} // namespace sdk
