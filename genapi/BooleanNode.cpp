// SPDX-License-Identifier: Apache-2.0
#include "genapi/BooleanNode.h"

namespace genapi {

BooleanNode::BooleanNode(Engine& engine, ArvGcBoolean* node)
    : Node(engine, ARV_GC_FEATURE_NODE(node)),
      m_boolean(node)
{}

void BooleanNode::SetValue(bool value, bool verify)
{
    requireUsable();
    if (verify) {
        requireWritable();
        requireBitsFor(value ? askProperty({"OnValue"}, 1) : askProperty({"OffValue"}, 0));
    }
    engine().call(name(), "set", [&](GError** error) {
        arv_gc_boolean_set_value(m_boolean, value, error);
        return true;
    });
}

bool BooleanNode::GetValue() const
{
    requireUsable();
    return engine().call(name(), "read",
                         [&](GError** error) { return arv_gc_boolean_get_value(m_boolean, error) != FALSE; });
}

} // namespace genapi
