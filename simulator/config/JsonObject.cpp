// SPDX-License-Identifier: Apache-2.0
#include "simulator/config/JsonObject.h"

#include "simulator/config/ConfigError.h"
#include "simulator/config/HexText.h"

#include <algorithm>

namespace simulator {

JsonObject::JsonObject(const nlohmann::json& value, std::string name)
    : m_value(value),
      m_name(std::move(name))
{
    if (!value.is_object())
        throw ConfigError(m_name + ": must be an object in braces");
}

const nlohmann::json* JsonObject::any(const char* member)
{
    m_asked.emplace_back(member);
    const auto found = m_value.find(member);
    return found == m_value.end() ? nullptr : &*found;
}

const nlohmann::json* JsonObject::array(const char* member)
{
    const nlohmann::json* const value = any(member);
    if (value && !value->is_array())
        fail(member, "must be a list in brackets");
    return value;
}

std::optional<std::string> JsonObject::text(const char* member, std::size_t maxBytes)
{
    const nlohmann::json* const value = any(member);
    if (!value)
        return std::nullopt;
    if (!value->is_string() || value->get_ref<const std::string&>().size() > maxBytes)
        fail(member, "must be a text of at most " + std::to_string(maxBytes) + " bytes");
    return value->get<std::string>();
}

std::optional<std::string> JsonObject::bytes(const char* member, std::size_t maxBytes)
{
    const nlohmann::json* const value = any(member);
    if (!value)
        return std::nullopt;
    auto result = value->is_string() ? parseHexPairs(value->get_ref<const std::string&>()) : std::nullopt;
    if (!result || result->size() > maxBytes)
        fail(member, "must be 1 to " + std::to_string(maxBytes) +
                         " bytes such as \"E9 74 E9\", in hexadecimal digits, none of them 00");
    return result;
}

std::optional<std::uint32_t> JsonObject::number(const char* member, std::uint32_t min, std::uint32_t max)
{
    const nlohmann::json* const value = any(member);
    if (!value)
        return std::nullopt;
    if (!value->is_number_unsigned() || *value < min || *value > max)
        fail(member, "must be a whole number from " + std::to_string(min) + " to " + std::to_string(max));
    return value->get<std::uint32_t>();
}

std::optional<std::chrono::milliseconds> JsonObject::milliseconds(const char* member, std::uint32_t min,
                                                                  std::uint32_t max)
{
    const auto count = number(member, min, max);
    return count ? std::optional(std::chrono::milliseconds{*count}) : std::nullopt;
}

std::optional<bool> JsonObject::flag(const char* member)
{
    const nlohmann::json* const value = any(member);
    if (value && !value->is_boolean())
        fail(member, "must be true or false");
    return value ? std::optional(value->get<bool>()) : std::nullopt;
}

std::optional<double> JsonObject::probability(const char* member)
{
    const nlohmann::json* const value = any(member);
    if (!value)
        return std::nullopt;
    if (!value->is_number() || *value < 0.0 || *value > 1.0)
        fail(member, "must be a number from 0 to 1");
    return value->get<double>();
}

std::optional<base::Ipv4> JsonObject::address(const char* member)
{
    const nlohmann::json* const value = any(member);
    if (!value)
        return std::nullopt;
    const auto parsed =
        value->is_string() ? base::Ipv4::parse(value->get_ref<const std::string&>()) : std::nullopt;
    if (!parsed)
        fail(member, "must be an IPv4 address such as \"192.168.1.20\"");
    return parsed;
}

std::optional<base::Ipv4> JsonObject::mask(const char* member)
{
    const auto parsed = address(member);
    if (parsed && !parsed->isMask())
        fail(member, "must be a subnet mask such as \"255.255.255.0\": ones, then zeros");
    return parsed;
}

std::optional<base::MacAddress> JsonObject::mac(const char* member)
{
    const nlohmann::json* const value = any(member);
    return value ? std::optional(macIn(member, *value)) : std::nullopt;
}

std::optional<std::vector<base::MacAddress>> JsonObject::macs(const char* member)
{
    const nlohmann::json* const list = array(member);
    if (!list)
        return std::nullopt;
    std::vector<base::MacAddress> all;
    for (const nlohmann::json& value : *list)
        all.push_back(macIn(member, value));
    return all;
}

base::MacAddress JsonObject::macIn(const char* member, const nlohmann::json& value) const
{
    const auto parsed =
        value.is_string() ? base::MacAddress::parse(value.get_ref<const std::string&>()) : std::nullopt;
    if (!parsed || (parsed->bytes[0] & 1) != 0 || *parsed == base::MacAddress{})
        fail(member, "must be the MAC address of a single interface, such as \"00:1A:2B:00:00:01\"");
    return *parsed;
}

void JsonObject::rejectOthers() const
{
    for (const auto& item : m_value.items()) {
        if (std::find(m_asked.begin(), m_asked.end(), item.key()) != m_asked.end())
            continue;
        std::string allowed;
        for (const std::string& each : m_asked)
            allowed += (allowed.empty() ? "" : ", ") + each;
        fail(item.key().c_str(), "is unknown; known here are " + allowed);
    }
}

void JsonObject::fail(const char* member, const std::string& why) const
{
    throw ConfigError(m_name + ": \"" + member + "\" " + why);
}

} // namespace simulator
