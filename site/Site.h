// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "base/IpSettings.h"
#include "base/MacAddress.h"
#include "inventory/Adapter.h"
#include "inventory/Camera.h"

#include <optional>
#include <string>
#include <vector>

/// What the cameras of a line are to be, as a file says it: places, each with the camera that belongs there
/// and the settings that it is to have.
namespace site {

/// By what a place's camera is known. What is given must hold, all of it; at least one is given.
struct Match
{
    std::optional<std::string> adapter; ///< The name of the adapter that hears it.
    std::optional<std::string> serial;
    std::optional<base::MacAddress> mac;
    std::optional<std::string> userName;

    bool operator==(const Match&) const = default;
};

struct Place
{
    std::string name;
    Match match;
    std::optional<std::string> model; ///< A camera of any other is refused.
    inventory::IpMethod method = inventory::IpMethod::Static;
    base::IpSettings ip;                 ///< With IpMethod::Static; else unspecified.
    std::optional<std::string> userName; ///< Nothing: it keeps the one that it has.

    bool operator==(const Place&) const = default;
};

/// How an adapter of this computer has to be. It is never changed.
struct AdapterRule
{
    std::string name;
    std::optional<inventory::AdapterAddress> address; ///< One of those that it has.
    std::optional<unsigned> mtu;                      ///< Bytes.

    bool operator==(const AdapterRule&) const = default;
};

/// What to think of cameras that belong to no place.
enum class Unlisted
{
    Ignore,
    Warn,
    Fail
};

struct Site
{
    std::vector<AdapterRule> adapters;
    std::vector<Place> places; ///< In the order of the file; no two of one name.
    Unlisted unlisted = Unlisted::Warn;

    bool operator==(const Site&) const = default;
};

} // namespace site
