// SPDX-License-Identifier: Apache-2.0
// Takes the input as the words of a command line, a NUL behind each, and has both programs' arguments read
// from it. Nothing is done of what they ask for: the SDK is the double, which aborts when it is called.
#include "cli/Program.h"
#include "cli/arguments/AddressArguments.h"
#include "cli/commands/Command.h"
#include "cli/commands/SetRequest.h"
#include "cli/session/Failure.h"
#include "cli/session/Session.h"
#include "simulator/Arguments.h"
#include "tests/fuzz/Require.h"
#include "tests/fuzz/Utf8.h"

#include <algorithm>
#include <optional>
#include <sstream>

using Words = std::vector<std::string>;

namespace {

Words wordsOf(std::string_view input)
{
    Words words;
    while (!input.empty()) {
        const std::size_t end = std::min(input.find('\0'), input.size());
        words.emplace_back(input.substr(0, end));
        input.remove_prefix(std::min(end + 1, input.size()));
    }
    return words;
}

/// Fit for a terminal: whole lines or one without its end.
void requireHarmless(const std::string& text)
{
    require(isUtf8(text));
    require(std::none_of(text.begin(), text.end(), [](char each) {
        return (static_cast<unsigned char>(each) < 0x20 && each != '\n') || each == 0x7F;
    }));
}

/// What `attempt` gives; nothing when it refuses the arguments, in one line.
template <typename Attempt>
auto unlessRefused(Attempt attempt) -> std::optional<decltype(attempt())>
{
    try {
        return attempt();
    } catch (const cli::Failure& failure) {
        require(failure.status() == cli::ExitStatus::WrongArguments);
        const std::string text = failure.what();
        requireHarmless(text);
        require(!text.empty() && text.find('\n') == std::string::npos);
        return std::nullopt;
    }
}

void requireHost(quint32 address, quint32 mask)
{
    const quint32 first = address >> 24;
    require(first >= 1 && first <= 223 && first != 127);
    require((address & ~mask) != 0 && (address | mask) != 0xFFFFFFFF);
}

void judge(const base::IpSettings& settings)
{
    const quint32 address = settings.address.number();
    const quint32 mask = settings.mask.number();
    const quint32 gateway = settings.gateway.number();
    const quint32 hosts = ~mask;
    require(mask != 0 && hosts >= 3 && (hosts & (hosts + 1)) == 0);
    requireHost(address, mask);
    if (gateway != 0) {
        requireHost(gateway, mask);
        require(((gateway ^ address) & mask) == 0 && gateway != address);
    }
    requireHarmless(cli::describe(settings));
}

void judge(const base::MacAddress& mac)
{
    const std::string text = mac.toText();
    require(text.size() == 17 && cli::parseMacAddress(text) == mac);
    require((std::stoi(text.substr(0, 2), nullptr, 16) & 1) == 0);
}

void judge(const cli::SetRequest& request)
{
    judge(request.mac);
    require(request.type || request.userName);
    require(!request.userName || request.userName->toUtf8().size() <= 15);
    if (request.isStatic())
        judge(request.settings);
    if (request.type)
        requireHarmless(cli::describeAddressing(request));
    const cli::Camera camera(cli::changed({}, request));
    require(!request.userName || cli::nameDifference(camera, request).empty());
}

/// That they are what the syntax allows, and are read again from how they could also have been written.
void judge(const cli::Arguments& arguments, const cli::Syntax& syntax)
{
    require(arguments.operands.size() == syntax.operands.size());
    Words again = arguments.operands;
    for (const cli::Option& option : syntax.options) {
        require(arguments.has(option.name) || !option.required);
        if (arguments.has(option.name))
            again.insert(again.begin(), option.value.empty()
                                            ? option.name
                                            : option.name + "=" + arguments.options.at(option.name));
    }
    require(again.size() == arguments.operands.size() + arguments.options.size());
    const cli::Arguments same = cli::parseArguments(syntax, again);
    require(same.operands == arguments.operands && same.options == arguments.options);
}

/// Whether there is something to do for a command, which is not done here.
bool isAccepted(const Words& words)
{
    if (words.empty())
        return false;
    const auto& commands = cli::commands();
    const auto command = std::find_if(commands.begin(), commands.end(),
                                      [&](const cli::Command& each) { return each.name == words[0]; });
    const auto isHelp = [](const std::string& word) { return word == "--help" || word == "-h"; };
    if (command == commands.end() || std::any_of(words.begin(), words.end(), isHelp))
        return false;
    const auto arguments = unlessRefused(
        [&] { return cli::parseArguments(command->syntax, Words(words.begin() + 1, words.end())); });
    if (!arguments)
        return false;
    judge(*arguments, command->syntax);
    if (command->name == "set") {
        if (const auto request = unlessRefused([&] { return cli::parseSetRequest(*arguments); }))
            judge(*request);
    } else if (command->name == "force") {
        if (const auto mac = unlessRefused([&] { return cli::parseMacAddress(arguments->operands[0]); }))
            judge(*mac);
        if (const auto settings = unlessRefused([&] { return cli::parseIpSettings(*arguments); }))
            judge(*settings);
    }
    return true;
}

void readForTheTool(const Words& words)
{
    if (isAccepted(words))
        return;
    std::ostringstream out;
    std::ostringstream err;
    cli::Session session{out, err, false, false, {}};
    const cli::ExitStatus status = cli::runProgram(words, session);
    requireHarmless(out.str());
    requireHarmless(err.str());
    require(status == cli::ExitStatus::Done || status == cli::ExitStatus::WrongArguments);
    require(out.str().empty() == (status != cli::ExitStatus::Done));
    require(err.str().empty() == (status == cli::ExitStatus::Done));
}

void readForTheFarm(const Words& words)
{
    try {
        const simulator::Arguments arguments = simulator::parseArguments(words);
        if (arguments.wantsHelp)
            return;
        const bool runs = !arguments.interface.empty() && !arguments.configFile.empty();
        const bool sends = arguments.command && !arguments.command->empty() &&
                           !arguments.controlSocket.empty() && arguments.interface.empty() &&
                           arguments.configFile.empty();
        require(arguments.command ? sends : runs);
    } catch (const simulator::ArgumentError& error) {
        require(*error.what() != '\0');
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const Words words = wordsOf({reinterpret_cast<const char*>(data), size});
    readForTheTool(words);
    readForTheFarm(words);
    return 0;
}
