// SPDX-License-Identifier: Apache-2.0
#include "cli/arguments/Arguments.h"

#include "cli/session/Failure.h"
#include "cli/text/DisplayText.h"

#include <algorithm>

namespace cli {
namespace {

std::string shown(const Option& option)
{
    return option.value.empty() ? option.name : option.name + " " + option.value;
}

/// "MAC, --ip, --mask and --gateway are allowed", with the operands or without.
std::string allowed(std::vector<std::string> names, const std::vector<Option>& options)
{
    for (const Option& option : options)
        names.push_back(option.name);
    if (names.empty())
        return "nothing is allowed";
    std::string list = names.front();
    for (std::size_t i = 1; i < names.size(); ++i)
        list += (i + 1 == names.size() ? " and " : ", ") + names[i];
    return list + (names.size() == 1 ? " is allowed" : " are allowed");
}

void addOption(Arguments& arguments, const Option& option, const std::string& value)
{
    if (option.repeatable)
        arguments.repeated[option.name].push_back(value);
    if (!arguments.options.insert_or_assign(option.name, value).second && !option.repeatable)
        refuseArguments(option.name + " is given twice; once is allowed");
}

} // namespace

void refuseArguments(const std::string& what)
{
    throw Failure(ExitStatus::WrongArguments, what + "; see --help");
}

Arguments parseArguments(const Syntax& syntax, const std::vector<std::string>& words)
{
    Arguments arguments;
    for (std::size_t i = 0; i < words.size(); ++i) {
        const std::string& word = words[i];
        if (word.rfind('-', 0) != 0) {
            if (arguments.operands.size() == syntax.operands.size())
                refuseArguments("\"" + displayText(word) +
                                "\" is one argument too many: " + allowed(syntax.operands, syntax.options));
            arguments.operands.push_back(word);
            continue;
        }
        const std::size_t equals = word.find('=');
        const std::string name = word.substr(0, equals);
        const auto option = std::find_if(syntax.options.begin(), syntax.options.end(),
                                         [&name](const Option& each) { return each.name == name; });
        if (option == syntax.options.end())
            refuseArguments("unknown option \"" + displayText(name) + "\": " + allowed({}, syntax.options));
        if (option->value.empty()) {
            if (equals != std::string::npos)
                refuseArguments(name + " takes no value");
            addOption(arguments, *option, {});
            continue;
        }
        if (equals != std::string::npos) {
            addOption(arguments, *option, word.substr(equals + 1));
            continue;
        }
        // A forgotten value must not make the next option one.
        if (i + 1 == words.size() || words[i + 1].rfind('-', 0) == 0)
            refuseArguments(name + " needs a value: " + shown(*option));
        addOption(arguments, *option, words[++i]);
    }

    if (arguments.operands.size() + syntax.optionalOperands < syntax.operands.size())
        refuseArguments(syntax.operands[arguments.operands.size()] + " is missing");
    for (const Option& option : syntax.options)
        if (option.required && !arguments.has(option.name))
            refuseArguments(shown(option) + " is missing");
    return arguments;
}

} // namespace cli
