// SPDX-License-Identifier: Apache-2.0
#include "genapi/IntegerNode.h"

namespace genapi {

IntegerNode::IntegerNode(Engine& engine, ArvGcInteger* node)
    : Node(engine, ARV_GC_FEATURE_NODE(node)),
      m_integer(node)
{}

void IntegerNode::SetValue(int64_t value, bool verify)
{
    requireUsable();
    if (verify) {
        requireWritable();
        requireInRange(value);
        requireBitsFor(value);
    }
    engine().call(name(), "set", [&](GError** error) {
        arv_gc_integer_set_value(m_integer, value, error);
        return true;
    });
}

int64_t IntegerNode::GetValue() const
{
    requireUsable();
    return engine().call(name(), "read",
                         [&](GError** error) { return arv_gc_integer_get_value(m_integer, error); });
}

int64_t IntegerNode::GetMin() const
{
    return askBound("read the minimum of", arv_gc_integer_get_min);
}

int64_t IntegerNode::GetMax() const
{
    return askBound("read the maximum of", arv_gc_integer_get_max);
}

int64_t IntegerNode::GetInc() const
{
    return askBound("read the increment of", arv_gc_integer_get_inc);
}

int64_t IntegerNode::askBound(const char* action, gint64 (*question)(ArvGcInteger*, GError**)) const
{
    requireUsable();
    return engine().call(name(), action, [&](GError** error) {
        const auto bound = question(m_integer, error);
        // Nothing says so: then the answer is the widest bound.
        if (g_error_matches(*error, ARV_GC_ERROR, ARV_GC_ERROR_PROPERTY_NOT_DEFINED))
            g_clear_error(error);
        return bound;
    });
}

void IntegerNode::requireInRange(int64_t value) const
{
    const auto least = GetMin();
    const auto most = GetMax();
    const auto step = GetInc();
    const bool isInside = value >= least && value <= most;
    // As unsigned numbers: from one end of the range to the other it is more than a signed one holds.
    if (isInside && (step <= 1 || (static_cast<std::uint64_t>(value) - static_cast<std::uint64_t>(least)) %
                                          static_cast<std::uint64_t>(step) ==
                                      0))
        return;
    throw GenICam::OutOfRangeException(name() + " cannot be set to " + std::to_string(value) + ": it takes " +
                                           std::to_string(least) + " to " + std::to_string(most) +
                                           (step > 1 ? " in steps of " + std::to_string(step) : "") + ".",
                                       __FILE_NAME__, __LINE__);
}

} // namespace genapi
