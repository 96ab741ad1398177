// SPDX-License-Identifier: Apache-2.0
#include "simulator/config/ReadRegisters.h"

#include "simulator/config/HexText.h"

#include <algorithm>

namespace simulator {

namespace {

using Register = CameraConfig::MakersRegister;

constexpr std::pair<const char*, Register::Access> Accesses[] = {
    {"RW", Register::Access::ReadWrite},
    {"RO", Register::Access::ReadOnly},
    {"WO", Register::Access::WriteOnly},
};

/// Written as in C, so that addresses can be told from a description file.
std::optional<std::uint32_t> readHexWord(JsonObject& object, const char* member, const std::string& what)
{
    const auto text = object.text(member, 10);
    const auto word = text ? parseHexWord(*text) : std::nullopt;
    if (text && !word)
        object.fail(member, what);
    return word;
}

std::optional<std::uint32_t> readAddress(JsonObject& object, const char* member)
{
    // Below are the registers of the standard.
    constexpr std::uint32_t FirstMakersRegister = 0xA000;
    const std::string what = "must be the address of a maker's register, such as \"0x00010000\"";
    const auto address = readHexWord(object, member, what);
    if (address && (*address % 4 != 0 || *address < FirstMakersRegister))
        object.fail(member, what);
    if (address && *address >= CameraConfig::DescriptionAddress &&
        *address - CameraConfig::DescriptionAddress < CameraConfig::MaxDescriptionSize)
        object.fail(member, "must not be where the description is");
    return address;
}

Register readRegister(const nlohmann::json& value, const std::string& name)
{
    JsonObject object(value, name + ", registers");
    Register one;
    const auto address = readAddress(object, "address");
    one.value = readHexWord(object, "value", "must be 32 bits such as \"0xA5A50000\"").value_or(one.value);
    one.access = object.choice<Register::Access>("access", Accesses).value_or(one.access);
    object.rejectOthers();
    if (!address)
        object.fail("address", "is missing");
    one.address = *address;
    return one;
}

} // namespace

void readRegisters(JsonObject& object, const std::string& name, CameraConfig& camera)
{
    camera.resetRegister = readAddress(object, "resetRegister").value_or(camera.resetRegister);
    camera.resetMask =
        readHexWord(object, "resetMask", "must be the bits that reset the camera, such as \"0x01000000\"")
            .value_or(camera.resetMask);
    if (camera.resetMask == 0)
        object.fail("resetMask", "must have a bit that resets the camera");
    const nlohmann::json* const list = object.array("registers");
    if (!list)
        return;
    for (const nlohmann::json& value : *list) {
        const Register one = readRegister(value, name);
        const auto isSame = [&one](const Register& other) { return other.address == one.address; };
        if (std::any_of(camera.registers.begin(), camera.registers.end(), isSame))
            object.fail("registers", "lists an address twice");
        camera.registers.push_back(one);
    }
}

} // namespace simulator
