// SPDX-License-Identifier: Apache-2.0
#include "simulator/config/ReadCameras.h"

#include "simulator/config/FarmConfig.h"
#include "simulator/config/ReadDescription.h"
#include "simulator/config/ReadQuirks.h"
#include "simulator/config/ReadRegisters.h"

#include <set>

namespace simulator {

using namespace base::literals;

namespace {

using Config = CameraConfig;
namespace reg = gvcp::reg;

constexpr base::Ipv4 UsualMask = "255.255.255.0"_ip;
constexpr std::uint32_t LongestTime = 60000; // ms

constexpr std::pair<const char*, Config::IpMethod> IpMethods[] = {
    {"persistent", Config::IpMethod::Persistent},
    {"dhcp", Config::IpMethod::Dhcp},
    {"lla", Config::IpMethod::LinkLocal},
};

base::IpSettings readIp(JsonObject& object, base::Ipv4 defaultMask)
{
    base::IpSettings ip;
    ip.address = object.address("address").value_or(base::Ipv4());
    ip.mask = object.mask("mask").value_or(defaultMask);
    ip.gateway = object.address("gateway").value_or(base::Ipv4());
    return ip;
}

void readTexts(JsonObject& object, Config& camera)
{
    camera.manufacturer =
        object.text("manufacturer", reg::ManufacturerName.size).value_or(camera.manufacturer);
    camera.model = object.text("model", reg::ModelName.size).value_or(camera.model);
    camera.version = object.text("version", reg::DeviceVersion.size).value_or(camera.version);
    camera.info = object.text("info", reg::ManufacturerInfo.size).value_or(camera.info);
    camera.serial = object.text("serial", reg::SerialNumber.size).value_or("");
    const auto userName = object.text("userName", reg::UserDefinedName.size);
    const auto userNameBytes = object.bytes("userNameBytes", reg::UserDefinedName.size);
    if (userName && userNameBytes)
        object.fail("userNameBytes", "cannot go with \"userName\": it stands for the same");
    camera.userName = userNameBytes.value_or(userName.value_or(""));
}

void readIpConfiguration(JsonObject& object, const std::string& name, Config& camera)
{
    camera.ipMethod = object.choice<Config::IpMethod>("ipConfiguration", IpMethods).value_or(camera.ipMethod);
    camera.hasPersistentIp = object.flag("hasPersistentIp").value_or(true);
    camera.isPlugged = object.flag("plugged").value_or(true);
    const bool isPersistent = camera.ipMethod == Config::IpMethod::Persistent;
    const nlohmann::json* const persistent = object.any("persistent");
    if (persistent) {
        JsonObject stored(*persistent, name + ", persistent");
        camera.persistent = readIp(stored, camera.ip.mask);
        stored.rejectOthers();
    } else if (isPersistent) {
        camera.persistent = camera.ip;
    }
    if (!camera.hasPersistentIp && (persistent || isPersistent))
        object.fail("hasPersistentIp", "cannot be false for a camera with a persistent address");
}

void readInterfaces(JsonObject& object, Config& camera)
{
    camera.interface = object.number("interface", 0, gvcp::MaxInterfaces - 1).value_or(0);
    const unsigned count = object.number("interfaces", 1, gvcp::MaxInterfaces).value_or(camera.interface + 1);
    const auto macs = object.macs("interfaceMacs");
    if (count <= camera.interface)
        object.fail("interfaces", "must be more than \"interface\", which counts from 0");
    if (count > 1 && !macs)
        object.fail("interfaceMacs", "is missing: it lists the MAC of each of the camera's interfaces");
    if (!macs)
        return;
    if (macs->size() != count)
        object.fail("interfaceMacs", "must list " + std::to_string(count) + " MAC addresses");
    if ((*macs)[camera.interface] != camera.mac)
        object.fail("interfaceMacs", "must have \"mac\" in the place of \"interface\", counted from 0");
    if (std::set<base::MacAddress>(macs->begin(), macs->end()).size() != count)
        object.fail("interfaceMacs", "must list each MAC address once");
    camera.interfaceMacs = *macs;
}

void readTimes(JsonObject& object, Config& camera)
{
    camera.rebootTime = object.milliseconds("rebootTime", 0, LongestTime).value_or(camera.rebootTime);
    camera.dhcpTimeout = object.milliseconds("dhcpTimeout", 1, LongestTime).value_or(camera.dhcpTimeout);
    camera.probeInterval =
        object.milliseconds("probeInterval", 1, LongestTime).value_or(camera.probeInterval);
}

std::string serialFrom(const base::MacAddress& mac)
{
    std::string text = mac.toText().substr(9); // the maker's own half
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

base::MacAddress countedUp(const base::MacAddress& mac, unsigned by)
{
    base::MacAddress result = mac;
    unsigned carry = by;
    for (std::size_t i = result.bytes.size(); i-- > 0 && carry > 0; carry >>= 8) {
        carry += result.bytes[i];
        result.bytes[i] = static_cast<std::uint8_t>(carry);
    }
    return result;
}

base::MacAddress countedUp(JsonObject& object, const base::MacAddress& mac, unsigned by)
{
    const base::MacAddress result = countedUp(mac, by);
    if ((result.bytes[0] & 1) != 0)
        object.fail("repeat", "counts a MAC address up to " + result.toText() + ", which is a group's");
    return result;
}

/// Makes it the one that comes so many after its entry's first.
void countUp(JsonObject& object, Config& camera, unsigned by)
{
    camera.mac = countedUp(object, camera.mac, by);
    for (base::MacAddress& each : camera.interfaceMacs)
        each = countedUp(object, each, by);
    if (!camera.ip.address.isUnspecified())
        camera.ip.address = camera.ip.address.plus(by);
    if (!camera.persistent.address.isUnspecified())
        camera.persistent.address = camera.persistent.address.plus(by);
    camera.serial = camera.serial.empty() ? serialFrom(camera.mac) : countedUp(camera.serial, by);
    if (camera.serial.size() > reg::SerialNumber.size)
        object.fail("repeat", "counts the serial up to " + camera.serial + ", which is too long");
}

} // namespace

std::vector<Config> readCameras(const nlohmann::json& value, std::size_t index,
                                const std::filesystem::path& directory)
{
    std::string name = "cameras[" + std::to_string(index) + "]";
    JsonObject object(value, name);
    const auto mac = object.mac("mac");
    if (!mac)
        object.fail("mac", "is missing");
    name += " (" + mac->toText() + ")";
    object.setName(name);

    Config camera;
    camera.mac = *mac;
    camera.ip = readIp(object, UsualMask);
    readTexts(object, camera);
    readIpConfiguration(object, name, camera);
    readInterfaces(object, camera);
    readTimes(object, camera);
    readQuirks(object, name, camera);
    readRegisters(object, name, camera);
    readDescription(object, directory, camera);
    const unsigned repeat = object.number("repeat", 1, FarmConfig::MaxCameras).value_or(1);
    object.rejectOthers();

    std::vector<Config> cameras(repeat, camera);
    for (unsigned i = 0; i < repeat; ++i)
        countUp(object, cameras[i], i);
    return cameras;
}

} // namespace simulator
