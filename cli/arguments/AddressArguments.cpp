// SPDX-License-Identifier: Apache-2.0
#include "cli/arguments/AddressArguments.h"

#include "base/AddressRules.h"
#include "cli/arguments/Arguments.h"
#include "cli/session/Failure.h"
#include "cli/text/DisplayText.h"

namespace cli {
namespace {

using namespace base;

void require(const std::optional<Sentence>& why)
{
    if (why)
        throw Failure(ExitStatus::WrongArguments, displayText(why->english()));
}

GivenIpv4 parse(const std::string& option, const std::string& text)
{
    require(whyNoIpv4(option, text));
    return {option, *Ipv4::parse(text)};
}

} // namespace

MacAddress parseMacAddress(const std::string& text)
{
    require(whyNoCamera("MAC", text));
    return *MacAddress::parse(text);
}

IpSettings parseIpSettings(const Arguments& arguments)
{
    const GivenIpv4 address = parse("--ip", arguments.options.at("--ip"));
    const GivenIpv4 mask = parse("--mask", arguments.options.at("--mask"));
    const GivenIpv4 gateway =
        parse("--gateway", arguments.has("--gateway") ? arguments.options.at("--gateway") : "0.0.0.0");

    require(whyNoMask(mask));
    require(whyNoHostOf(address, mask.address));
    require(whyNoGateway(gateway, address, mask));
    return {address.address, mask.address, gateway.address};
}

} // namespace cli
