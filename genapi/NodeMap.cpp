// SPDX-License-Identifier: Apache-2.0
#include "genapi/NodeMap.h"

#include "genapi/BooleanNode.h"
#include "genapi/CommandNode.h"
#include "genapi/IntegerRegisterNode.h"

namespace genapi {
namespace {

std::unique_ptr<Node> makeNode(Engine& engine, ArvGcFeatureNode* node)
{
    if (ARV_IS_GC_BOOLEAN(node))
        return std::make_unique<BooleanNode>(engine, ARV_GC_BOOLEAN(node));
    if (ARV_IS_GC_COMMAND(node))
        return std::make_unique<CommandNode>(engine, ARV_GC_COMMAND(node));
    const bool isInteger = ARV_IS_GC_INTEGER(node) && !ARV_IS_GC_ENUMERATION(node);
    if (isInteger && ARV_IS_GC_REGISTER(node))
        return std::make_unique<IntegerRegisterNode>(engine, node);
    if (isInteger)
        return std::make_unique<IntegerNode>(engine, ARV_GC_INTEGER(node));
    if (ARV_IS_GC_REGISTER(node))
        return std::make_unique<RegisterNode>(engine, ARV_GC_REGISTER(node));
    return std::make_unique<Node>(engine, node);
}

} // namespace

NodeMap::NodeMap(GenICam::gcstring deviceName, std::string text)
    : m_deviceName(std::move(deviceName)),
      m_engine(std::move(text))
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

} // namespace genapi
