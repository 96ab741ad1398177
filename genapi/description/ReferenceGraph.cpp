// SPDX-License-Identifier: Apache-2.0
#include "genapi/description/ReferenceGraph.h"

#include "genapi/description/FormulaCheck.h"
#include "genapi/description/Numbers.h"
#include "genapi/description/Registers.h"

#include <algorithm>

namespace genapi {
namespace {

constexpr std::size_t MaxDepth = 128;
constexpr std::size_t MaxCost = 50'000; ///< Far below a second for any access to a node.
constexpr std::size_t MaxNameSize = 256;
constexpr std::size_t RegisterCost = 20;
constexpr std::size_t CharactersPerCost = 16;

constexpr std::int64_t MaxIntegerLength = 8;
constexpr std::int64_t MaxRegisterLength = 64 * 1024; ///< Larger ones are tables and files, no settings.

std::string quoted(std::string_view name)
{
    return name.empty() ? "an unnamed node" : "'" + std::string(name) + "'";
}

std::string_view nameOf(pugi::xml_node element)
{
    return element.attribute("Name").value();
}

/// The fault of a node that needs this one ("it needs 'B': it has no pPort"). A fault that this one has
/// itself taken over stays as it is: it already names the node that is the cause, and would grow with every
/// step.
std::string passedOn(const std::string& fault, pugi::xml_node element)
{
    return fault.starts_with("it needs ") ? fault : "it needs " + quoted(nameOf(element)) + ": " + fault;
}

/// Whether such a reference in a node of the kind `from` may lead to a node of the kind `to`.
bool fits(std::string_view reference, const NodeKind& from, const NodeKind& to)
{
    if (reference == "pPort")
        return to.role == Role::Port;
    if (reference == "pValue" && from.role == Role::Text)
        return to.role == Role::Text;
    if (findReferenceKind(reference)->follow == Follow::Access)
        return to.role == Role::Number || to.role == Role::Boolean;
    if (reference == "pIndex" || reference == "pOffset" || reference == "pAddress")
        return to.role == Role::Number && to.isInteger;
    return to.role == Role::Number;
}

/// The first of the text's parts, which the separator divides, for which the predicate holds; empty when
/// there is none.
template <typename Predicate>
std::string_view findPart(std::string_view text, char separator, Predicate isSo)
{
    while (!text.empty()) {
        const auto part = text.substr(0, text.find(separator));
        if (isSo(part))
            return part;
        text.remove_prefix(std::min(text.size(), part.size() + 1));
    }
    return {};
}

bool isAbsentOr(pugi::xml_node property, std::string_view text)
{
    return !property || property.child_value() == text;
}

/// The first of the needs (see NodeKind) that the node does not meet; empty when it meets all.
std::string_view missingIn(pugi::xml_node element, std::string_view needs)
{
    const auto has = [element](std::string_view property) {
        return !element.child(std::string(property).c_str()).empty();
    };
    return findPart(needs, ' ', [&](std::string_view need) { return findPart(need, '|', has).empty(); });
}

} // namespace

/// Of several faults only the first one is kept.
void ReferenceGraph::blame(Node& node, const std::string& fault)
{
    if (node.fault.empty())
        node.fault = fault;
}

ReferenceGraph::ReferenceGraph(pugi::xml_document& document)
{
    for (const auto& element : document.document_element().children())
        add(element);
    const std::size_t count = m_nodes.size();
    for (std::size_t index = 0; index < count; ++index) {
        Node& node = m_nodes[index];
        if (node.kind->isRegister)
            checkRegister(node);
        if (node.element.child("ChunkID"))
            blame(node, "it belongs to pictures and not to the camera");
        if (const auto missing = missingIn(node.element, node.kind->needs); !missing.empty())
            blame(node, "it has no " + std::string(missing));
        if (node.kind->name == "MaskedIntReg")
            blame(node, settleBits(node.element, node.element));
        if (node.kind->name == "StructEntry")
            blame(node, settleBits(node.element, node.element.parent()));
        link(index, node.element);
    }
    judgeValues();
    judgeBoundsAndAccess();
}

void ReferenceGraph::add(pugi::xml_node element)
{
    const std::size_t index = m_nodes.size();
    m_nodes.push_back({element, findNodeKind(element.name()), {}, 1, 1, settleValues(element)});
    const auto name = nameOf(element);
    if (name.size() > MaxNameSize)
        refuseDescription("it has a node with a name of " + std::to_string(name.size()) + " characters");
    if (!name.empty() && !m_byName.emplace(name, index).second)
        refuseDescription("it has two nodes named " + quoted(name));
    for (const auto& entry : element.children("StructEntry")) {
        add(entry);
        m_nodes.back().edges.push_back({index, Follow::Value, true});
    }
}

const ReferenceGraph::Node* ReferenceGraph::find(std::string_view name) const
{
    const auto found = m_byName.find(name);
    return found == m_byName.end() ? nullptr : &m_nodes[found->second];
}

/// The engine's formulas cannot read a boolean. Where its values are 1 and 0 the number behind it is the
/// same, and this is the name of that one.
std::string_view ReferenceGraph::throughBooleans(std::string_view name) const
{
    std::size_t steps = 0;
    for (const Node* node = find(name); node && node->kind->role == Role::Boolean; node = find(name)) {
        const auto value = node->element.child("pValue");
        if (!value || !isAbsentOr(node->element.child("OnValue"), "1") ||
            !isAbsentOr(node->element.child("OffValue"), "0") || ++steps > MaxDepth)
            break;
        name = value.child_value();
    }
    return name;
}

void ReferenceGraph::checkRegister(Node& node)
{
    if (auto reference = node.element.child("pLength")) {
        const Node* target = find(reference.child_value());
        const bool isConstant = target && target->kind->name == "Integer" &&
                                !target->element.child("pValue") && !target->element.child("pIndex") &&
                                !target->element.child("ValueIndexed");
        if (!isConstant) {
            blame(node, "its length is not fixed");
            node.element.remove_child("pLength");
        } else {
            const std::string length = target->element.child("Value").child_value();
            reference.set_name("Length");
            reference.text().set(length.c_str());
        }
    }
    const auto lengths = node.element.children("Length");
    const auto length = parseInteger(node.element.child("Length").child_value());
    const bool isNumber = node.kind->role == Role::Number || node.kind->role == Role::None;
    const std::int64_t most = isNumber ? MaxIntegerLength : MaxRegisterLength;
    if (std::distance(lengths.begin(), lengths.end()) != 1 || !length || *length < 1 || *length > most)
        blame(node, "its length is not between 1 and " + std::to_string(most) + " bytes");
    else
        node.cost += RegisterCost + static_cast<std::size_t>(*length) / CharactersPerCost;
}

void ReferenceGraph::link(std::size_t index, pugi::xml_node element)
{
    for (auto child : element.children()) {
        const std::string_view name = child.name();
        if (name == "IntSwissKnife") { // An unnamed part of a register's address.
            blame(m_nodes[index], settleValues(child));
            link(index, child);
        }
        if (!isProperty(name))
            continue;
        if (name == "pVariable")
            child.text().set(std::string(throughBooleans(child.child_value())).c_str());
        if (findReferenceKind(name))
            addReference(index, name, child.child_value());
        if (const auto offset = child.attribute("pOffset"))
            addReference(index, "pOffset", offset.value());
    }
    const auto verdict = checkFormulas(element, findNodeKind(element.name())->isInteger);
    Node& node = m_nodes[index];
    const auto properties = element.children();
    node.cost +=
        (verdict.size + static_cast<std::size_t>(std::distance(properties.begin(), properties.end()))) /
        CharactersPerCost;
    blame(node, verdict.fault);
}

void ReferenceGraph::addReference(std::size_t index, std::string_view reference, std::string_view target)
{
    Node& node = m_nodes[index];
    const auto found = m_byName.find(target);
    if (found == m_byName.end()) {
        blame(node, "it refers to " + quoted(target.substr(0, MaxNameSize)) + " (" + std::string(reference) +
                        "), which the description does not have");
    } else if (!fits(reference, *node.kind, *m_nodes[found->second].kind)) {
        blame(node, "it refers to " + quoted(target) + " (" + std::string(reference) +
                        "), which is of the wrong kind");
    }
    if (found != m_byName.end())
        node.edges.push_back({found->second, findReferenceKind(reference)->follow, reference == "pValue"});
}

void ReferenceGraph::refuseCircle(const std::vector<std::size_t>& path, std::size_t again) const
{
    constexpr std::ptrdiff_t shown = 5;
    const auto first = std::find(path.begin(), path.end(), again);
    std::string names;
    for (auto step = first; step != path.end() && step - first < shown; ++step)
        names += quoted(nameOf(m_nodes[*step].element)) + " needs ";
    if (path.end() - first > shown)
        names += "... needs ";
    refuseDescription("its nodes depend on themselves (" + names + quoted(nameOf(m_nodes[again].element)) +
                      ")");
}

/// Depth first and without recursion: a chain may be as long as the description.
void ReferenceGraph::judgeValues()
{
    enum class State : unsigned char
    {
        New,
        Open,
        Done
    };
    std::vector<State> states(m_nodes.size(), State::New);
    std::vector<std::size_t> path;
    std::vector<std::size_t> nextEdges;
    for (std::size_t start = 0; start < m_nodes.size(); ++start) {
        if (states[start] != State::New)
            continue;
        path.push_back(start);
        nextEdges.push_back(0);
        states[start] = State::Open;
        while (!path.empty()) {
            const std::size_t index = path.back();
            const auto& edges = m_nodes[index].edges;
            if (nextEdges.back() == edges.size()) {
                leave(index);
                states[index] = State::Done;
                path.pop_back();
                nextEdges.pop_back();
                continue;
            }
            const Edge& edge = edges[nextEdges.back()++];
            if (edge.follow != Follow::Value || states[edge.target] == State::Done)
                continue;
            if (states[edge.target] == State::Open)
                refuseCircle(path, edge.target);
            path.push_back(edge.target);
            nextEdges.push_back(0);
            states[edge.target] = State::Open;
        }
    }
}

/// Sums up what a node's value depends on. Called once all of that is summed up itself.
void ReferenceGraph::leave(std::size_t index)
{
    Node& node = m_nodes[index];
    for (const Edge& edge : node.edges) {
        if (edge.follow != Follow::Value)
            continue;
        const Node& target = m_nodes[edge.target];
        node.cost += target.cost;
        node.depth = std::max(node.depth, target.depth + 1);
        if (!target.fault.empty())
            blame(node, passedOn(target.fault, target.element));
    }
    if (node.depth > MaxDepth)
        refuseDescription("more than " + std::to_string(MaxDepth) +
                          " nodes depend on each other in a row, up to " + quoted(nameOf(node.element)));
    if (node.cost > MaxCost)
        refuseDescription(quoted(nameOf(node.element)) + " takes too long to evaluate");
}

void ReferenceGraph::judgeBoundsAndAccess()
{
    // In the order of depth, so that a node comes after those whose range and access it takes over.
    std::vector<std::size_t> order(m_nodes.size());
    for (std::size_t index = 0; index < order.size(); ++index)
        order[index] = index;
    std::stable_sort(order.begin(), order.end(),
                     [this](std::size_t a, std::size_t b) { return m_nodes[a].depth < m_nodes[b].depth; });
    std::vector<std::size_t> touchCosts(m_nodes.size());
    std::vector<std::string> touchFaults(m_nodes.size());
    for (const std::size_t index : order) {
        const Node& node = m_nodes[index];
        std::size_t& cost = touchCosts[index];
        std::string& fault = touchFaults[index];
        cost = node.cost;
        fault = node.fault;
        for (const Edge& edge : node.edges) {
            const std::string* inherited = nullptr;
            if (edge.isPassedOn) {
                cost += touchCosts[edge.target];
                inherited = &touchFaults[edge.target];
            } else if (edge.follow != Follow::Value) {
                cost += m_nodes[edge.target].cost;
                inherited = &m_nodes[edge.target].fault;
            }
            if (inherited && fault.empty() && !inherited->empty())
                fault = passedOn(*inherited, m_nodes[edge.target].element);
        }
        if (cost > MaxCost)
            refuseDescription(quoted(nameOf(node.element)) + " takes too long to evaluate");
        if (const auto name = nameOf(node.element); !fault.empty() && !name.empty())
            m_faults.emplace(name, fault);
    }
}

} // namespace genapi
