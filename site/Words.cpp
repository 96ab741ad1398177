// SPDX-License-Identifier: Apache-2.0
#include "site/Words.h"

#include "inventory/FreeAddresses.h"

#include <algorithm>

namespace site {
namespace {

using inventory::IpMethod;

/// "192.168.10.21/24"; a mask that is none, which only a camera can have, is told as it is.
std::string addressText(const base::IpSettings& ip)
{
    const auto prefix = inventory::prefixOf(ip.mask);
    return ip.address.toText() + "/" + (prefix ? std::to_string(*prefix) : ip.mask.toText());
}

/// What is said of a method alone, with an address, and with a gateway too.
struct Formats
{
    const char* alone;
    const char* withAddress;
    const char* withGateway;
};

Formats formatsOf(IpMethod method)
{
    switch (method) {
    case IpMethod::Static:
        return {TRANSLATABLE("Sentence", "static"), TRANSLATABLE("Sentence", "static %1"),
                TRANSLATABLE("Sentence", "static %1 via %2")};
    case IpMethod::Dhcp:
        return {TRANSLATABLE("Sentence", "DHCP"), TRANSLATABLE("Sentence", "DHCP %1"),
                TRANSLATABLE("Sentence", "DHCP %1 via %2")};
    case IpMethod::LinkLocal:
        break;
    }
    return {TRANSLATABLE("Sentence", "LLA"), TRANSLATABLE("Sentence", "LLA %1"),
            TRANSLATABLE("Sentence", "LLA %1 via %2")};
}

base::Sentence switchTo(IpMethod method)
{
    switch (method) {
    case IpMethod::Static:
        return {TRANSLATABLE("Sentence", "switch to static"), {}};
    case IpMethod::Dhcp:
        return {TRANSLATABLE("Sentence", "switch to DHCP"), {}};
    case IpMethod::LinkLocal:
        break;
    }
    return {TRANSLATABLE("Sentence", "switch to LLA"), {}};
}

} // namespace

base::Sentence settingsInWords(const Settings& settings)
{
    const Formats formats = formatsOf(settings.method);
    if (settings.ip.address.isUnspecified())
        return {formats.alone, {}};
    if (settings.ip.gateway.isUnspecified())
        return {formats.withAddress, {addressText(settings.ip)}};
    return {formats.withGateway, {addressText(settings.ip), settings.ip.gateway.toText()}};
}

base::Sentence actionInWords(Action action, const Settings& after)
{
    switch (action) {
    case Action::Force:
        return {TRANSLATABLE("Sentence", "force %1"), {after.ip.address.toText()}};
    case Action::Store:
        return {TRANSLATABLE("Sentence", "store the address"), {}};
    case Action::Configure:
        return switchTo(after.method);
    case Action::Name:
        if (after.userName.empty())
            return {TRANSLATABLE("Sentence", "remove the name"), {}};
        return {TRANSLATABLE("Sentence", "rename to %1"), {after.userName}};
    case Action::Restart:
        break;
    }
    return {TRANSLATABLE("Sentence", "restart"), {}};
}

base::Sentence resultInWords(Result result)
{
    switch (result) {
    case Result::Ok:
        return {TRANSLATABLE("Sentence", "as planned"), {}};
    case Result::Changed:
        return {TRANSLATABLE("Sentence", "changed"), {}};
    case Result::WouldChange:
        return {TRANSLATABLE("Sentence", "would change"), {}};
    case Result::Failed:
        return {TRANSLATABLE("Sentence", "FAILED"), {}};
    case Result::PutBack:
        return {TRANSLATABLE("Sentence", "put back"), {}};
    case Result::Missing:
        return {TRANSLATABLE("Sentence", "missing"), {}};
    case Result::NotBegun:
        break;
    }
    return {TRANSLATABLE("Sentence", "not begun"), {}};
}

base::Sentence lossOf(const Task& task, const Outcome& outcome)
{
    const std::string mac = task.camera ? task.camera->mac.toText() : std::string();
    if (!outcome.now)
        return {TRANSLATABLE("Sentence", "%1 (%2) was not put back; what it has now is not known."),
                {task.place.name, mac}};
    const char* format =
        TRANSLATABLE("Sentence", "%1 (%2) was not put back; it has LLA now, %3, name \"%4\".");
    if (outcome.now->method == IpMethod::Static)
        format = TRANSLATABLE("Sentence", "%1 (%2) was not put back; it is static now, %3, name \"%4\".");
    else if (outcome.now->method == IpMethod::Dhcp)
        format = TRANSLATABLE("Sentence", "%1 (%2) was not put back; it has DHCP now, %3, name \"%4\".");
    return {format, {task.place.name, mac, addressText(outcome.now->ip), outcome.now->userName}};
}

std::vector<base::Sentence> summaryOf(const Plan& plan, const std::vector<Outcome>& outcomes)
{
    std::vector<base::Sentence> sentences;
    for (std::size_t i = 0; i < outcomes.size(); ++i)
        if (outcomes[i].result == Result::Failed)
            sentences.push_back(lossOf(plan.tasks[i], outcomes[i]));

    const std::string all = std::to_string(outcomes.size());
    const auto tell = [&](Result result, const char* format) {
        const auto count = std::ranges::count(outcomes, result, &Outcome::result);
        if (count > 0)
            sentences.push_back({format, {std::to_string(count), all}});
    };
    tell(Result::Failed, TRANSLATABLE("Sentence", "Failed: %1 of %2."));
    tell(Result::PutBack, TRANSLATABLE("Sentence", "Put back: %1 of %2."));
    tell(Result::Missing, TRANSLATABLE("Sentence", "Missing: %1 of %2."));
    tell(Result::NotBegun, TRANSLATABLE("Sentence", "Not begun: %1 of %2."));
    tell(Result::Changed, TRANSLATABLE("Sentence", "Changed: %1 of %2."));
    tell(Result::WouldChange, TRANSLATABLE("Sentence", "To be changed: %1 of %2."));
    if (sentences.empty())
        sentences.push_back(
            {TRANSLATABLE("Sentence", "All is as planned (%1 of %1); nothing is to be done."), {all}});
    return sentences;
}

} // namespace site
