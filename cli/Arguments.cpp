// SPDX-License-Identifier: Apache-2.0
#include "cli/Arguments.h"

#include "cli/DisplayText.h"
#include "cli/Failure.h"

#include <algorithm>

namespace cli {
namespace {

[[noreturn]] void refuse(const std::string& what)
{
    throw Failure(ExitStatus::WrongArguments, what + "; see --help");
}

std::string shown(const Option& option)
{
    return option.value.empty() ? option.name : option.name + " " + option.value;
}

/// "--ip, --mask and --gateway are allowed"
std::string allowedOptions(const Syntax& syntax)
{
    std::string list;
    const std::size_t count = syntax.options.size();
    for (std::size_t i = 0; i < count; ++i) {
        if (i > 0)
            list += i + 1 == count ? " and " : ", ";
        list += syntax.options[i].name;
    }
    if (list.empty())
        return "no option is allowed";
    return list + (count == 1 ? " is allowed" : " are allowed");
}

void addOption(Arguments& arguments, const Option& option, const std::string& value)
{
    if (!arguments.options.emplace(option.name, value).second)
        refuse(option.name + " is given twice; once is allowed");
}

} // namespace

Arguments parseArguments(const Syntax& syntax, const std::vector<std::string>& words)
{
    Arguments arguments;
    for (std::size_t i = 0; i < words.size(); ++i) {
        const std::string& word = words[i];
        if (word.rfind('-', 0) != 0) {
            if (arguments.operands.size() == syntax.operands.size())
                refuse("\"" + displayText(word) + "\" is one argument too many");
            arguments.operands.push_back(word);
            continue;
        }
        const std::size_t equals = word.find('=');
        const std::string name = word.substr(0, equals);
        const auto option = std::find_if(syntax.options.begin(), syntax.options.end(),
                                         [&name](const Option& each) { return each.name == name; });
        if (option == syntax.options.end())
            refuse("unknown option \"" + displayText(name) + "\": " + allowedOptions(syntax));
        if (option->value.empty()) {
            if (equals != std::string::npos)
                refuse(name + " takes no value");
            addOption(arguments, *option, {});
            continue;
        }
        if (equals != std::string::npos) {
            addOption(arguments, *option, word.substr(equals + 1));
            continue;
        }
        // A forgotten value must not make the next option one.
        if (i + 1 == words.size() || words[i + 1].rfind('-', 0) == 0)
            refuse(name + " needs a value: " + shown(*option));
        addOption(arguments, *option, words[++i]);
    }

    if (arguments.operands.size() < syntax.operands.size())
        refuse(syntax.operands[arguments.operands.size()] + " is missing");
    for (const Option& option : syntax.options)
        if (option.required && !arguments.has(option.name))
            refuse(shown(option) + " is missing");
    return arguments;
}

} // namespace cli
