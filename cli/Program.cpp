// SPDX-License-Identifier: Apache-2.0
#include "cli/Program.h"

#include "cli/arguments/Arguments.h"
#include "cli/commands/Command.h"
#include "cli/session/Session.h"
#include "cli/text/DisplayText.h"
#include "cli/text/TextTable.h"

#include <algorithm>
#include <ostream>

namespace cli {
namespace {

const std::string Name = "ip-configurator-cli";

constexpr const char* ExitStatuses =
    R"(
exit status: 0 done and seen to be so; 1 failed or refused; 2 wrong arguments or a wrong file; 3 no such camera; 4 there is
something to do (apply --check only); 130 interrupted by a signal while a camera was being set.
)";

std::string usage()
{
    std::string text = "usage:\n";
    TextTable summaries;
    for (const Command& command : commands()) {
        text += "  " + Name + " " + command.name + (command.synopsis.empty() ? "" : " ") + command.synopsis +
                "\n";
        summaries.addRow({{"  " + command.name, {}}, {command.summary, {}}});
    }
    return text + "  " + Name + " [COMMAND] --help\n  " + Name + " --version\n\n" +
           "Finds GigE Vision cameras and changes their addresses.\n\n" + "commands:\n" + summaries.text() +
           ExitStatuses;
}

std::string helpOf(const Command& command)
{
    return "usage: " + Name + " " + command.name + " " + command.synopsis + "\n\n" + command.help +
           ExitStatuses;
}

bool isHelp(const std::string& word)
{
    return word == "--help" || word == "-h";
}

const Command& commandNamed(const std::string& name)
{
    const auto found = std::find_if(commands().begin(), commands().end(),
                                    [&name](const Command& command) { return command.name == name; });
    if (found != commands().end())
        return *found;
    std::string allowed;
    for (const Command& command : commands())
        allowed += (allowed.empty() ? "" : ", ") + command.name;
    throw Failure(ExitStatus::WrongArguments,
                  "unknown command \"" + displayText(name) + "\"; allowed: " + allowed + "; see --help");
}

void run(const std::vector<std::string>& words, Session& session)
{
    if (isHelp(words[0])) {
        session.out << usage();
        return;
    }
    if (words[0] == "--version") {
        session.out << Name << " " << PROGRAM_VERSION << '\n';
        return;
    }
    const Command& command = commandNamed(words[0]);
    const std::vector<std::string> rest(words.begin() + 1, words.end());
    if (std::any_of(rest.begin(), rest.end(), isHelp))
        session.out << helpOf(command);
    else
        command.run(parseArguments(command.syntax, rest), session);
}

} // namespace

const std::vector<Command>& commands()
{
    static const std::vector<Command> all{listCommand(),   forceCommand(),  setCommand(),
                                          whoCommand(),    doctorCommand(), watchCommand(),
                                          exportCommand(), applyCommand(),  replaceCommand()};
    return all;
}

ExitStatus runProgram(const std::vector<std::string>& words, Session& session)
{
    if (words.empty()) {
        session.err << usage();
        return ExitStatus::WrongArguments;
    }
    try {
        run(words, session);
        if (!session.out.flush())
            throw Failure(ExitStatus::Failed,
                          "standard output cannot be written; what should be there is lost");
        return ExitStatus::Done;
    } catch (const Failure& failure) {
        session.err << Name << ": " << failure.what() << '\n';
        return failure.status();
    }
}

} // namespace cli
