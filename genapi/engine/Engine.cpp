// SPDX-License-Identifier: Apache-2.0
#include "genapi/engine/Engine.h"

#include "genapi/engine/Faults.h"

#include <mutex>

namespace genapi {
namespace {

std::string ofTheEngine(const std::string& complaint)
{
    return "the engine complains: " + complaint;
}

} // namespace

Engine::Engine(const std::string& text, Faults faults) : m_faults(std::move(faults))
{
    const base::CancellationHold hold;
    const Complaints complaints;
    {
        // Aravis keeps a table of document types for the process, without a lock.
        static std::mutex mutex;
        const std::lock_guard lock(mutex);
        m_genicam.reset(arv_gc_new(m_device.device(), text.data(), text.size()));
    }
    if (!m_genicam)
        refuseDescription("the engine does not take it");
    if (!complaints.first().empty())
        refuseDescription(ofTheEngine(complaints.first()));
}

ArvGcNode* Engine::findNode(const char* name)
{
    return call(name, "find", [&](GError**) { return arv_gc_get_node(m_genicam.get(), name); });
}

std::string Engine::faultOf(const std::string& name) const
{
    const auto found = m_faults.find(name);
    return found == m_faults.end() ? std::string() : found->second;
}

void Engine::check(const std::string& feature, const char* action, GError* error,
                   const std::string& complaint)
{
    std::string failure = m_device.takeFailure();
    if (!complaint.empty() && failure.empty())
        failure = ofTheEngine(complaint);
    if (error && failure.empty())
        failure = error->message;
    g_clear_error(&error);
    if (!failure.empty())
        throw GenICam::RuntimeException("Could not " + std::string(action) + " " + feature + ": " + failure +
                                            ".",
                                        __FILE_NAME__, __LINE__);
}

} // namespace genapi
