// SPDX-License-Identifier: Apache-2.0
#include "simulator/Arguments.h"

#include <utility>

namespace simulator {

const char Usage[] =
    R"(camera-farm - up to 256 simulated GigE Vision cameras on one network interface

camera-farm --interface IF --config FILE [--control SOCKET]
    Runs the cameras of the JSON file on the interface until SIGTERM or SIGINT. Prints
    "ready: N cameras" when they answer.
camera-farm --control SOCKET send COMMAND...
    Sends one command to a running farm and prints its answer. Commands:
        unplug MAC                              takes the camera's cable out
        plug MAC                                and puts it back
        hold MAC [ADDRESS[:PORT]] [exclusive|control] [forever]
                                                lets another application control it
        release MAC                             and ends that
        reset MAC                               reboots it
        announce MAC                            sends an ARP announcement of its address
        fault MAC REQUEST ACTION [TIMES] ...    makes such requests go wrong
        heal MAC                                and ends that
        show MAC                                prints its state as JSON
camera-farm --help

Exit status: 0 done, 1 failed or refused, 2 wrong arguments. camera-farm(1) tells what FILE holds.
)";

Arguments parseArguments(const std::vector<std::string>& words)
{
    Arguments arguments;
    const std::pair<const char*, std::string*> options[] = {
        {"--interface", &arguments.interface},
        {"--config", &arguments.configFile},
        {"--control", &arguments.controlSocket},
    };
    for (std::size_t i = 0; i < words.size(); ++i) {
        const std::string& word = words[i];
        if (word == "--help" || word == "-h") {
            arguments.wantsHelp = true;
            return arguments;
        }
        if (word == "send") {
            std::string& command = arguments.command.emplace();
            for (++i; i < words.size(); ++i)
                command += (command.empty() ? "" : " ") + words[i];
            break;
        }
        std::string* value = nullptr;
        for (const auto& [name, member] : options)
            if (word == name)
                value = member;
        if (!value)
            throw ArgumentError("unknown argument \"" + word +
                                "\": --interface, --config, --control, send and --help are allowed");
        if (i + 1 == words.size() || words[i + 1].empty())
            throw ArgumentError(word + " needs a value");
        *value = words[++i];
    }

    if (arguments.command) {
        if (arguments.command->empty())
            throw ArgumentError(
                "send needs a command: unplug, plug, hold, release, reset, announce, fault, heal or show");
        if (arguments.controlSocket.empty())
            throw ArgumentError("send needs --control SOCKET, the running farm's");
        if (!arguments.interface.empty() || !arguments.configFile.empty())
            throw ArgumentError("send goes with --control only, not with --interface or --config");
    } else if (arguments.interface.empty() || arguments.configFile.empty()) {
        throw ArgumentError(std::string(arguments.interface.empty() ? "--interface IF" : "--config FILE") +
                            " is missing: a farm needs both; --help tells more");
    }
    return arguments;
}

} // namespace simulator
