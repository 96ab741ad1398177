// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "genapi/IntegerNode.h"
#include "genapi/RegisterNode.h"

namespace genapi {

/// A whole number that stands in a register of its own.
class IntegerRegisterNode : public IntegerNode, public RegisterNode
{
public:
    IntegerRegisterNode(Engine& engine, ArvGcFeatureNode* node)
        : Node(engine, node),
          IntegerNode(engine, ARV_GC_INTEGER(node)),
          RegisterNode(engine, ARV_GC_REGISTER(node))
    {}
};

} // namespace genapi
