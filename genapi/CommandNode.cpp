// SPDX-License-Identifier: Apache-2.0
#include "genapi/CommandNode.h"

namespace genapi {

CommandNode::CommandNode(Engine& engine, ArvGcCommand* node)
    : Node(engine, ARV_GC_FEATURE_NODE(node)),
      m_command(node)
{}

void CommandNode::Execute(bool verify)
{
    requireUsable();
    if (verify) {
        requireWritable();
        requireBitsFor(askProperty({"CommandValue", "pCommandValue"}, 0));
    }
    engine().call(name(), "execute", [&](GError** error) {
        arv_gc_command_execute(m_command, error);
        return true;
    });
}

} // namespace genapi
