// SPDX-License-Identifier: Apache-2.0
#include "cli/commands/SetRequest.h"

#include "base/UserName.h"
#include "cli/arguments/AddressArguments.h"
#include "cli/arguments/Arguments.h"
#include "cli/text/DisplayText.h"

namespace cli {
namespace {

std::optional<IpConfigType> parseType(const Arguments& arguments)
{
    constexpr std::pair<const char*, IpConfigType> ways[] = {{"--static", IpConfigType::Static},
                                                             {"--dhcp", IpConfigType::Dhcp},
                                                             {"--lla", IpConfigType::LinkLocal}};
    std::optional<IpConfigType> given;
    for (const auto& [option, type] : ways) {
        if (!arguments.has(option))
            continue;
        if (given)
            refuseArguments("--static, --dhcp and --lla exclude each other; one is allowed");
        given = type;
    }
    return given;
}

base::IpSettings parseStaticSettings(const Arguments& arguments)
{
    for (const char* option : {"--ip ADDRESS", "--mask MASK"})
        if (!arguments.has(std::string(option).substr(0, std::string(option).find(' '))))
            refuseArguments(std::string(option) + " is missing, which --static needs");
    return parseIpSettings(arguments);
}

QString parseUserName(const std::string& text)
{
    if (const auto why = base::whyNoUserName("--user-id", text))
        refuseArguments(displayText(why->english()));
    return QString::fromStdString(text);
}

bool hasAddressAsAsked(const Camera& camera, const SetRequest& request)
{
    switch (*request.type) {
    case IpConfigType::Static:
        return camera.settings == request.settings;
    case IpConfigType::Dhcp:
        return !camera.settings.address.isUnspecified();
    case IpConfigType::LinkLocal:
        break;
    }
    return camera.settings.address.isLinkLocal();
}

std::string difference(const std::string& asked, const std::string& reported)
{
    return "asked for " + asked + "; it reports " + reported;
}

std::string quoted(const QString& name)
{
    return '"' + displayText(name) + '"';
}

} // namespace

SetRequest parseSetRequest(const Arguments& arguments)
{
    SetRequest request;
    request.mac = parseMacAddress(arguments.operands[0]);
    request.type = parseType(arguments);
    if (request.isStatic()) {
        request.settings = parseStaticSettings(arguments);
    } else {
        for (const char* option : {"--ip", "--mask", "--gateway"})
            if (arguments.has(option))
                refuseArguments(std::string(option) + " goes with --static only");
    }
    if (arguments.has("--user-id"))
        request.userName = parseUserName(arguments.options.at("--user-id"));
    if (!request.type && !request.userName)
        refuseArguments("nothing is to change; --static, --dhcp, --lla or --user-id is needed");
    return request;
}

QDevice changed(QDevice device, const SetRequest& request)
{
    if (request.type)
        device.m_strIpConfigType = ToText(*request.type);
    if (request.isStatic()) {
        device.m_strIpAddress = QString::fromStdString(request.settings.address.toText());
        device.m_strSubnetMask = QString::fromStdString(request.settings.mask.toText());
        device.m_strDefaultGateway = QString::fromStdString(request.settings.gateway.toText());
    }
    if (request.userName)
        device.m_strUserDefinedName = *request.userName;
    return device;
}

std::string addressingDifference(const Camera& camera, const SetRequest& request)
{
    if (!request.type || (camera.type == request.type && hasAddressAsAsked(camera, request)))
        return {};
    return difference(describeAddressing(request), describeAddressing(camera));
}

std::string nameDifference(const Camera& camera, const SetRequest& request)
{
    if (!request.userName || camera.device.m_strUserDefinedName == *request.userName)
        return {};
    return difference("the user name " + quoted(*request.userName),
                      quoted(camera.device.m_strUserDefinedName));
}

std::string differences(const Camera& camera, const SetRequest& request)
{
    const std::string addressing = addressingDifference(camera, request);
    const std::string name = nameDifference(camera, request);
    return addressing + (addressing.empty() || name.empty() ? "" : "; ") + name;
}

std::string describeAddressing(const SetRequest& request)
{
    const std::string type = displayText(ToText(*request.type));
    switch (*request.type) {
    case IpConfigType::Static:
        return type + ", " + describe(request.settings);
    case IpConfigType::Dhcp:
        return type + " with an address";
    case IpConfigType::LinkLocal:
        break;
    }
    return type + " with an address that begins with 169.254";
}

} // namespace cli
