// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "genapi/GenApi/INode.h"
#include "genapi/GenApi/IPort.h"

namespace GenApi {

/// The features that a camera's description defines. A map and its nodes are used on one thread at a time.
struct __attribute__((visibility("default"))) INodeMap
{
    virtual ~INodeMap() = default;

    /// The node of that name, null when the description does not have it. The map keeps it.
    virtual INode* GetNode(const GenICam::gcstring& Name) const = 0;

    /// Sends all access through this port from now on; it must outlive the map's use. Throws a
    /// RuntimeException when there is no port, or no port node of that name.
    virtual void Connect(IPort* pPort, const GenICam::gcstring& PortName) = 0;

    virtual GenICam::gcstring GetDeviceName() const = 0;
};

} // namespace GenApi
