// SPDX-License-Identifier: Apache-2.0
#include "genapi/Engine.h"

#include "genapi/AccessModes.h"
#include "genapi/DescriptionReader.h"
#include "genapi/Refusal.h"

#include <mutex>

namespace genapi {
namespace {

struct Checked
{
    std::string text;
    Faults faults;
};

std::string ofTheEngine(const std::string& complaint)
{
    return "the engine complains: " + complaint;
}

Checked checkDescription(std::string text)
{
    pugi::xml_document document;
    readDescription(text, document);
    settleAccessModes(document);
    const ReferenceGraph graph(document);
    return {writeDescription(document), graph.faults()};
}

} // namespace

Engine::Engine(std::string text)
{
    const base::CancellationHold hold;
    const Complaints complaints;
    // What the checks needed is gone before the engine takes its own memory.
    Checked checked = checkDescription(std::move(text));
    m_faults = std::move(checked.faults);
    {
        // Aravis keeps a table of document types for the process, without a lock.
        static std::mutex mutex;
        const std::lock_guard lock(mutex);
        m_genicam.reset(arv_gc_new(m_device.device(), checked.text.data(), checked.text.size()));
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
