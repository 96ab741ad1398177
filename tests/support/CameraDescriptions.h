// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

/// Descriptions in the words of real cameras' ones: each way in which they say the same thing, and whole
/// files made up of such ways.
namespace descriptions {

using Registers = std::vector<std::pair<std::uint32_t, std::uint32_t>>; ///< Address and value, big-endian.

/// The booleans GevCurrentIPConfigurationPersistentIP and GevCurrentIPConfigurationDHCP.
struct Modes
{
    const char* name; ///< For tests, as in the rest.
    std::string nodes;
    Registers registers; ///< Makers' ones, with the values at which the booleans can be used.
};
const std::vector<Modes>& allModes();

/// The command DeviceReset.
struct Reset
{
    const char* name;
    std::string nodes;
    std::uint32_t address;
    std::uint32_t written; ///< The bits that it sets, as they stand in the camera, big-endian.
    std::uint32_t field;   ///< The bits that it writes at all.
    bool isWriteOnly;
};
const std::vector<Reset>& allResets();

/// The user-defined name DeviceUserID.
struct Name
{
    const char* name;
    std::string nodes;
    bool isRegister; ///< For who writes it; else a String.
    bool isWritable;
};
const std::vector<Name>& allNames();

/// The whole file of these nodes, by version 1.0 ("0") or 1.1 ("1") of the format; filled up with other
/// features to the size (bytes) or a little more.
std::string file(const std::string& nodes, const std::string& schemaMinor = "1", std::size_t size = 0,
                 const std::string& ofPort = {});

} // namespace descriptions
