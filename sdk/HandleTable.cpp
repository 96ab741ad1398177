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
    auto camera = std::make_shared<CameraHandle>(info);
    void* const handle = camera.get();
    const std::lock_guard lock(m_mutex);
    m_handles.emplace(handle, std::move(camera));
    return handle;
}

bool HandleTable::destroy(void* handle)
{
    std::shared_ptr<CameraHandle> camera;
    {
        const std::lock_guard lock(m_mutex);
        const auto found = m_handles.find(handle);
        if (found == m_handles.end())
            return false;
        camera = std::move(found->second);
        m_handles.erase(found);
    }
    camera->close();
    return true;
}

std::shared_ptr<CameraHandle> HandleTable::find(void* handle) const
{
    const std::lock_guard lock(m_mutex);
    const auto found = m_handles.find(handle);
    return found == m_handles.end() ? nullptr : found->second;
}

void HandleTable::closeCamera(const base::MacAddress& mac)
{
    closeIf([&mac](const CameraHandle& camera) { return camera.mac() == mac; });
}

void HandleTable::closeOpenedBy(std::thread::id thread)
{
    closeIf([thread](const CameraHandle& camera) { return camera.wasOpenedBy(thread); });
}

template <typename Predicate>
void HandleTable::closeIf(Predicate isMeant)
{
    std::vector<std::shared_ptr<CameraHandle>> meant;
    {
        const std::lock_guard lock(m_mutex);
        for (const auto& [handle, camera] : m_handles)
            if (isMeant(*camera))
                meant.push_back(camera);
    }
    // Not under the lock: it takes as long as the cameras do.
    for (const auto& camera : meant)
        camera->close();
}

} // namespace sdk
