// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "genapi/GenApi/IPort.h"

#include <arv.h>
#include <memory>
#include <string>

namespace genapi {

struct ObjectRelease
{
    void operator()(gpointer object) const { g_object_unref(object); }
};

template <typename Object>
using ObjectPtr = std::unique_ptr<Object, ObjectRelease>;

/// What the engine takes for a camera: its reads and writes go to a port. No exception of the port gets into
/// the engine; it becomes the access's error.
class PortDevice
{
public:
    PortDevice();

    ArvDevice* device() const { return m_device.get(); }

    /// The port from now on; it must outlive all access. Before the first, every access fails.
    void connect(GenApi::IPort& port) { m_access.port = &port; }

    /// What failed first since the last call of this; empty when nothing did. Asked for because the engine
    /// does not report every failure.
    std::string takeFailure();

    /// What the engine's object leads to.
    struct Access
    {
        GenApi::IPort* port = nullptr;
        std::string failure;
    };

private:
    Access m_access;
    ObjectPtr<ArvDevice> m_device; ///< Points to m_access.
};

} // namespace genapi
