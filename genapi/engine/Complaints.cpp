// SPDX-License-Identifier: Apache-2.0
#include "genapi/engine/Complaints.h"

#include <array>
#include <glib.h>
#include <mutex>
#include <utility>

namespace genapi {
namespace {

/// In whose names there are complaints of what the engine does; it complains itself in nobody's.
constexpr std::array<const char*, 6> domains{nullptr, "Aravis", "XML", "GLib", "GLib-GObject", "GLib-GIO"};

thread_local std::string* heard = nullptr; ///< Where those of this thread go; null when nobody listens.

/// The handlers are the process's: what other threads say comes here too.
void hear(const gchar* domain, GLogLevelFlags level, const gchar* message, gpointer)
{
    // After a fatal one the process ends, and there is no asking any more.
    if (!heard || (level & G_LOG_FLAG_FATAL) != 0)
        g_log_default_handler(domain, level, message, nullptr);
    else if (heard->empty())
        *heard = message;
}

/// Has the handlers in place only while an engine works on some thread, so that what others have GLib do is
/// left alone for the rest of the time.
class Handlers
{
public:
    void enter()
    {
        constexpr auto levels =
            static_cast<GLogLevelFlags>(G_LOG_LEVEL_CRITICAL | G_LOG_LEVEL_WARNING | G_LOG_FLAG_FATAL);
        const std::lock_guard lock(m_mutex);
        if (m_threads++ > 0)
            return;
        for (std::size_t i = 0; i < domains.size(); ++i)
            m_ids[i] = g_log_set_handler(domains[i], levels, hear, nullptr);
    }

    void leave()
    {
        const std::lock_guard lock(m_mutex);
        if (--m_threads > 0)
            return;
        for (std::size_t i = 0; i < domains.size(); ++i)
            g_log_remove_handler(domains[i], m_ids[i]);
    }

private:
    std::mutex m_mutex;
    int m_threads = 0;
    std::array<guint, domains.size()> m_ids{};
};

Handlers handlers;

} // namespace

Complaints::Complaints() : m_outer(heard)
{
    if (!m_outer)
        handlers.enter();
    heard = &m_first;
}

Complaints::~Complaints()
{
    heard = m_outer;
    if (!m_outer)
        handlers.leave();
}

Complaints::Pause::Pause() : m_paused(std::exchange(heard, nullptr))
{
    if (m_paused)
        handlers.leave();
}

Complaints::Pause::~Pause()
{
    if (m_paused)
        handlers.enter();
    heard = m_paused;
}

} // namespace genapi
