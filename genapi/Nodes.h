// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "genapi/GenApi/INode.h"
#include "genapi/engine/Engine.h"

#include <memory>

namespace genapi {

/// The engine's node behind the interfaces that fit it: those of a boolean, a command, a whole number, a
/// register, a number that stands in a register of its own, or of a node and nothing more. The engine and its
/// node must outlive it.
std::unique_ptr<GenApi::INode> makeNode(Engine& engine, ArvGcFeatureNode* node);

} // namespace genapi
