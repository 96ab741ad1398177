// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "genapi/description/Vocabulary.h"
#include "genapi/engine/Faults.h"

#include <pugixml.hpp>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace genapi {

/// Who refers to whom in a description, so that no evaluation runs in circles, too deep, or too long.
///
/// A value depends on the values it refers to. Bounds and access depend on values too, but no value depends
/// on bounds or access: two features may each have a maximum that depends on the other one's value.
class ReferenceGraph
{
public:
    /// Settles what the engine would read otherwise (numbers, the order of bits), resolves what it does not
    /// (lengths by reference, booleans in formulas) and makes formulas safe, all in the document, which must
    /// stay. Throws a GenICam::RuntimeException when the whole description is to be refused.
    explicit ReferenceGraph(pugi::xml_document& document);

    /// The nodes that lack something they need, or are what the engine cannot do.
    const Faults& faults() const { return m_faults; }

private:
    struct Edge
    {
        std::size_t target;
        Follow follow;
        bool isPassedOn; ///< The node also takes over the target's range and access.
    };

    struct Node
    {
        pugi::xml_node element;
        const NodeKind* kind;
        std::vector<Edge> edges;
        std::size_t cost =
            1; ///< Of reading its value: of the node alone, and after leave() with all it depends on.
        std::size_t depth = 1;
        std::string fault;
    };

    void add(pugi::xml_node element);
    void link(std::size_t index, pugi::xml_node element);
    void addReference(std::size_t index, std::string_view reference, std::string_view target);
    static void blame(Node& node, const std::string& fault);
    void checkRegister(Node& node);
    std::string_view throughBooleans(std::string_view name) const;
    const Node* find(std::string_view name) const;

    void judgeValues();
    void leave(std::size_t index);
    void judgeBoundsAndAccess();
    [[noreturn]] void refuseCircle(const std::vector<std::size_t>& path, std::size_t again) const;

    std::vector<Node> m_nodes;
    std::unordered_map<std::string_view, std::size_t> m_byName;
    Faults m_faults;
};

} // namespace genapi
