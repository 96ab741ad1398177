// SPDX-License-Identifier: Apache-2.0
#include "simulator/Arguments.h"
#include "simulator/Commands.h"
#include "simulator/ControlSocket.h"
#include "simulator/EventLoop.h"
#include "simulator/Farm.h"
#include "simulator/config/ReadFarm.h"
#include "simulator/wire/Wire.h"

#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>

namespace {

using namespace simulator;

std::string readFile(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    std::string text{std::istreambuf_iterator<char>(file), {}};
    if (!file)
        throw std::runtime_error("cannot read the file");
    return text;
}

FarmConfig readConfig(const std::string& path)
try {
    return readFarm(readFile(path), std::filesystem::path(path).parent_path());
} catch (const std::exception& error) {
    throw std::runtime_error(path + ": " + error.what());
}

void runFarm(const Arguments& arguments)
{
    holdSignals();
    const FarmConfig config = readConfig(arguments.configFile);
    Wire wire(arguments.interface);
    TimerQueue timers(TimerQueue::Clock::now());
    Farm farm(config, timers, [&wire](const Frame& frame) { wire.send(frame); });
    std::optional<ControlSocket> control;
    if (!arguments.controlSocket.empty()) {
        control.emplace(arguments.controlSocket,
                        [&farm](const std::string& command) -> ControlSocket::Answer {
                            try {
                                return {true, runCommand(farm, command)};
                            } catch (const CommandError& error) {
                                return {false, error.what()};
                            }
                        });
    }
    std::cout << "ready: " << config.cameras.size() << " cameras" << std::endl;
    runUntilSignal(wire, farm, timers, control ? &*control : nullptr);
}

int sendCommand(const Arguments& arguments)
{
    const ControlSocket::Answer answer = ControlSocket::request(arguments.controlSocket, *arguments.command);
    if (answer.accepted)
        std::cout << answer.text;
    else
        std::cerr << "camera-farm: " << answer.text << '\n';
    return answer.accepted ? 0 : 1;
}

} // namespace

int main(int argc, char** argv)
{
    try {
        const Arguments arguments = parseArguments({argv + 1, argv + argc});
        if (arguments.wantsHelp)
            std::cout << Usage;
        else if (arguments.command)
            return sendCommand(arguments);
        else
            runFarm(arguments);
        return 0;
    } catch (const ArgumentError& error) {
        std::cerr << "camera-farm: " << error.what() << '\n';
        return 2;
    } catch (const std::exception& error) {
        std::cerr << "camera-farm: " << error.what() << '\n';
        return 1;
    }
}
