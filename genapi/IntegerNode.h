// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "genapi/GenApi/IInteger.h"
#include "genapi/Node.h"

namespace genapi {

/// A whole number.
class IntegerNode : public virtual Node, public GenApi::IInteger
{
public:
    IntegerNode(Engine& engine, ArvGcInteger* node);

    void SetValue(int64_t value, bool verify) override;
    int64_t GetValue() const override;
    int64_t GetMin() const override;
    int64_t GetMax() const override;
    int64_t GetInc() const override;

private:
    int64_t askBound(const char* action, gint64 (*question)(ArvGcInteger*, GError**)) const;
    void requireInRange(int64_t value) const;

    ArvGcInteger* m_integer;
};

} // namespace genapi
