// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "genapi/GenApi/ICommand.h"
#include "genapi/Node.h"

namespace genapi {

/// A command.
class CommandNode : public Node, public GenApi::ICommand
{
public:
    CommandNode(Engine& engine, ArvGcCommand* node);

    void Execute(bool verify) override;

private:
    ArvGcCommand* m_command;
};

} // namespace genapi
