// SPDX-License-Identifier: Apache-2.0
#include "genapi/engine/Complaints.h"

#include <array>
#include <glib.h>
#include <mutex>
#include <utility>

namespace genapi {
namespace {

/// The log domains of the engine and of the libraries below it. Null is for messages without a domain, as
/// the engine's own are.
constexpr std::array<const char*, 6> domains{nullptr, "Aravis", "XML", "GLib", "GLib-GObject", "GLib-GIO"};

thread_local std::string* heard = nullptr; ///< Where this thread's complaints go; null when nobody listens.

/// GLib calls this on whichever thread complains: there is one handler for the process.
void hear(const gchar* domain, GLogLevelFlags level, const gchar* message, gpointer)
{
    // After a fatal one GLib ends the process, so it must be printed now.
    if (!heard || (level & G_LOG_FLAG_FATAL) != 0)
        g_log_default_handler(domain, level, message, nullptr);
    else if (heard->empty())
        *heard = message;
}

/// Keeps the handlers in place only while an engine works on some thread. The rest of the time GLib's
/// messages go where the rest of the process wants them.
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
