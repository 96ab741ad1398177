// SPDX-License-Identifier: Apache-2.0
#include "doctor/Doctor.h"

#include <algorithm>
#include <map>

namespace doctor {
namespace {

using inventory::Adapter;
using inventory::AdapterAddress;
using Shown = std::string (*)(const std::string&);

constexpr std::size_t Columns = 100;

/// Findings of one kind beyond these say nothing new to a reader.
constexpr int MaxOfAKind = 10;

/// The characters of UTF-8 text.
std::size_t length(const std::string& text)
{
    return static_cast<std::size_t>(std::ranges::count_if(
        text, [](char each) { return (static_cast<unsigned char>(each) & 0xC0) != 0x80; }));
}

/// The text in lines that are wide enough to be read, each behind the indentation; the first one behind the
/// beginning, which is as wide.
std::string wrapped(const std::string& beginning, const std::string& text)
{
    const std::string indentation(length(beginning), ' ');
    std::string result;
    std::string line = beginning;
    bool isEmpty = true;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = std::min(text.find(' ', at), text.size());
        const std::string word = text.substr(at, end - at);
        at = end + 1;
        if (!isEmpty && length(line) + 1 + length(word) > Columns) {
            result += line + '\n';
            line = indentation;
            isEmpty = true;
        }
        line += (isEmpty ? "" : " ") + word;
        isEmpty = false;
    }
    return result + line + '\n';
}

std::string stateOf(const Adapter& adapter)
{
    if (!adapter.isUp)
        return "switched off";
    if (!adapter.hasCarrier)
        return "no link";
    return adapter.linkSpeed ? std::to_string(*adapter.linkSpeed) + " Mbit/s" : "unknown speed";
}

std::string addressesOf(const Adapter& adapter)
{
    std::string text;
    for (const AdapterAddress& each : adapter.addresses)
        text += (text.empty() ? "" : ", ") + each.toText();
    return text.empty() ? "no IPv4 address" : text;
}

std::string camerasIn(int count)
{
    return count == 0 ? "no camera" : std::to_string(count) + (count == 1 ? " camera" : " cameras");
}

std::string padded(const std::string& text, std::size_t width)
{
    return text + std::string(width - std::min(width, length(text)), ' ') + "  ";
}

std::string adapterLines(const inventory::Inventory& inventory, Shown shown)
{
    std::map<unsigned, int> counts;
    for (const inventory::Camera& camera : inventory.cameras)
        ++counts[camera.adapterIndex];
    std::size_t nameWidth = 0;
    std::size_t addressWidth = 0;
    std::size_t stateWidth = 0;
    for (const Adapter& adapter : inventory.adapters) {
        nameWidth = std::max(nameWidth, length(shown(adapter.name)));
        addressWidth = std::max(addressWidth, length(addressesOf(adapter)));
        stateWidth = std::max(stateWidth, length(stateOf(adapter)));
    }
    std::string text;
    for (const Adapter& adapter : inventory.adapters)
        text += padded(shown(adapter.name), nameWidth) + padded(addressesOf(adapter), addressWidth) +
                padded(stateOf(adapter), stateWidth) + "MTU " + std::to_string(adapter.mtu) + "  " +
                camerasIn(counts[adapter.index]) + '\n';
    return text;
}

const char* nameOf(Severity severity)
{
    return severity == Severity::Error ? "ERROR" : severity == Severity::Warning ? "WARNING" : "NOTE";
}

std::string paragraph(const Finding& finding, Shown shown)
{
    std::string text = std::string("\n") + nameOf(finding.severity) + "  " + finding.id +
                       (finding.adapterName.empty() ? "" : " on " + shown(finding.adapterName)) + '\n';
    text += wrapped("  ", shown(base::english(finding.text)));
    if (!finding.reason.empty())
        text += wrapped("  Why: ", shown(base::english(finding.reason)));
    if (!finding.repair.empty())
        text += "  To repair it, type as root:\n";
    // As they are: a shell takes them so, and no device's text is among them.
    for (const std::string& command : finding.repair)
        text += "      " + command + '\n';
    return text;
}

} // namespace

std::string page(const Diagnosis& diagnosis, Shown shown)
{
    std::string text = adapterLines(diagnosis.inventory, shown);
    std::map<std::pair<Severity, std::string>, int> counts;
    for (const Finding& finding : diagnosis.findings)
        if (++counts[{finding.severity, finding.id}] <= MaxOfAKind)
            text += paragraph(finding, shown);
    for (const auto& [kind, count] : counts)
        if (count > MaxOfAKind)
            text += '\n' + wrapped("", std::string(nameOf(kind.first)) + "  " + kind.second + ": " +
                                           std::to_string(count - MaxOfAKind) +
                                           " more like those above; name a camera's MAC address to see "
                                           "what is found about it, or ask for all of them with --json.");
    return text;
}

} // namespace doctor
