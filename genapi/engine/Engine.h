// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "base/CancellationHold.h"
#include "genapi/engine/Complaints.h"
#include "genapi/engine/Faults.h"
#include "genapi/engine/PortDevice.h"

#include <string>

namespace genapi {

/// Aravis's node map, which evaluates. All calls into it go through here. Used on one thread at a time.
class Engine
{
public:
    /// Takes a description that has passed all checks, and what they found. Throws a
    /// GenICam::RuntimeException when it does not understand it all the same.
    Engine(const std::string& text, Faults faults);

    void connect(GenApi::IPort& port) { m_device.connect(port); }

    /// Null when there is no node of that name.
    ArvGcNode* findNode(const char* name);

    /// Why the node cannot be used, whatever the camera says; empty when it can.
    std::string faultOf(const std::string& name) const;

    /// Runs one call into the engine, which gets a place for an error and returns a value. Throws a
    /// GenICam::RuntimeException that names the feature, what was to be done ("read"), and what failed. The
    /// port's failure comes before the engine's complaint, and that before the call's own error.
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
