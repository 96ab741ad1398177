// SPDX-License-Identifier: Apache-2.0
#include "genapi/RegisterNode.h"

namespace genapi {

RegisterNode::RegisterNode(Engine& engine, ArvGcRegister* node)
    : Node(engine, ARV_GC_FEATURE_NODE(node)),
      m_register(node)
{}

void RegisterNode::Set(const uint8_t* buffer, int64_t length, bool verify)
{
    requireLength(length);
    if (verify)
        requireWritable();
    engine().call(name(), "set", [&](GError** error) {
        arv_gc_register_set(m_register, buffer, static_cast<guint64>(length), error);
        return true;
    });
}

void RegisterNode::Get(uint8_t* buffer, int64_t length) const
{
    requireLength(length);
    engine().call(name(), "read", [&](GError** error) {
        arv_gc_register_get(m_register, buffer, static_cast<guint64>(length), error);
        return true;
    });
}

int64_t RegisterNode::GetLength() const
{
    requireUsable();
    return engine().call(name(), "measure", [&](GError** error) {
        return static_cast<int64_t>(arv_gc_register_get_length(m_register, error));
    });
}

void RegisterNode::requireLength(int64_t length) const
{
    if (const auto own = GetLength(); length != own)
        throw GenICam::InvalidArgumentException(name() + " has " + std::to_string(own) + " bytes, not " +
                                                    std::to_string(length) + ".",
                                                __FILE_NAME__, __LINE__);
}

} // namespace genapi
