// SPDX-License-Identifier: Apache-2.0
#include "site/Orders.h"

#include "base/Bytes.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace site {
namespace {

using inventory::IpMethod;

// Bits of nIpConfigCurrent.
constexpr std::uint32_t Persistent = 1;
constexpr std::uint32_t Dhcp = 2;
constexpr std::uint32_t LinkLocal = 4; ///< Is on in every camera.

constexpr std::pair<unsigned, Action> Steps[] = {
    {RZ_STEP_FORCED, Action::Force},         {RZ_STEP_STORED, Action::Store},
    {RZ_STEP_CONFIGURED, Action::Configure}, {RZ_STEP_NAMED, Action::Name},
    {RZ_STEP_RESTARTED, Action::Restart},
};

std::uint32_t bitsOf(IpMethod method)
{
    return method == IpMethod::Static ? Persistent | LinkLocal
           : method == IpMethod::Dhcp ? Dhcp | LinkLocal
                                      : LinkLocal;
}

IpMethod methodOf(std::uint32_t bits)
{
    return (bits & Persistent) != 0 ? IpMethod::Static
           : (bits & Dhcp) != 0     ? IpMethod::Dhcp
                                    : IpMethod::LinkLocal;
}

template <std::size_t Size>
void setText(char (&field)[Size], const std::string& text)
{
    std::ranges::fill(field, '\0');
    std::copy_n(text.begin(), std::min(text.size(), Size - 1), field);
}

template <std::size_t Size>
std::string textOf(const char (&field)[Size])
{
    return {field, ::strnlen(field, Size)};
}

void setMethod(RZ_CC_SETTINGS& settings, std::uint32_t bits)
{
    settings.nParts |= RZ_SETTING_METHOD;
    settings.nIpConfig = bits;
}

void setAddress(RZ_CC_SETTINGS& settings, const base::IpSettings& ip)
{
    settings.nParts |= RZ_SETTING_ADDRESS;
    settings.nIp = ip.address.number();
    settings.nSubnetMask = ip.mask.number();
    settings.nGateway = ip.gateway.number();
}

void setStored(RZ_CC_SETTINGS& settings, const base::IpSettings& ip)
{
    settings.nParts |= RZ_SETTING_STORED;
    settings.nStoredIp = ip.address.number();
    settings.nStoredMask = ip.mask.number();
    settings.nStoredGateway = ip.gateway.number();
}

void setName(RZ_CC_SETTINGS& settings, const std::string& name)
{
    settings.nParts |= RZ_SETTING_NAME;
    setText(settings.szUserDefinedName, name);
}

} // namespace

RZ_CC_DEVICE_INFO asHeard(const inventory::Camera& camera)
{
    RZ_CC_DEVICE_INFO heard = camera.record ? *camera.record : RZ_CC_DEVICE_INFO{};
    heard.nMacHigh = base::readU16(camera.mac.bytes, 0);
    heard.nMacLow = base::readU32(camera.mac.bytes, 2);
    RZ_GIGE_DEVICE_INFO& info = heard.stGigEInfo;
    // Of two methods that are switched on, the record has both; but it may be older.
    if (methodOf(info.nIpConfigCurrent) != camera.method)
        info.nIpConfigCurrent = bitsOf(camera.method);
    info.nDeviceIp = camera.ip.address.number();
    info.nDeviceSubnetMask = camera.ip.mask.number();
    info.nDeviceGateway = camera.ip.gateway.number();
    info.nNetExportIp = camera.adapterAddress.number();
    info.nNetExportIndex = camera.adapterIndex;
    setText(info.szUserDefinedName, camera.userName);
    return heard;
}

void update(RZ_CC_DEVICE_INFO& camera, const RZ_CC_SETTINGS& now)
{
    RZ_GIGE_DEVICE_INFO& info = camera.stGigEInfo;
    if ((now.nParts & RZ_SETTING_METHOD) != 0)
        info.nIpConfigCurrent = now.nIpConfig;
    if ((now.nParts & RZ_SETTING_ADDRESS) != 0) {
        info.nDeviceIp = now.nIp;
        info.nDeviceSubnetMask = now.nSubnetMask;
        info.nDeviceGateway = now.nGateway;
    }
    if ((now.nParts & RZ_SETTING_NAME) != 0)
        setText(info.szUserDefinedName, textOf(now.szUserDefinedName));
}

RZ_CC_SETTINGS toChange(const Task& task)
{
    RZ_CC_SETTINGS wanted{};
    setMethod(wanted, bitsOf(task.after.method));
    if (task.after.method == IpMethod::Static) {
        setAddress(wanted, task.after.ip);
        setStored(wanted, task.after.ip);
    }
    if (task.after.userName != task.before.userName)
        setName(wanted, task.after.userName);
    return wanted;
}

RZ_CC_SETTINGS toDetour(const Task& task)
{
    RZ_CC_SETTINGS wanted{};
    setAddress(wanted, *task.detour);
    return wanted;
}

RZ_CC_SETTINGS toReturn(const Task& task, unsigned steps)
{
    RZ_CC_SETTINGS wanted{};
    setMethod(wanted, asHeard(*task.camera).stGigEInfo.nIpConfigCurrent);
    // Others get their address anew when their method is switched on again, and only then.
    if (task.before.method == IpMethod::Static || (steps & (RZ_STEP_CONFIGURED | RZ_STEP_RESTARTED)) == 0)
        setAddress(wanted, task.before.ip);
    // Of one out of reach it is not known. What else it might be than the address that it has is not, either.
    if (task.camera->stored)
        setStored(wanted, *task.camera->stored);
    else if (task.before.method == IpMethod::Static && (steps & RZ_STEP_STORED) != 0)
        setStored(wanted, task.before.ip);
    if ((steps & RZ_STEP_NAMED) != 0)
        setName(wanted, task.before.userName);
    return wanted;
}

std::optional<Settings> settingsOf(const RZ_CC_SETTINGS& now, const Settings& before)
{
    if ((now.nParts & RZ_SETTING_ADDRESS) == 0)
        return std::nullopt;
    Settings settings = before;
    settings.ip = {base::Ipv4(now.nIp), base::Ipv4(now.nSubnetMask), base::Ipv4(now.nGateway)};
    if ((now.nParts & RZ_SETTING_METHOD) != 0)
        settings.method = methodOf(now.nIpConfig);
    if ((now.nParts & RZ_SETTING_NAME) != 0)
        settings.userName = textOf(now.szUserDefinedName);
    return settings;
}

std::vector<Action> actionsOf(unsigned steps)
{
    std::vector<Action> actions;
    for (const auto& [step, action] : Steps)
        if ((steps & step) != 0)
            actions.push_back(action);
    return actions;
}

} // namespace site
