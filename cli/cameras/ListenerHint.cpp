// SPDX-License-Identifier: Apache-2.0
#include "cli/cameras/ListenerHint.h"

#include "doctor/ListenerFault.h"

#include <cctype>

namespace cli {
namespace {

/// As the part of a longer sentence.
std::string continued(base::Sentence sentence)
{
    char& first = sentence.format.front();
    first = static_cast<char>(std::tolower(static_cast<unsigned char>(first)));
    return sentence.english();
}

std::string commandOf(const doctor::ListenerFault& fault)
{
    std::string line;
    for (const std::string& command : fault.repair)
        line += (line.empty() ? "sudo " : " && sudo ") + command;
    return line;
}

} // namespace

std::string listenerHint(const ListenerReport& report)
{
    const auto fault = doctor::findListenerFault(static_cast<inventory::Listener>(report.state),
                                                 report.strProgram.toStdString());
    if (!fault)
        return {};
    const std::string text =
        "note: cameras outside this computer's subnets may be missing, because " + continued(fault->reason);
    return fault->repair.empty()
               ? text + "\n"
               : text + " " + fault->purpose.english() + ":\n    " + commandOf(*fault) + "\n";
}

std::string listenerDoubt(const ListenerReport& report)
{
    return report.state == ListenerState::Hears
               ? ""
               : "as the listener has not its privilege, a camera outside the subnet may not be heard";
}

static_assert(static_cast<int>(ListenerState::Hears) == static_cast<int>(inventory::Listener::Hears));
static_assert(static_cast<int>(ListenerState::Missing) == static_cast<int>(inventory::Listener::Missing));
static_assert(static_cast<int>(ListenerState::Forbidden) == static_cast<int>(inventory::Listener::Forbidden));
static_assert(static_cast<int>(ListenerState::Unprivileged) ==
              static_cast<int>(inventory::Listener::Unprivileged));
static_assert(static_cast<int>(ListenerState::Failed) == static_cast<int>(inventory::Listener::Failed));

} // namespace cli
