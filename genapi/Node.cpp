// SPDX-License-Identifier: Apache-2.0
#include "genapi/Node.h"

#include <algorithm>
#include <limits>
#include <string_view>
#include <vector>

using GenApi::EAccessMode;

namespace genapi {
namespace {

/// The property nodes of that name.
std::vector<ArvGcPropertyNode*> propertiesOf(ArvGcFeatureNode* node, std::string_view name)
{
    std::vector<ArvGcPropertyNode*> properties;
    for (ArvDomNode* child = arv_dom_node_get_first_child(ARV_DOM_NODE(node)); child;
         child = arv_dom_node_get_next_sibling(child))
        if (ARV_IS_GC_PROPERTY_NODE(child) && name == arv_dom_node_get_node_name(child))
            properties.push_back(ARV_GC_PROPERTY_NODE(child));
    return properties;
}

/// The nodes that the node gets its value from, and passes a new one on to.
std::vector<ArvGcFeatureNode*> targetsOf(ArvGcFeatureNode* node)
{
    std::vector<ArvGcFeatureNode*> targets;
    for (ArvGcPropertyNode* property : propertiesOf(node, "pValue"))
        if (ArvGcNode* target = arv_gc_property_node_get_linked_node(property);
            ARV_IS_GC_FEATURE_NODE(target))
            targets.push_back(ARV_GC_FEATURE_NODE(target));
    return targets;
}

/// The node, its targets, theirs, and so on. An entry of a structure is followed by the structure.
std::vector<ArvGcFeatureNode*> chainFrom(ArvGcFeatureNode* first)
{
    std::vector<ArvGcFeatureNode*> chain{first};
    for (std::size_t at = 0; at < chain.size(); ++at) { // Ends, since ReferenceGraph refuses circles.
        if (ARV_IS_GC_STRUCT_ENTRY_NODE(chain[at]))
            chain.push_back(ARV_GC_FEATURE_NODE(arv_dom_node_get_parent_node(ARV_DOM_NODE(chain[at]))));
        const auto targets = targetsOf(chain[at]);
        chain.insert(chain.end(), targets.begin(), targets.end());
    }
    return chain;
}

/// The registers that a number written to the node arrives in unchanged.
std::vector<ArvGcInteger*> integerRegistersBelow(ArvGcFeatureNode* first)
{
    std::vector<ArvGcInteger*> registers;
    std::vector<ArvGcFeatureNode*> open{first};
    while (!open.empty()) {
        ArvGcFeatureNode* node = open.back();
        open.pop_back();
        if (ARV_IS_GC_INTEGER(node) && (ARV_IS_GC_REGISTER(node) || ARV_IS_GC_STRUCT_ENTRY_NODE(node)))
            registers.push_back(ARV_GC_INTEGER(node));
        else if (ARV_IS_GC_INTEGER_NODE(node) || ARV_IS_GC_BOOLEAN(node) || ARV_IS_GC_COMMAND(node)) {
            const auto targets = targetsOf(node);
            open.insert(open.end(), targets.begin(), targets.end());
        }
    }
    return registers;
}

/// Whether a register with these bounds has all the bits of the number, taken as signed or as unsigned: some
/// cameras have a boolean with the value 1 over a signed register of one bit.
bool hasBitsFor(std::int64_t value, std::int64_t least, std::int64_t most)
{
    constexpr auto Most = std::numeric_limits<std::int64_t>::max();
    const auto mostUnsigned = least >= 0 || most > Most / 2 ? most : 2 * most + 1;
    return value >= std::min(least, -(mostUnsigned / 2) - 1) && value <= mostUnsigned;
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
    constexpr char action[] = "learn the state of";
    const auto chain = m_engine.call(m_name, action, [this](GError**) { return chainFrom(m_node); });
    for (auto* node : chain)
        if (!ask(node, arv_gc_feature_node_is_implemented))
            return GenApi::NI;
    for (auto* node : chain)
        if (!ask(node, arv_gc_feature_node_is_available))
            return GenApi::NA;
    bool isReadable = true;
    bool isWritable = true;
    for (auto* node : chain)
        isWritable = isWritable && !ask(node, arv_gc_feature_node_is_locked);
    for (auto* node : chain) {
        if (ARV_IS_GC_STRUCT_REG_NODE(node))
            continue; // Its entries have modes of their own.
        const auto mode = m_engine.call(
            m_name, action, [node](GError**) { return arv_gc_feature_node_get_actual_access_mode(node); });
        isReadable = isReadable && mode != ARV_GC_ACCESS_MODE_WO;
        isWritable = isWritable && (mode == ARV_GC_ACCESS_MODE_RW || mode == ARV_GC_ACCESS_MODE_WO);
    }
    if (isReadable)
        return isWritable ? GenApi::RW : GenApi::RO;
    return isWritable ? GenApi::WO : GenApi::NA;
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

std::int64_t Node::askProperty(std::initializer_list<const char*> names, std::int64_t otherwise) const
{
    return m_engine.call(m_name, "learn the value of", [&](GError** error) -> std::int64_t {
        for (const char* name : names)
            for (ArvGcPropertyNode* property : propertiesOf(m_node, name))
                return arv_gc_property_node_get_int64(property, error);
        return otherwise;
    });
}

void Node::requireBitsFor(std::int64_t value) const
{
    const bool areThere = m_engine.call(m_name, "learn the size of", [&](GError** error) {
        for (ArvGcInteger* number : integerRegistersBelow(m_node)) {
            const auto least = arv_gc_integer_get_min(number, error);
            const auto most = *error ? 0 : arv_gc_integer_get_max(number, error);
            if (!*error && !hasBitsFor(value, least, most))
                return false;
        }
        return true;
    });
    if (!areThere)
        throw GenICam::OutOfRangeException(m_name + " cannot be set to " + std::to_string(value) +
                                               ": its register has too few bits.",
                                           __FILE_NAME__, __LINE__);
}

} // namespace genapi
