// SPDX-License-Identifier: Apache-2.0
#include "genapi/Node.h"

#include <string_view>
#include <vector>

using GenApi::EAccessMode;

namespace genapi {
namespace {

/// The node, what it gets its value from, and so on; of a structure's entry, the structure too.
std::vector<ArvGcFeatureNode*> chainFrom(ArvGcFeatureNode* first)
{
    std::vector<ArvGcFeatureNode*> chain{first};
    for (std::size_t at = 0; at < chain.size(); ++at) { // Ends: no chain of values is a circle.
        ArvDomNode* node = ARV_DOM_NODE(chain[at]);
        if (ARV_IS_GC_STRUCT_ENTRY_NODE(node))
            chain.push_back(ARV_GC_FEATURE_NODE(arv_dom_node_get_parent_node(node)));
        for (ArvDomNode* child = arv_dom_node_get_first_child(node); child;
             child = arv_dom_node_get_next_sibling(child)) {
            if (!ARV_IS_GC_PROPERTY_NODE(child) ||
                std::string_view("pValue") != arv_dom_node_get_node_name(child))
                continue;
            ArvGcNode* target = arv_gc_property_node_get_linked_node(ARV_GC_PROPERTY_NODE(child));
            if (ARV_IS_GC_FEATURE_NODE(target))
                chain.push_back(ARV_GC_FEATURE_NODE(target));
        }
    }
    return chain;
}

const char* describe(EAccessMode mode)
{
    switch (mode) {
    case GenApi::NI:
        return "the camera does not have it";
    case GenApi::NA:
        return "it is not available now";
    default:
        return "it is read-only or locked";
    }
}

} // namespace

Node::Node(Engine& engine, ArvGcFeatureNode* node)
    : m_engine(engine),
      m_node(node),
      m_name(arv_gc_feature_node_get_name(node))
{}

bool Node::ask(ArvGcFeatureNode* node, gboolean (*question)(ArvGcFeatureNode*, GError**)) const
{
    return m_engine.call(m_name, "learn the state of",
                         [=](GError** error) { return question(node, error) != FALSE; });
}

EAccessMode Node::GetAccessMode() const
{
    if (!m_engine.faultOf(m_name).empty())
        return GenApi::NI;
    const auto chain =
        m_engine.call(m_name, "learn the state of", [this](GError**) { return chainFrom(m_node); });
    bool isLocked = false;
    for (auto* node : chain)
        if (!ask(node, arv_gc_feature_node_is_implemented))
            return GenApi::NI;
    for (auto* node : chain)
        if (!ask(node, arv_gc_feature_node_is_available))
            return GenApi::NA;
    for (auto* node : chain)
        isLocked = isLocked || ask(node, arv_gc_feature_node_is_locked);

    switch (m_engine.call(m_name, "learn the state of",
                          [this](GError**) { return arv_gc_feature_node_get_actual_access_mode(m_node); })) {
    case ARV_GC_ACCESS_MODE_RW:
        return isLocked ? GenApi::RO : GenApi::RW;
    case ARV_GC_ACCESS_MODE_WO:
        return isLocked ? GenApi::NA : GenApi::WO;
    default:
        return GenApi::RO;
    }
}

void Node::requireUsable() const
{
    if (const auto fault = m_engine.faultOf(m_name); !fault.empty())
        throw GenICam::AccessException(m_name + " cannot be used: " + fault + ".", __FILE_NAME__, __LINE__);
}

void Node::requireWritable() const
{
    requireUsable();
    if (const auto mode = GetAccessMode(); mode != GenApi::RW && mode != GenApi::WO)
        throw GenICam::AccessException(m_name + " cannot be set: " + describe(mode) + ".", __FILE_NAME__,
                                       __LINE__);
}

} // namespace genapi
