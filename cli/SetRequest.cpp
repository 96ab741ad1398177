// SPDX-License-Identifier: Apache-2.0
#include "cli/SetRequest.h"

#include "cli/Arguments.h"
#include "cli/Cameras.h"
#include "cli/DisplayText.h"
#include "cli/Failure.h"
#include "cli/MacAddress.h"
#include "device/QDevice.h"

#include <QObject>

namespace cli {
namespace {

using Addressing = SetRequest::Addressing;

constexpr int MaxNameBytes = 15;

[[noreturn]] void refuse(const std::string& what)
{
    throw Failure(ExitStatus::WrongArguments, what + "; see --help");
}

std::optional<Addressing> parseAddressing(const Arguments& arguments)
{
    constexpr std::pair<const char*, Addressing> ways[] = {
        {"--static", Addressing::Static}, {"--dhcp", Addressing::Dhcp}, {"--lla", Addressing::LinkLocal}};
    std::optional<Addressing> given;
    for (const auto& [option, addressing] : ways) {
        if (!arguments.has(option))
            continue;
        if (given)
            refuse("--static, --dhcp and --lla exclude each other; one is allowed");
        given = addressing;
    }
    return given;
}

IpSettings parseStaticSettings(const Arguments& arguments)
{
    for (const char* option : {"--ip ADDRESS", "--mask MASK"})
        if (!arguments.has(std::string(option).substr(0, std::string(option).find(' '))))
            refuse(std::string(option) + " is missing, which --static needs");
    return parseIpSettings(arguments.options.at("--ip"), arguments.options.at("--mask"),
                           arguments.has("--gateway") ? arguments.options.at("--gateway") : "0.0.0.0");
}

QString parseUserName(const std::string& text)
{
    QString name = QString::fromStdString(text);
    if (name.toStdString() != text)
        refuse("--user-id \"" + displayText(text) + "\" is not UTF-8");
    if (text.size() > MaxNameBytes)
        refuse("--user-id \"" + displayText(text) + "\" is too long with " + std::to_string(text.size()) +
               " bytes of UTF-8; " + std::to_string(MaxNameBytes) + " are allowed");
    return name;
}

QString typeText(Addressing addressing)
{
    switch (addressing) {
    case Addressing::Static:
        return QObject::tr("Static IP");
    case Addressing::Dhcp:
        return QObject::tr("DHCP");
    case Addressing::LinkLocal:
        break;
    }
    return QObject::tr("LLA");
}

bool hasTypeAsAsked(const QDevice& camera, const SetRequest& request)
{
    return camera.m_strIpConfigType == typeText(*request.addressing);
}

bool hasAddressAsAsked(const QDevice& camera, const SetRequest& request)
{
    switch (*request.addressing) {
    case Addressing::Static:
        return reports(camera, request.settings);
    case Addressing::Dhcp:
        return settingsOf(camera).address != 0;
    case Addressing::LinkLocal:
        break;
    }
    return isLinkLocal(camera);
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
    request.macAddress = parseMacAddress(arguments.operands[0]);
    request.addressing = parseAddressing(arguments);
    if (request.addressing == Addressing::Static) {
        request.settings = parseStaticSettings(arguments);
    } else {
        for (const char* option : {"--ip", "--mask", "--gateway"})
            if (arguments.has(option))
                refuse(std::string(option) + " goes with --static only");
    }
    if (arguments.has("--user-id"))
        request.userName = parseUserName(arguments.options.at("--user-id"));
    if (!request.addressing && !request.userName)
        refuse("nothing is to change; --static, --dhcp, --lla or --user-id is needed");
    return request;
}

QDevice changed(QDevice camera, const SetRequest& request)
{
    if (request.addressing)
        camera.m_strIpConfigType = typeText(*request.addressing);
    if (request.addressing == Addressing::Static) {
        camera.m_strIpAddress = dotted(request.settings.address);
        camera.m_strSubnetMask = dotted(request.settings.mask);
        camera.m_strDefaultGateway = dotted(request.settings.gateway);
    }
    if (request.userName)
        camera.m_strUserDefinedName = *request.userName;
    return camera;
}

std::string addressingDifference(const QDevice& camera, const SetRequest& request)
{
    if (!request.addressing || (hasTypeAsAsked(camera, request) && hasAddressAsAsked(camera, request)))
        return {};
    return difference(describeAddressing(request), describeAddressing(camera));
}

std::string nameDifference(const QDevice& camera, const SetRequest& request)
{
    if (!request.userName || camera.m_strUserDefinedName == *request.userName)
        return {};
    return difference("the user name " + quoted(*request.userName), quoted(camera.m_strUserDefinedName));
}

bool mayLookForAddress(const QDevice& camera, const SetRequest& request)
{
    return hasTypeAsAsked(camera, request) && request.addressing != Addressing::Static;
}

std::string describeAddressing(const QDevice& camera)
{
    return displayText(camera.m_strIpConfigType) + ", " + describe(settingsOf(camera));
}

std::string describeAddressing(const SetRequest& request)
{
    const std::string type = displayText(typeText(*request.addressing));
    switch (*request.addressing) {
    case Addressing::Static:
        return type + ", " + describe(request.settings);
    case Addressing::Dhcp:
        return type + " with an address";
    case Addressing::LinkLocal:
        break;
    }
    return type + " with an address that begins with 169.254";
}

bool isLinkLocal(const QDevice& camera)
{
    return settingsOf(camera).address >> 16 == 0xA9FE;
}

} // namespace cli
