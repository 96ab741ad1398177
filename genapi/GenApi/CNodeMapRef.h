// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "genapi/GenApi/INodeMap.h"

#include <memory>

namespace GenApi {

/// Holds the node map of one camera and releases it in the end. Used on one thread at a time.
class CNodeMapRef
{
public:
    explicit CNodeMapRef(const GenICam::gcstring& DeviceName = "Device");
    CNodeMapRef(const CNodeMapRef&) = delete;
    CNodeMapRef& operator=(const CNodeMapRef&) = delete;
    virtual ~CNodeMapRef();

    // NOLINTBEGIN(clang-diagnostic-reserved-identifier): the standard's own names.

    /// Makes the node map of a description, plain or zipped. Throws a RuntimeException when there is a map
    /// already, and when the description is no good.
    void _LoadXMLFromString(const GenICam::gcstring& XMLData);

    /// See INodeMap::Connect. Without a node map: RuntimeException.
    void _Connect(IPort* pPort, const GenICam::gcstring& PortName);

    /// See INodeMap::GetNode. Null without a node map.
    INode* _GetNode(const GenICam::gcstring& Name) const;

    // NOLINTEND(clang-diagnostic-reserved-identifier)

private:
    GenICam::gcstring m_deviceName;
    std::unique_ptr<INodeMap> m_nodeMap;
};

} // namespace GenApi
