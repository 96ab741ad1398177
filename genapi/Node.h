// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "genapi/GenApi/INode.h"
#include "genapi/engine/Engine.h"

#include <initializer_list>
#include <string>

namespace genapi {

/// What all nodes have in common: a name, and what may be done with them now.
class Node : public virtual GenApi::INode
{
public:
    /// The engine and its node must outlive this.
    Node(Engine& engine, ArvGcFeatureNode* node);

    GenICam::gcstring GetName() const override { return GenICam::gcstring(m_name); }

    /// Of the node together with all whose values it passes on: what holds for one of them (not implemented,
    /// not available, locked) holds for it.
    GenApi::EAccessMode GetAccessMode() const override;

protected:
    Engine& engine() const { return m_engine; }
    const std::string& name() const { return m_name; }

    /// Throws an AccessException when the description itself keeps the node from being used.
    void requireUsable() const;

    /// Throws an AccessException unless the node may be written now.
    void requireWritable() const;

    /// The number in the first of these properties that the node has.
    std::int64_t askProperty(std::initializer_list<const char*> names, std::int64_t otherwise) const;

    /// Throws an OutOfRangeException when the number has more bits than a register that it goes to. The
    /// engine would cut it off.
    void requireBitsFor(std::int64_t value) const;

private:
    bool ask(ArvGcFeatureNode* node, gboolean (*question)(ArvGcFeatureNode*, GError**)) const;

    Engine& m_engine;
    ArvGcFeatureNode* m_node;
    std::string m_name;
};

} // namespace genapi
