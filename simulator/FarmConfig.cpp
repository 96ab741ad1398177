// SPDX-License-Identifier: Apache-2.0
#include "simulator/FarmConfig.h"

#include "gvcp/Registers.h"
#include "simulator/JsonObject.h"

#include <algorithm>
#include <set>

namespace simulator {

namespace {

using Config = CameraConfig;
template <typename T>
using Choice = std::pair<const char*, T>;

constexpr std::uint32_t LongestDelay = 60000; // ms

constexpr Choice<Config::IpMethod> IpMethods[] = {
    {"persistent", Config::IpMethod::Persistent},
    {"dhcp", Config::IpMethod::Dhcp},
    {"lla", Config::IpMethod::LinkLocal},
};

constexpr Choice<Config::AnswerBy> AnswerWays[] = {
    {"unicast", Config::AnswerBy::Unicast},
    {"arp", Config::AnswerBy::Arp},
    {"broadcast", Config::AnswerBy::Broadcast},
};

constexpr Choice<Config::ForceIpAcknowledge> ForceIpAcknowledges[] = {
    {"old", Config::ForceIpAcknowledge::FromOldAddress},
    {"new", Config::ForceIpAcknowledge::FromNewAddress},
    {"broadcast", Config::ForceIpAcknowledge::Broadcast},
    {"never", Config::ForceIpAcknowledge::Never},
};

constexpr Choice<std::uint32_t> Privileges[] = {
    {"exclusive", gvcp::Privilege::Exclusive},
    {"control", gvcp::Privilege::Control},
};

constexpr Choice<Config::NoiseKind> NoiseKinds[] = {
    {"truncated", Config::NoiseKind::Truncated}, {"oversized", Config::NoiseKind::Oversized},
    {"foreign", Config::NoiseKind::Foreign},     {"duplicate", Config::NoiseKind::Duplicate},
    {"random", Config::NoiseKind::Random},       {"wrongId", Config::NoiseKind::WrongId},
};

IpSettings readIp(JsonObject& object, gvcp::Ipv4 defaultMask)
{
    IpSettings ip;
    ip.address = object.address("address").value_or(0);
    ip.mask = object.mask("mask").value_or(defaultMask);
    ip.gateway = object.address("gateway").value_or(0);
    return ip;
}

Config::Fault readFault(const nlohmann::json& value, const std::string& name)
{
    JsonObject object(value, name + ", faults");
    std::vector<Choice<Request>> requests;
    for (std::size_t i = 0; i < RequestNames.size(); ++i)
        requests.emplace_back(RequestNames[i].data(), Request{static_cast<int>(i)});
    constexpr Choice<bool> Actions[] = {{"drop", true}};

    Config::Fault fault;
    const auto request = object.choice<Request>("command", requests);
    const auto action = object.choice<bool>("action", Actions);
    fault.times = object.number("times", 1, UINT32_MAX);
    object.rejectOthers();
    if (!request || !action)
        object.fail(request ? "action" : "command", "is missing");
    fault.request = *request;
    return fault;
}

void readQuirks(JsonObject& object, const std::string& name, Config& camera)
{
    camera.answerDelay = std::chrono::milliseconds(object.number("answerDelay", 0, LongestDelay).value_or(0));
    camera.rebootTime = std::chrono::milliseconds(object.number("rebootTime", 0, LongestDelay).value_or(500));
    camera.answerBy = object.choice<Config::AnswerBy>("answer", AnswerWays).value_or(camera.answerBy);
    camera.forceIpAcknowledge =
        object.choice<Config::ForceIpAcknowledge>("forceIpAcknowledge", ForceIpAcknowledges)
            .value_or(camera.forceIpAcknowledge);

    const auto holder = object.address("heldBy");
    const auto privilege = object.choice<std::uint32_t>("heldPrivilege", Privileges);
    if (holder)
        camera.heldBy = Config::Holder{*holder, privilege.value_or(gvcp::Privilege::Exclusive)};
    else if (privilege)
        object.fail("heldPrivilege", "needs \"heldBy\"");

    if (const nlohmann::json* const faults = object.array("faults"))
        for (const nlohmann::json& fault : *faults)
            camera.faults.push_back(readFault(fault, name));
    camera.noise = object.choices<Config::NoiseKind>("noise", NoiseKinds);
    camera.loss = object.probability("loss").value_or(0);
    camera.forgedAnswers = object.number("forgedAnswers", 0, 1000000).value_or(0);
}

void readTexts(JsonObject& object, Config& camera)
{
    camera.manufacturer = object.text("manufacturer", 32).value_or(camera.manufacturer);
    camera.model = object.text("model", 32).value_or(camera.model);
    camera.version = object.text("version", 32).value_or(camera.version);
    camera.info = object.text("info", 48).value_or(camera.info);
    camera.serial = object.text("serial", 16).value_or("");
    camera.userName = object.text("userName", 16).value_or("");
}

std::string serialFrom(const gvcp::MacAddress& mac)
{
    std::string text = toText(mac).substr(9); // the maker's own half
    std::erase(text, ':');
    return "FC" + text;
}

/// Adds to the number at a text's end, keeping its width where it fits: "A009" + 1 is "A010".
std::string countedUp(const std::string& text, unsigned by)
{
    std::size_t begin = text.size();
    while (begin > 0 && text.size() - begin < 9 && text[begin - 1] >= '0' && text[begin - 1] <= '9')
        --begin;
    if (begin == text.size())
        return text;
    std::string digits = std::to_string(std::stoul(text.substr(begin)) + by);
    const std::size_t width = text.size() - begin;
    if (digits.size() < width)
        digits.insert(0, width - digits.size(), '0');
    return text.substr(0, begin) + digits;
}

gvcp::MacAddress countedUp(const gvcp::MacAddress& mac, unsigned by)
{
    gvcp::MacAddress result = mac;
    unsigned carry = by;
    for (std::size_t i = result.bytes.size(); i-- > 0 && carry > 0; carry >>= 8) {
        carry += result.bytes[i];
        result.bytes[i] = static_cast<std::uint8_t>(carry);
    }
    return result;
}

/// One entry of the list, and the cameras it stands for.
std::vector<Config> readEntry(const nlohmann::json& value, std::size_t index)
{
    std::string name = "cameras[" + std::to_string(index) + "]";
    JsonObject object(value, name);
    const auto mac = object.mac("mac");
    if (!mac)
        object.fail("mac", "is missing");
    name += " (" + toText(*mac) + ")";
    object.setName(name);

    Config camera;
    camera.mac = *mac;
    camera.ip = readIp(object, 0xFFFFFF00);
    if (camera.ip.address == 0)
        object.fail("address", "is missing, or is 0.0.0.0");
    readTexts(object, camera);
    camera.ipMethod = object.choice<Config::IpMethod>("ipConfiguration", IpMethods).value_or(camera.ipMethod);
    const nlohmann::json* const persistent = object.any("persistent");
    if (persistent) {
        JsonObject stored(*persistent, name + ", persistent");
        camera.persistent = readIp(stored, camera.ip.mask);
        stored.rejectOthers();
    } else if (camera.ipMethod == Config::IpMethod::Persistent) {
        camera.persistent = camera.ip;
    }
    readQuirks(object, name, camera);
    const unsigned repeat = object.number("repeat", 1, FarmConfig::MaxCameras).value_or(1);
    object.rejectOthers();

    std::vector<Config> cameras(repeat, camera);
    for (unsigned i = 0; i < repeat; ++i) {
        Config& each = cameras[i];
        each.mac = countedUp(camera.mac, i);
        each.ip.address += i;
        if (!persistent && camera.ipMethod == Config::IpMethod::Persistent)
            each.persistent = each.ip;
        each.serial = camera.serial.empty() ? serialFrom(each.mac) : countedUp(camera.serial, i);
    }
    return cameras;
}

} // namespace

FarmConfig parseFarmConfig(std::string_view json)
{
    nlohmann::json root;
    try {
        root = nlohmann::json::parse(json);
    } catch (const nlohmann::json::parse_error& error) {
        throw ConfigError(std::string("not valid JSON: ") + error.what());
    }

    FarmConfig config;
    JsonObject object(root, "the configuration");
    config.seed = object.number("seed", 0, UINT32_MAX).value_or(config.seed);
    const nlohmann::json* const entries = object.array("cameras");
    object.rejectOthers();
    if (!entries || entries->empty())
        object.fail("cameras", "must list at least one camera");

    std::set<gvcp::MacAddress> macs;
    for (std::size_t i = 0; i < entries->size(); ++i) {
        for (Config& camera : readEntry((*entries)[i], i)) {
            if (!macs.insert(camera.mac).second)
                throw ConfigError("cameras[" + std::to_string(i) + "] (" + toText(camera.mac) +
                                  "): \"mac\" is another camera's already");
            config.cameras.push_back(std::move(camera));
        }
    }
    if (config.cameras.size() > FarmConfig::MaxCameras)
        throw ConfigError("the configuration lists " + std::to_string(config.cameras.size()) +
                          " cameras; one farm has at most " + std::to_string(FarmConfig::MaxCameras));
    return config;
}

} // namespace simulator
