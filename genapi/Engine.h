// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "base/CancellationHold.h"
#include "genapi/Complaints.h"
#include "genapi/PortDevice.h"
#include "genapi/ReferenceGraph.h"

#include <string>

namespace genapi {

/// The node map that evaluates, made of a description that has passed all checks, and the door to it. One
/// thread.
class Engine
{
public:
    /// Takes any description, plain. Throws a GenICam::RuntimeException when it is not to be used.
    explicit Engine(std::string text);

    void connect(GenApi::IPort& port) { m_device.connect(port); }

    /// Null when there is no node of that name.
    ArvGcNode* findNode(const char* name);

    /// Why the node cannot be used, whatever the camera says; empty when it can.
    std::string faultOf(const std::string& name) const;

    /// Runs one call into the engine, which gets a place for an error and returns a value. Throws a
    /// GenICam::RuntimeException that names the feature, what was to be done ("read"), and what failed: the
    /// port, the call, or, as the engine complained, something in it.
    template <typename Call>
    auto call(const std::string& feature, const char* action, Call call)
    {
        const base::CancellationHold hold;
        const Complaints complaints;
        GError* error = nullptr;
        m_device.takeFailure();
        auto result = call(&error);
        check(feature, action, error, complaints.first());
        return result;
    }

private:
    void check(const std::string& feature, const char* action, GError* error, const std::string& complaint);

    Faults m_faults;
    PortDevice m_device;
    ObjectPtr<ArvGc> m_genicam; ///< Does not own the device.
};

} // namespace genapi
