// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "base/Ipv4.h"
#include "base/MacAddress.h"

#include <chrono>
#include <cstdint>
#include <nlohmann/json.hpp>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace simulator {

/// Reads the members of a JSON object, each at most once, and knows which ones were ever asked for. A member
/// of the wrong kind throws ConfigError, with the object's name in it; one that is not there gives nothing.
class JsonObject
{
public:
    /// Throws ConfigError when the value is no object. The value must outlive this.
    JsonObject(const nlohmann::json& value, std::string name);

    /// What errors call the object from now on.
    void setName(std::string name) { m_name = std::move(name); }

    const nlohmann::json* any(const char* member);
    const nlohmann::json* array(const char* member);
    std::optional<std::string> text(const char* member, std::size_t maxBytes);
    /// Written as hexadecimal pairs; none is 0.
    std::optional<std::string> bytes(const char* member, std::size_t maxBytes);
    std::optional<std::uint32_t> number(const char* member, std::uint32_t min, std::uint32_t max);
    std::optional<std::chrono::milliseconds> milliseconds(const char* member, std::uint32_t min,
                                                          std::uint32_t max);
    std::optional<bool> flag(const char* member);
    std::optional<double> probability(const char* member);
    std::optional<base::Ipv4> address(const char* member);
    std::optional<base::Ipv4> mask(const char* member);
    std::optional<base::MacAddress> mac(const char* member);
    std::optional<std::vector<base::MacAddress>> macs(const char* member);

    /// The texts that a member may hold, and what they stand for.
    template <typename T>
    using Choices = std::span<const std::pair<const char*, T>>;

    template <typename T>
    std::optional<T> choice(const char* member, Choices<T> allowed)
    {
        const nlohmann::json* const value = any(member);
        return value ? std::optional(chosen(member, *value, allowed)) : std::nullopt;
    }

    /// Of a list of such texts; empty when the member is not there.
    template <typename T>
    std::vector<T> choices(const char* member, Choices<T> allowed)
    {
        std::vector<T> all;
        if (const nlohmann::json* const list = array(member))
            for (const nlohmann::json& value : *list)
                all.push_back(chosen(member, value, allowed));
        return all;
    }

    /// Throws ConfigError for a member that has not been asked for: a misspelt one must not pass for its
    /// default.
    void rejectOthers() const;
    [[noreturn]] void fail(const char* member, const std::string& why) const;

private:
    base::MacAddress macIn(const char* member, const nlohmann::json& value) const;

    template <typename T>
    T chosen(const char* member, const nlohmann::json& value, Choices<T> allowed) const
    {
        std::string names;
        for (const auto& [name, meaning] : allowed) {
            if (value == name)
                return meaning;
            names += (names.empty() ? "\"" : ", \"") + std::string(name) + '"';
        }
        fail(member, "must be one of " + names);
    }

    const nlohmann::json& m_value;
    std::string m_name;
    std::vector<std::string> m_asked;
};

} // namespace simulator
