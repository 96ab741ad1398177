// SPDX-License-Identifier: Apache-2.0
#include "genapi/GenApi/CNodeMapFactory.h"

#include "genapi/Nodes.h"
#include "genapi/description/Description.h"
#include "genapi/engine/Engine.h"

#include <map>

namespace genapi {
namespace {

/// Hands out the engine's nodes behind the interfaces that fit them, each made when it is first asked for.
class NodeMap : public GenApi::INodeMap
{
public:
    NodeMap(GenICam::gcstring deviceName, CheckedDescription description);

    GenApi::INode* GetNode(const GenICam::gcstring& name) const override;
    void Connect(GenApi::IPort* port, const GenICam::gcstring& portName) override;
    GenICam::gcstring GetDeviceName() const override { return m_deviceName; }

private:
    GenICam::gcstring m_deviceName;
    mutable Engine m_engine;
    mutable std::map<std::string, std::unique_ptr<GenApi::INode>> m_nodes;
};

NodeMap::NodeMap(GenICam::gcstring deviceName, CheckedDescription description)
    : m_deviceName(std::move(deviceName)),
      m_engine(description.text, std::move(description.faults))
{}

GenApi::INode* NodeMap::GetNode(const GenICam::gcstring& name) const
{
    if (const auto known = m_nodes.find(name.c_str()); known != m_nodes.end())
        return known->second.get();
    ArvGcNode* node = m_engine.findNode(name.c_str());
    if (!ARV_IS_GC_FEATURE_NODE(node))
        return nullptr;
    return m_nodes.emplace(name.c_str(), makeNode(m_engine, ARV_GC_FEATURE_NODE(node))).first->second.get();
}

void NodeMap::Connect(GenApi::IPort* port, const GenICam::gcstring& portName)
{
    if (!port)
        throw GenICam::RuntimeException("There is no camera to connect the node map to.", __FILE_NAME__,
                                        __LINE__);
    if (!ARV_IS_GC_PORT(m_engine.findNode(portName.c_str())))
        throw GenICam::RuntimeException(std::string("The camera's description has no port named '") +
                                            portName.c_str() + "'.",
                                        __FILE_NAME__, __LINE__);
    m_engine.connect(*port);
}

} // namespace
} // namespace genapi

namespace GenApi {

CNodeMapFactory::CNodeMapFactory(EContentType_t, const void* pData, std::size_t Size, ECacheUsage_t, bool)
{
    m_text = genapi::unpackDescription({static_cast<const char*>(pData), Size});
}

std::unique_ptr<INodeMap> CNodeMapFactory::CreateNodeMap(const GenICam::gcstring& DeviceName,
                                                         bool DestroyDescription)
{
    return std::make_unique<genapi::NodeMap>(
        DeviceName, genapi::checkDescription(DestroyDescription ? std::exchange(m_text, {}) : m_text));
}

} // namespace GenApi
