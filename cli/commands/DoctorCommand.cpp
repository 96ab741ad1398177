// SPDX-License-Identifier: Apache-2.0
#include "cli/arguments/AddressArguments.h"
#include "cli/commands/Command.h"
#include "cli/session/Failure.h"
#include "cli/session/Session.h"
#include "cli/text/DisplayText.h"
#include "cli/text/Json.h"
#include "doctor/Doctor.h"

#include <algorithm>
#include <map>
#include <ostream>
#include <system_error>

namespace cli {
namespace {

using doctor::Diagnosis;
using doctor::Finding;
using doctor::Severity;

const char* nameOf(Severity severity)
{
    return severity == Severity::Error ? "error" : severity == Severity::Warning ? "warning" : "note";
}

Json adaptersJson(const inventory::Inventory& inventory)
{
    std::map<unsigned, int> cameras;
    for (const inventory::Camera& camera : inventory.cameras)
        ++cameras[camera.adapterIndex];
    auto array = Json::array();
    for (const inventory::Adapter& adapter : inventory.adapters) {
        auto addresses = Json::array();
        for (const inventory::AdapterAddress& each : adapter.addresses)
            addresses.push_back(each.toText());
        array.push_back({{"Name", adapter.name},
                         {"Addresses", addresses},
                         {"LinkSpeed", orNull(adapter.linkSpeed)},
                         {"Mtu", adapter.mtu},
                         {"Cameras", cameras[adapter.index]}});
    }
    return array;
}

Json findingsJson(const std::vector<Finding>& findings)
{
    auto array = Json::array();
    for (const Finding& finding : findings)
        array.push_back({{"Id", finding.id},
                         {"Severity", nameOf(finding.severity)},
                         {"AdapterName", orNull(finding.adapterName)},
                         {"GevMACAddress", orNull(finding.camera)},
                         {"Text", base::english(finding.text)},
                         {"Reason", base::english(finding.reason)},
                         {"Repair", finding.repair}});
    return array;
}

std::string diagnosisJson(const Diagnosis& diagnosis)
{
    const Json object{{"Adapters", adaptersJson(diagnosis.inventory)},
                      {"Findings", findingsJson(diagnosis.findings)}};
    return jsonText(object);
}

/// What there is to say of a MAC that no camera has: who else is there, and whether a device has it.
std::string notFound(const base::MacAddress& mac, const Diagnosis& diagnosis)
{
    std::string text = "no camera that answered has the MAC address " + mac.toText();
    for (const Finding& finding : diagnosis.findings)
        if (finding.camera == mac)
            text += "; " + finding.id + ": " + displayText(base::english(finding.text)) + " " +
                    displayText(base::english(finding.reason));
    const auto& cameras = diagnosis.inventory.cameras;
    text += cameras.empty() ? "; no camera answered at all" : "; found:";
    constexpr std::size_t enough = 50;
    for (std::size_t i = 0; i < std::min(cameras.size(), enough); ++i)
        text += "\n    " + cameras[i].mac.toText() + "  " + displayText(cameras[i].model) + "  " +
                cameras[i].ip.address.toText();
    if (cameras.size() > enough)
        text += "\n    and " + std::to_string(cameras.size() - enough) + " more";
    return text;
}

Diagnosis examine()
{
    try {
        return doctor::examine();
    } catch (const std::system_error& error) {
        throw Failure(ExitStatus::Failed,
                      "the networks cannot be looked at: " + displayText(std::string(error.what())));
    }
}

/// "2 errors, 1 warning"; empty without any.
std::string countOf(const std::vector<Finding>& findings)
{
    std::string text;
    for (const Severity severity : {Severity::Error, Severity::Warning}) {
        const auto count = std::ranges::count(findings, severity, &Finding::severity);
        if (count > 0)
            text += (text.empty() ? "" : ", ") + std::to_string(count) + " " + nameOf(severity) +
                    (count == 1 ? "" : "s");
    }
    return text;
}

void diagnose(const Arguments& arguments, Session& session)
{
    std::optional<base::MacAddress> mac;
    if (!arguments.operands.empty())
        mac = parseMacAddress(arguments.operands[0]);
    if (session.interactive)
        session.err << "Looking at the networks, which takes five seconds ...\n" << std::flush;
    Diagnosis diagnosis = examine();
    if (mac) {
        std::optional<Diagnosis> about = doctor::aboutCamera(diagnosis, *mac);
        if (!about)
            throw Failure(ExitStatus::NoSuchCamera, notFound(*mac, diagnosis));
        diagnosis = std::move(*about);
    }
    session.out << (arguments.has("--json") ? diagnosisJson(diagnosis)
                                            : doctor::page(diagnosis, &displayText))
                << std::flush;
    const inventory::Inventory& inventory = diagnosis.inventory;
    if (inventory.unlisted > 0)
        session.err << "note: " << inventory.unlisted
                    << " more cameras answered than can be told apart from a flood of forged ones\n";
    if (!inventory.notSearched.empty())
        throw Failure(ExitStatus::Failed, "findings may be missing, as not all networks were searched (" +
                                              displayText(inventory.notSearched) + ")");
    if (const std::string count = countOf(diagnosis.findings); !count.empty())
        throw Failure(ExitStatus::Failed, "found: " + count);
}

} // namespace

Command doctorCommand()
{
    return {
        "doctor",
        "[MAC] [--json]",
        "tells why a camera is missing or not right, and what repairs it",
        R"(Looks at all networks of this computer for five seconds, and tells what is wrong there, why that is known, and
the commands that repair it, which root can type as they stand. Changes nothing by itself. First comes a line for each
network adapter; then what was found, the worst first: errors, warnings and notes. Ends with 1 when there are errors or
warnings. Root is told more: which rules of a firewall keep cameras away, and whose process holds one.

  MAC                  tells only what is about the camera with this MAC address
  --json               prints an object with Adapters and Findings

errors:
  host-address         a camera has this computer's address
  duplicate-address    a camera has the address of another camera or of another device
  outside-subnet       a camera's address does not fit the adapter that hears it
  no-address           an adapter that hears cameras has no IPv4 address; a warning when it hears none
warnings:
  adapter-down, no-link
                       an adapter is switched off, or has no cable; a note when it has no IPv4 address
  overlapping-adapters two adapters are in one subnet
  no-listener          the program that hears all cameras does not work
  reverse-path-filter, firewall
                       this computer keeps a camera's answers from its programs
  no-dhcp-server       a camera asks for an address by DHCP, and none answers it
  not-stored           a camera has another address after its next restart
  slow-link            a camera's link is below 1000 Mbit/s, or its adapter is slower than the camera
  lossy-network        a camera did not get, or not answer, all that it was asked
  in-use-for-ever      a camera may stay in use though its application is gone
notes:
  in-use               an application holds a camera
  silent-device        a device looks for an address and is no camera, or none that answers; a warning when it asks
                       again and again
  container            only network adapters made by software are seen; a warning when no camera is heard
)",
        {{"MAC"}, {{"--json", {}}}, 1},
        diagnose,
    };
}

} // namespace cli
