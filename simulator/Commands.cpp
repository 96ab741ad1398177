// SPDX-License-Identifier: Apache-2.0
#include "simulator/Commands.h"

#include "gvcp/Registers.h"
#include "simulator/Farm.h"
#include "simulator/config/HexText.h"

#include <charconv>
#include <iterator>
#include <nlohmann/json.hpp>
#include <sstream>

namespace simulator {

namespace {

using Words = std::vector<std::string>;
using Json = nlohmann::ordered_json;

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

std::string announce(Station& station, const Words&)
{
    if (!station.isPlugged() || station.phase() != BootSequence::Phase::Running)
        throw CommandError("the camera is not on the network now");
    station.announceAddress();
    return {};
}

std::string hold(Station& station, const Words& options)
{
    CameraConfig::Holder holder;
    for (const std::string& option : options) {
        if (const auto endpoint = parseEndpoint(option)) {
            holder.address = endpoint->address;
            holder.port = endpoint->port;
        } else if (const auto address = base::Ipv4::parse(option)) {
            holder.address = *address;
        } else if (option == "control") {
            holder.privilege = gvcp::Privilege::Control;
        } else if (option == "forever") {
            holder.heartbeatOff = true;
        } else if (option != "exclusive") {
            throw CommandError("\"" + option +
                               "\" is none of an IPv4 address, exclusive, control and forever");
        }
    }
    if (holder.heartbeatOff && !station.camera().config().hasHeartbeatOff)
        throw CommandError("the camera's heartbeat cannot be switched off");
    station.hold(holder);
    return {};
}

std::string release(Station& station, const Words&)
{
    station.release();
    return {};
}

using Names = std::vector<std::string_view>;

/// Which of the names this is; throws with all of them when it is none.
std::size_t indexIn(const Names& names, const std::string& word)
{
    std::string all;
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (word == names[i])
            return i;
        all += (all.empty() ? "" : ", ") + std::string(names[i]);
    }
    throw CommandError("\"" + word + "\" is none of " + all);
}

Fault faultOf(const std::string& request, const std::string& action)
{
    Names requests;
    for (const auto& [name, fault] : faultsByName())
        requests.emplace_back(name);
    Fault fault = faultsByName()[indexIn(requests, request)].second;
    const Names actions(FaultActionNames.begin(), FaultActionNames.end());
    fault.action = FaultAction{static_cast<int>(indexIn(actions, action))};
    return fault;
}

unsigned parseNumber(const std::string& text, const std::string& what)
{
    unsigned number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc{} || end != text.data() + text.size() || number == 0)
        throw CommandError("\"" + text + "\" is no " + what + " from 1");
    return number;
}

std::string fault(Station& station, const Words& options)
{
    Fault fault = faultOf(options[0], options[1]);
    std::size_t next = 2;
    if (next < options.size() && options.size() % 2 != 0)
        fault.times = parseNumber(options[next++], "number of times");
    for (; next < options.size(); next += 2) {
        const unsigned value = parseNumber(options[next + 1], options[next]);
        if (options[next] == "after")
            fault.after = value;
        else if (options[next] == "every")
            fault.every = value;
        else if (options[next] == "time")
            fault.time = std::chrono::milliseconds{value};
        else
            throw CommandError("\"" + options[next] + "\" is none of after, every, time");
    }
    if (const auto why = whyImpossible(fault))
        throw CommandError(*why);
    station.addFault(fault);
    return {};
}

std::string heal(Station& station, const Words&)
{
    station.clearFaults();
    return {};
}

Json toJson(const base::IpSettings& ip)
{
    return {{"address", ip.address.toText()}, {"mask", ip.mask.toText()}, {"gateway", ip.gateway.toText()}};
}

const char* nameOf(BootSequence::Phase phase)
{
    switch (phase) {
    case BootSequence::Phase::Off:
        return "off";
    case BootSequence::Phase::Dhcp:
        return "dhcp";
    case BootSequence::Phase::LinkLocal:
        return "lla";
    case BootSequence::Phase::Running:
        break;
    }
    return "running";
}

std::string show(Station& station, const Words&)
{
    const Camera& camera = station.camera();
    const StoredSettings stored = camera.registers().stored();
    const StoredIp own = camera.registers().storedIp();
    const auto& controller = camera.control().application();
    Json json{{"mac", station.mac().toText()}};
    json.update(toJson(camera.ip()));
    json["ipConfiguration"] = own.ipConfig & gvcp::IpConfig::Persistent ? "persistent"
                              : own.ipConfig & gvcp::IpConfig::Dhcp     ? "dhcp"
                                                                        : "lla";
    json["ipConfigurationBits"] = own.ipConfig;
    json["persistent"] = toJson(own.persistent);
    for (const StoredIp& each : stored.interfaces) {
        Json& interface = json["interfaces"].emplace_back(toJson(each.persistent));
        interface["ipConfigurationBits"] = each.ipConfig;
    }
    json["userName"] = stored.userName;
    json["userNameBytes"] = hexPairs(stored.userName);
    json["held"] = controller.has_value();
    json["controller"] = controller ? controller->address.toText() : "none";
    json["controllerPort"] = controller ? controller->port : 0;
    json["privilege"] = camera.control().privilege();
    json["heartbeatOff"] = camera.isHeartbeatOff();
    json["pendingAckOn"] = camera.isPendingAckOn();
    const auto stream = camera.registers().stream();
    json["stream"] = stream ? toText(*stream) : "none";
    json["plugged"] = station.isPlugged();
    json["state"] = nameOf(station.phase());
    json["resets"] = station.resets();
    for (const auto& [address, value] : stored.registers)
        json["registers"][hexWord(address)] = hexWord(value);
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
    {"hold", "hold MAC [ADDRESS[:PORT]] [exclusive|control] [forever]", 0, 3, hold},
    {"release", "release MAC", 0, 0, release},
    {"reset", "reset MAC", 0, 0, reset},
    {"announce", "announce MAC", 0, 0, announce},
    {"fault", "fault MAC REQUEST ACTION [TIMES] [after N] [every N] [time MS]", 2, 9, fault},
    {"heal", "heal MAC", 0, 0, heal},
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
        const auto mac = base::MacAddress::parse(words[1]);
        if (!mac)
            throw CommandError("\"" + words[1] + "\" is no MAC address such as 00:1A:2B:00:00:01");
        Station* const station = farm.find(*mac);
        if (!station)
            throw CommandError("the farm has no camera " + mac->toText());
        return row.run(*station, Words(words.begin() + 2, words.end()));
    }
    throw CommandError("\"" + name + "\" is no command; there are " + names);
}

} // namespace simulator
