// SPDX-License-Identifier: Apache-2.0
#include "site/Replacement.h"

#include "base/Utf8.h"
#include "site/Matching.h"
#include "site/ReadSite.h"
#include "site/Yaml.h"
#include "site/YamlText.h"

#include <algorithm>

namespace site {
namespace {

using base::Sentence;
using inventory::Camera;
using Verdict = Replacement::Verdict;

Replacement refusal(Verdict verdict, Sentence reason)
{
    Replacement replacement;
    replacement.verdict = verdict;
    replacement.reason.push_back(std::move(reason));
    return replacement;
}

Place& placeIn(Site& site, const std::string& name)
{
    return *std::ranges::find(site.places, name, &Place::name);
}

bool hasSettingsOf(const Place& place, const Camera& camera)
{
    return camera.method == place.method &&
           (place.method != inventory::IpMethod::Static || camera.ip == place.ip) &&
           (!place.userName || camera.userName == *place.userName);
}

/// Whether it is known by nothing that goes away with it.
bool isByAdapterAlone(const Match& match)
{
    return match.adapter && !match.serial && !match.mac && !match.userName;
}

/// Whether it is the place's camera, on whatever adapter, and not one that was put there in its stead.
bool isAt(const Place& place, const Candidate& candidate)
{
    const Camera& camera = *candidate.camera;
    if (place.match.mac)
        return *place.match.mac == camera.mac;
    if (place.match.serial)
        return *place.match.serial == camera.serial;
    return matches(place.match, candidate) &&
           (!isByAdapterAlone(place.match) || hasSettingsOf(place, camera));
}

bool isOthers(const Site& site, const Place& place, const Candidate& candidate)
{
    return std::ranges::any_of(site.places, [&](const Place& each) {
        return each.name != place.name && matches(each.match, candidate);
    });
}

Sentence nobody(const Place& place, const std::vector<const Candidate*>& ofOtherModels)
{
    if (!ofOtherModels.empty())
        return {TRANSLATABLE("Sentence",
                             "The camera %1 belongs to no place, but is not of the model %2, which "
                             "belongs here. Put such a one in its place, or correct the file."),
                {textOf(*ofOtherModels.front()->camera), *place.model}};
    if (place.match.adapter)
        return {TRANSLATABLE("Sentence",
                             "On the adapter %1 no camera answers that belongs to no place. Plug the "
                             "new one in, and give it the time to start."),
                {*place.match.adapter}};
    return {TRANSLATABLE("Sentence",
                         "No camera answers that belongs to no place. Plug the new one in, and give "
                         "it the time to start."),
            {}};
}

Sentence several(const std::vector<const Candidate*>& newcomers)
{
    constexpr std::size_t enough = 8;
    std::string names;
    for (std::size_t i = 0; i < std::min(newcomers.size(), enough); ++i)
        names += (i == 0 ? "" : ", ") + textOf(*newcomers[i]->camera);
    return {TRANSLATABLE("Sentence",
                         "%1 cameras could be the new one: %2. Unplug all but that one, or say in the "
                         "file where the others belong."),
            {std::to_string(newcomers.size()), names + (newcomers.size() > enough ? " ..." : "")}};
}

/// The bytes of a value as the text has it; empty when it is no text in one line.
std::string_view writtenValue(std::string_view text, const YamlNode& node)
{
    const std::string_view rest = text.substr(node.spot.offset);
    const std::string_view line = rest.substr(0, rest.find_first_of("\r\n"));
    if (node.kind == YamlNode::Kind::Plain)
        return line.starts_with(node.text) ? line.substr(0, node.text.size()) : std::string_view();
    const char quote = line.empty() ? '\0' : line.front();
    if (quote != '"' && quote != '\'')
        return {};
    for (std::size_t i = 1; i < line.size(); ++i) {
        const bool isTwo =
            i + 1 < line.size() && (quote == '"' ? line[i] == '\\' : line.substr(i, 2) == "''");
        if (isTwo)
            ++i;
        else if (line[i] == quote)
            return line.substr(0, i + 1);
    }
    return {};
}

/// Letters and digits, behind a digit: a serial number or MAC that means nothing else to readSite().
bool isNumberLike(std::string_view value)
{
    constexpr std::string_view digits = "0123456789";
    constexpr std::string_view all = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz_.-:";
    return !value.empty() && digits.find(value.front()) != std::string_view::npos && value.back() != ':' &&
           value.find_first_not_of(all) == std::string_view::npos;
}

/// In the quotes that were there, if any, as far as the value can stand in them.
std::string valueLike(std::string_view written, const std::string& value)
{
    const bool isSimple = isNumberLike(value) || yamlText(value) == value || base::MacAddress::parse(value);
    if (!isSimple || written.front() == '"')
        return inDoubleQuotes(value);
    return written.front() == '\'' ? "'" + value + "'" : value;
}

const YamlNode* memberOf(const YamlNode* node, std::string_view name)
{
    if (!node)
        return nullptr;
    const auto found = std::ranges::find(node->members, name,
                                         [](const auto& each) { return std::string_view(each.name.text); });
    return found == node->members.end() ? nullptr : &found->value;
}

struct Edit
{
    std::size_t offset = 0;
    std::size_t size = 0;
    std::string value;
};

Edit editOf(std::string_view text, const YamlNode& node, const std::string& value)
{
    const std::string_view written = writtenValue(text, node);
    if (written.empty() || !base::isUtf8(value))
        throw SiteError(
            node.spot.line, node.spot.column,
            {TRANSLATABLE("Sentence", "this value cannot be replaced by \"%1\"; write it in one line, or "
                                      "replace it by hand"),
             {value}});
    return {node.spot.offset, written.size(), valueLike(written, value)};
}

} // namespace

Replacement findReplacement(const Site& site, const std::string& place, const inventory::Inventory& inventory)
{
    Replacement replacement;
    replacement.site = site;
    Place& wanted = placeIn(replacement.site, place);

    const std::vector<Candidate> candidates = candidatesOf(inventory);
    std::vector<const Candidate*> newcomers;
    std::vector<const Candidate*> ofOtherModels;
    for (const Candidate& each : candidates) {
        if (isAt(wanted, each))
            return refusal(
                Verdict::StillThere,
                {TRANSLATABLE("Sentence", "The camera %1 is at this place and answers; only one that is "
                                          "silent is replaced."),
                 {textOf(*each.camera)}});
        if (isOthers(site, wanted, each) ||
            (wanted.match.adapter && !each.adapters.contains(*wanted.match.adapter)))
            continue;
        const bool isOfModel = !wanted.model || *wanted.model == each.camera->model;
        (isOfModel ? newcomers : ofOtherModels).push_back(&each);
    }
    if (newcomers.empty())
        return refusal(Verdict::NobodyThere, nobody(wanted, ofOtherModels));
    if (newcomers.size() > 1)
        return refusal(Verdict::SeveralThere, several(newcomers));

    replacement.verdict = Verdict::Found;
    replacement.newcomer = *newcomers.front()->camera;
    // By its name the file knows the camera of this place, from now on the new one.
    if (wanted.match.userName && !wanted.userName)
        wanted.userName = wanted.match.userName;
    wanted.match = {};
    wanted.match.mac = replacement.newcomer->mac;
    return replacement;
}

Plan planFor(const Replacement& replacement, const std::string& place, inventory::Inventory inventory)
{
    const auto wanted = std::ranges::find(replacement.site.places, place, &Place::name);
    std::erase_if(inventory.neighbours,
                  [&wanted](const inventory::Neighbour& each) { return each.address == wanted->ip.address; });
    return makePlan(replacement.site, inventory, {place});
}

std::string withNewcomer(std::string_view text, const std::string& place, const Camera& newcomer)
{
    Site wanted = readSite(text);
    Match& match = placeIn(wanted, place).match;
    const YamlNode root = readYaml(text);
    const YamlNode* const node = memberOf(memberOf(memberOf(&root, "cameras"), place), "match");

    std::vector<Edit> edits;
    if (match.serial && *match.serial != newcomer.serial)
        edits.push_back(editOf(text, *memberOf(node, "serial"), newcomer.serial));
    if (match.mac && *match.mac != newcomer.mac)
        edits.push_back(editOf(text, *memberOf(node, "mac"), newcomer.mac.toText()));
    std::ranges::sort(edits, std::greater(), &Edit::offset);
    std::string result(text);
    for (const Edit& each : edits)
        result.replace(each.offset, each.size, each.value);

    if (match.serial)
        match.serial = newcomer.serial;
    if (match.mac)
        match.mac = newcomer.mac;
    if (readSite(result) != wanted)
        throw SiteError(
            node->spot.line, node->spot.column,
            {TRANSLATABLE("Sentence", "the file cannot be rewritten here; correct it by hand"), {}});
    return result;
}

} // namespace site
