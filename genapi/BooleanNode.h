// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "genapi/GenApi/IBoolean.h"
#include "genapi/Node.h"

namespace genapi {

/// A switch.
class BooleanNode : public Node, public GenApi::IBoolean
{
public:
    BooleanNode(Engine& engine, ArvGcBoolean* node);

    void SetValue(bool value, bool verify) override;
    bool GetValue() const override;

private:
    ArvGcBoolean* m_boolean;
};

} // namespace genapi
