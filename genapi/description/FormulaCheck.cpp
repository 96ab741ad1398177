// SPDX-License-Identifier: Apache-2.0
#include "genapi/description/FormulaCheck.h"

#include "genapi/description/Formula.h"
#include "genapi/engine/Complaints.h"
#include "genapi/engine/Faults.h"

#include <arv.h>
#include <map>
#include <set>

namespace genapi {
namespace {

bool isFormula(std::string_view element)
{
    return element == "Formula" || element == "FormulaTo" || element == "FormulaFrom";
}

/// How long a formula is when the expressions that it names stand in it.
class ExpandedSize
{
public:
    explicit ExpandedSize(pugi::xml_node node) : m_node(node)
    {
        for (const auto& expression : node.children("Expression"))
            m_expressions.emplace(expression.attribute("Name").value(), expression.child_value());
    }

    std::size_t of(std::string_view formula)
    {
        std::size_t size = formula.size();
        if (!m_expressions.empty()) {
            for (const auto name : namesIn(formula))
                size += ofExpression(name);
        }
        if (size > MaxFormulaSize)
            refuseDescription("a formula of " + describe() + " is longer than " +
                              std::to_string(MaxFormulaSize) + " characters");
        return size;
    }

private:
    std::size_t ofExpression(std::string_view name)
    {
        const auto expression = m_expressions.find(name);
        if (expression == m_expressions.end())
            return 0;
        if (const auto known = m_sizes.find(name); known != m_sizes.end())
            return known->second;
        if (m_open.size() >= MaxBracketDepth || !m_open.insert(name).second)
            refuseDescription("the expressions of " + describe() + " insert each other without end");
        const std::size_t size = of(expression->second);
        m_open.erase(name);
        m_sizes.emplace(name, size);
        return size;
    }

    std::string describe() const
    {
        const std::string name = m_node.attribute("Name").value();
        return name.empty() ? std::string("an unnamed node") : "'" + name + "'";
    }

    pugi::xml_node m_node;
    std::multimap<std::string_view, std::string_view> m_expressions;
    std::map<std::string_view, std::size_t> m_sizes;
    std::set<std::string_view> m_open;
};

/// What the engine says against the formula when it computes it with every variable at 1; empty when nothing.
/// When it evaluates a node it keeps such errors to itself.
std::string tryFormula(pugi::xml_node node, const char* formula, bool isInteger)
{
    const Complaints complaints;
    g_autoptr(ArvEvaluator) evaluator = arv_evaluator_new(formula);
    for (const auto& child : node.children()) {
        const std::string_view element = child.name();
        const char* name = child.attribute("Name").value();
        if (element == "pVariable")
            arv_evaluator_set_int64_variable(evaluator, name, 1);
        else if (element == "Constant")
            arv_evaluator_set_constant(evaluator, name, child.child_value());
        else if (element == "Expression")
            arv_evaluator_set_sub_expression(evaluator, name, child.child_value());
    }
    for (const char* name : {"FROM", "TO"})
        arv_evaluator_set_int64_variable(evaluator, name, 1);
    GError* error = nullptr;
    if (isInteger)
        arv_evaluator_evaluate_as_int64(evaluator, &error);
    else
        arv_evaluator_evaluate_as_double(evaluator, &error);
    if (!error)
        return complaints.first();
    const std::string message = error->message;
    g_error_free(error);
    // Whether a division is by zero depends on the variables, so that is no fault of the formula.
    return message.find("division by zero") == message.npos ? message : std::string();
}

/// Settles the formula's numbers and divisions in the element. Returns why that cannot be done; empty when it
/// is.
std::string settle(pugi::xml_node element, bool isInteger)
{
    std::string formula = element.child_value();
    if (const auto number = settleNumbers(formula, isInteger); !number.empty())
        return "its formula has '" + number + "', which is no " + (isInteger ? "whole number" : "number");
    const auto guarded = guardDivisions(formula);
    if (!guarded)
        return "its formula has a division that cannot be read";
    element.text().set(guarded->c_str());
    return {};
}

} // namespace

FormulaVerdict checkFormulas(pugi::xml_node node, bool isInteger)
{
    FormulaVerdict verdict;
    for (const auto& element : node.children()) {
        const std::string_view name = element.name();
        if (!isFormula(name) && name != "Expression")
            continue;
        const std::string_view formula = element.child_value();
        if (formula.size() > MaxFormulaSize)
            refuseDescription("it has a formula of " + std::to_string(formula.size()) + " characters");
        if (bracketDepth(formula) > MaxBracketDepth)
            refuseDescription("it has a formula with brackets more than " + std::to_string(MaxBracketDepth) +
                              " deep");
        if (auto fault = settle(element, isInteger); !fault.empty())
            verdict.fault = std::move(fault);
    }
    ExpandedSize expandedSize(node);
    for (const auto& element : node.children()) {
        if (!isFormula(element.name()))
            continue;
        verdict.size += expandedSize.of(element.child_value());
        if (!verdict.fault.empty())
            continue;
        if (const auto error = tryFormula(node, element.child_value(), isInteger); !error.empty())
            verdict.fault = "its formula cannot be computed: " + error;
    }
    return verdict;
}

} // namespace genapi
