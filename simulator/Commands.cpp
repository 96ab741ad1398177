// SPDX-License-Identifier: Apache-2.0
#include "simulator/Commands.h"

#include "gvcp/Registers.h"
#include "simulator/Farm.h"

#include <charconv>
#include <iterator>
#include <nlohmann/json.hpp>
#include <sstream>

namespace simulator {

namespace {

using Words = std::vector<std::string>;
using Json = nlohmann::ordered_json;

// What `hold` takes for the application elsewhere: an address that is nobody's.
constexpr gvcp::Ipv4 SomeApplication = 0xC0000201; // 192.0.2.1

std::string unplug(Station& station, const Words&)
{
    station.setPlugged(false);
    return {};
}

std::string plug(Station& station, const Words&)
{
    station.setPlugged(true);
    return {};
}

std::string reset(Station& station, const Words&)
{
    station.reset();
    return {};
}

std::string hold(Station& station, const Words& options)
{
    CameraConfig::Holder holder{SomeApplication, gvcp::Privilege::Exclusive};
    for (const std::string& option : options) {
        if (const auto address = gvcp::parseIpv4(option))
            holder.address = *address;
        else if (option == "control")
            holder.privilege = gvcp::Privilege::Control;
        else if (option != "exclusive")
            throw CommandError("\"" + option + "\" is neither an IPv4 address nor exclusive nor control");
    }
    station.hold(holder);
    return {};
}

std::string release(Station& station, const Words&)
{
    station.release();
    return {};
}

Request parseRequest(const std::string& word)
{
    std::string names;
    for (std::size_t i = 0; i < RequestNames.size(); ++i) {
        if (word == RequestNames[i])
            return Request{static_cast<int>(i)};
        names += (names.empty() ? "" : ", ") + std::string(RequestNames[i]);
    }
    throw CommandError("\"" + word + "\" is none of " + names);
}

std::string fault(Station& station, const Words& options)
{
    CameraConfig::Fault fault{parseRequest(options[0]), std::nullopt};
    if (options[1] != "drop")
        throw CommandError("\"" + options[1] + "\" is no fault; there is drop");
    if (options.size() > 2) {
        const std::string& text = options[2];
        unsigned times = 0;
        const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), times);
        if (error != std::errc{} || end != text.data() + text.size() || times == 0)
            throw CommandError("\"" + text + "\" is no number of times from 1");
        fault.times = times;
    }
    station.addFault(fault);
    return {};
}

Json toJson(const IpSettings& ip)
{
    return {{"address", gvcp::toText(ip.address)},
            {"mask", gvcp::toText(ip.mask)},
            {"gateway", gvcp::toText(ip.gateway)}};
}

std::string show(Station& station, const Words&)
{
    const RegisterMap& registers = station.camera().registers();
    const std::uint32_t methods = registers.word(gvcp::reg::CurrentIpConfig);
    Json json{{"mac", toText(station.mac())}};
    json.update(toJson(station.camera().ip()));
    json["ipConfiguration"] = methods & gvcp::IpConfig::Persistent ? "persistent"
                              : methods & gvcp::IpConfig::Dhcp     ? "dhcp"
                                                                   : "lla";
    json["persistent"] = toJson(registers.persistentIp());
    json["userName"] = registers.userName();
    json["held"] = station.camera().isHeld();
    json["plugged"] = station.isPlugged();
    for (std::size_t i = 0; i < RequestNames.size(); ++i)
        json["received"][std::string(RequestNames[i])] = station.counters()[i];
    // A camera's texts are bytes: what is not UTF-8 must not make this fail.
    return json.dump(4, ' ', false, Json::error_handler_t::replace) + "\n";
}

struct CommandRow
{
    const char* name;
    const char* usage;
    std::size_t minOptions; ///< After the MAC.
    std::size_t maxOptions;
    std::string (*run)(Station&, const Words&);
};

constexpr CommandRow Rows[] = {
    {"unplug", "unplug MAC", 0, 0, unplug},
    {"plug", "plug MAC", 0, 0, plug},
    {"hold", "hold MAC [ADDRESS] [exclusive|control]", 0, 2, hold},
    {"release", "release MAC", 0, 0, release},
    {"reset", "reset MAC", 0, 0, reset},
    {"fault", "fault MAC REQUEST drop [TIMES]", 2, 3, fault},
    {"show", "show MAC", 0, 0, show},
};

} // namespace

std::string runCommand(Farm& farm, std::string_view line)
{
    std::istringstream stream{std::string(line)};
    const Words words{std::istream_iterator<std::string>(stream), {}};
    const std::string name = words.empty() ? "" : words[0];

    std::string names;
    for (const CommandRow& row : Rows) {
        names += (names.empty() ? "" : ", ") + std::string(row.name);
        if (name != row.name)
            continue;
        if (words.size() < 2 + row.minOptions || words.size() > 2 + row.maxOptions)
            throw CommandError(std::string("the command is: ") + row.usage);
        const auto mac = gvcp::parseMac(words[1]);
        if (!mac)
            throw CommandError("\"" + words[1] + "\" is no MAC address such as 00:1A:2B:00:00:01");
        Station* const station = farm.find(*mac);
        if (!station)
            throw CommandError("the farm has no camera " + toText(*mac));
        return row.run(*station, Words(words.begin() + 2, words.end()));
    }
    throw CommandError("\"" + name + "\" is no command; there are " + names);
}

} // namespace simulator
