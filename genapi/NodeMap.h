// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "genapi/Engine.h"
#include "genapi/GenApi/INodeMap.h"
#include "genapi/Node.h"

#include <map>
#include <memory>

namespace genapi {

/// Hands out the engine's nodes behind the interfaces that fit them.
class NodeMap : public GenApi::INodeMap
{
public:
    /// The text is a plain description. Throws a GenICam::RuntimeException when it is not to be used.
    NodeMap(GenICam::gcstring deviceName, std::string text);

    GenApi::INode* GetNode(const GenICam::gcstring& name) const override;
    void Connect(GenApi::IPort* port, const GenICam::gcstring& portName) override;
    GenICam::gcstring GetDeviceName() const override { return m_deviceName; }

private:
    GenICam::gcstring m_deviceName;
    mutable Engine m_engine;
    mutable std::map<std::string, std::unique_ptr<Node>> m_nodes; ///< Those that have been asked for.
};

} // namespace genapi
