// SPDX-License-Identifier: Apache-2.0
#include "genapi/description/Formula.h"

#include "genapi/description/Numbers.h"

#include <algorithm>
#include <cctype>

namespace genapi {
namespace {

bool isBlank(char c)
{
    return std::isspace(static_cast<unsigned char>(c)) != 0;
}

bool isDigit(char c)
{
    return std::isdigit(static_cast<unsigned char>(c)) != 0;
}

/// What names and numbers are made of.
bool isWordCharacter(char c)
{
    return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_' || c == '.';
}

std::size_t skipBlanks(std::string_view text, std::size_t at)
{
    while (at < text.size() && isBlank(text[at]))
        ++at;
    return at;
}

/// Behind the name or number that starts here. The sign of an exponent belongs to a decimal number.
std::size_t endOfWord(std::string_view text, std::size_t at)
{
    const std::size_t start = at;
    const bool isDecimal = !text.substr(start).starts_with("0x") && !text.substr(start).starts_with("0X") &&
                           !std::isalpha(text[start]);
    while (at < text.size()) {
        const bool isExponentSign = isDecimal && (text[at] == '+' || text[at] == '-') && at > start &&
                                    (text[at - 1] == 'e' || text[at - 1] == 'E');
        if (!isWordCharacter(text[at]) && !isExponentSign)
            break;
        ++at;
    }
    return at;
}

/// Behind the bracket that closes the one here; npos when there is none.
std::size_t endOfBrackets(std::string_view text, std::size_t at)
{
    std::size_t depth = 0;
    for (; at < text.size(); ++at) {
        if (text[at] == '(')
            ++depth;
        else if (text[at] == ')' && --depth == 0)
            return at + 1;
    }
    return text.npos;
}

/// Behind the operand that starts here, signs and powers included ("-x", "f(x)", "(x + 1) ** 2"); npos when
/// there is no operand.
std::size_t endOfOperand(std::string_view text, std::size_t at)
{
    for (;;) {
        at = skipBlanks(text, at);
        while (at < text.size() && std::string_view("+-~!").find(text[at]) != std::string_view::npos)
            at = skipBlanks(text, at + 1);
        if (at == text.size())
            return text.npos;
        if (text[at] == '(') {
            at = endOfBrackets(text, at);
        } else if (isWordCharacter(text[at])) {
            const bool isName = !isDigit(text[at]) && text[at] != '.';
            at = endOfWord(text, at);
            const std::size_t next = skipBlanks(text, at);
            if (isName && next < text.size() && text[next] == '(')
                at = endOfBrackets(text, next);
        } else {
            return text.npos;
        }
        if (at == text.npos)
            return text.npos;
        const std::size_t next = skipBlanks(text, at);
        if (!text.substr(next).starts_with("**"))
            return at;
        at = next + 2;
    }
}

bool isPlainNumber(std::string_view text)
{
    return !text.empty() && std::all_of(text.begin(), text.end(), isDigit);
}

} // namespace

std::size_t bracketDepth(std::string_view formula)
{
    std::size_t depth = 0;
    std::size_t deepest = 0;
    for (const char c : formula) {
        if (c == '(')
            deepest = std::max(deepest, ++depth);
        else if (c == ')' && depth > 0)
            --depth;
    }
    return deepest;
}

std::vector<std::string_view> namesIn(std::string_view formula)
{
    std::vector<std::string_view> names;
    std::size_t at = 0;
    while (at < formula.size()) {
        if (!isWordCharacter(formula[at])) {
            ++at;
            continue;
        }
        const std::size_t end = endOfWord(formula, at);
        if (!isDigit(formula[at]) && formula[at] != '.')
            names.push_back(formula.substr(at, end - at));
        at = end;
    }
    return names;
}

std::string settleNumbers(std::string& formula, bool isWhole)
{
    std::string settled;
    std::size_t at = 0;
    while (at < formula.size()) {
        if (!isWordCharacter(formula[at])) {
            settled += formula[at++];
            continue;
        }
        const std::size_t end = endOfWord(formula, at);
        std::string word = formula.substr(at, end - at);
        if (isDigit(word[0]) || word[0] == '.') {
            const auto number = formulaNumber(word, isWhole);
            if (!number)
                return word;
            settled += *number;
        } else {
            settled += word;
        }
        at = end;
    }
    formula = settled;
    return {};
}

std::optional<std::string> guardDivisions(std::string_view formula)
{
    std::string guarded;
    std::size_t at = 0;
    while (at < formula.size()) {
        const char c = formula[at];
        if (isWordCharacter(c)) {
            const std::size_t end = endOfWord(formula, at);
            guarded += formula.substr(at, end - at);
            at = end;
            continue;
        }
        guarded += c;
        ++at;
        if (c != '/' && c != '%')
            continue;
        const std::size_t start = skipBlanks(formula, at);
        const std::size_t end = endOfOperand(formula, start);
        if (end == formula.npos)
            return std::nullopt;
        const std::string_view divisor = formula.substr(start, end - start);
        if (isPlainNumber(divisor)) {
            guarded += formula.substr(at, end - at);
            at = end;
            continue;
        }
        at = end;
        const auto inner = guardDivisions(divisor);
        if (!inner || inner->size() > MaxFormulaSize / 4)
            return std::nullopt;
        // A divisor of -1 becomes 1. The quotient then gets its sign back; a remainder is 0 either way.
        guarded += "((" + *inner + ")+2*((" + *inner + ")=(-1)))";
        if (c == '/')
            guarded += "*(1-2*((" + *inner + ")=(-1)))";
        if (guarded.size() > MaxFormulaSize)
            return std::nullopt;
    }
    return guarded;
}

} // namespace genapi
