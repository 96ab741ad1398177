// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <map>
#include <memory>
#include <mutex>

namespace sdk {

/// What callers of the C interface have open, so that a pointer that is none of those, or is closed, is told
/// from them. One that is closed while a call uses it lives until that call returns. Any thread.
template <typename Thing>
class OpenThings
{
public:
    /// The process's own; never destroyed, as calls may come up to the very end.
    static OpenThings& instance()
    {
        static OpenThings* const things = new OpenThings;
        return *things;
    }

    void* add(std::shared_ptr<Thing> thing)
    {
        const std::lock_guard lock(m_mutex);
        void* const key = thing.get();
        m_things.emplace(key, std::move(thing));
        return key;
    }

    /// Null when there is none such.
    std::shared_ptr<Thing> find(void* key) const
    {
        const std::lock_guard lock(m_mutex);
        const auto found = m_things.find(key);
        return found == m_things.end() ? nullptr : found->second;
    }

    /// The same, and it is none any more.
    std::shared_ptr<Thing> take(void* key)
    {
        const std::lock_guard lock(m_mutex);
        const auto node = m_things.extract(key);
        return node.empty() ? nullptr : node.mapped();
    }

private:
    mutable std::mutex m_mutex;
    std::map<void*, std::shared_ptr<Thing>> m_things;
};

} // namespace sdk
