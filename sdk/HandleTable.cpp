// SPDX-License-Identifier: Apache-2.0
#include "sdk/HandleTable.h"

namespace sdk {

HandleTable& HandleTable::instance()
{
    static HandleTable* const table = new HandleTable;
    return *table;
}

void* HandleTable::create(const RZ_CC_DEVICE_INFO& info)
{
    auto copy = std::make_shared<RZ_CC_DEVICE_INFO>(info);
    void* const handle = copy.get();
    const std::lock_guard lock(m_mutex);
    m_handles.emplace(handle, std::move(copy));
    return handle;
}

bool HandleTable::destroy(void* handle)
{
    const std::lock_guard lock(m_mutex);
    return m_handles.erase(handle) > 0;
}

std::shared_ptr<const RZ_CC_DEVICE_INFO> HandleTable::find(void* handle) const
{
    const std::lock_guard lock(m_mutex);
    const auto found = m_handles.find(handle);
    return found == m_handles.end() ? nullptr : found->second;
}

} // namespace sdk
