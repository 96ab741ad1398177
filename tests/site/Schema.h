// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <map>
#include <nlohmann/json.hpp>
#include <regex>
#include <stdexcept>
#include <string>

/// As much of JSON Schema, draft 7, as the schema of site files uses.
namespace schema {

using nlohmann::json;

inline bool isOfType(const json& value, const std::string& type)
{
    return type == value.type_name() || (type == "integer" && value.is_number_integer());
}

/// Each pattern is compiled once, which takes longer than all else here.
inline bool hasPattern(const std::string& text, const std::string& pattern)
{
    static std::map<std::string, std::regex> compiled;
    const auto [entry, isNew] = compiled.try_emplace(pattern);
    if (isNew)
        entry->second = std::regex(pattern);
    return std::regex_search(text, entry->second);
}

inline bool fits(const json& value, const json& schema, const json& root);

/// Of an object, that one member.
inline bool memberFits(const std::string& name, const json& value, const json& schema, const json& root)
{
    bool isKnown = false;
    if (schema.contains("properties") && schema["properties"].contains(name)) {
        isKnown = true;
        if (!fits(value, schema["properties"][name], root))
            return false;
    }
    if (schema.contains("patternProperties"))
        for (const auto& [pattern, each] : schema["patternProperties"].items())
            if (hasPattern(name, pattern)) {
                isKnown = true;
                if (!fits(value, each, root))
                    return false;
            }
    if (schema.contains("propertyNames") && !fits(name, schema["propertyNames"], root))
        return false;
    return isKnown || !schema.contains("additionalProperties") ||
           fits(value, schema["additionalProperties"], root);
}

inline bool keywordFits(const std::string& keyword, const json& rule, const json& value, const json& schema,
                        const json& root)
{
    const auto fitsRule = [&](const json& each) { return fits(value, each, root); };
    if (keyword == "$ref")
        return fits(value, root.at(json::json_pointer(rule.get<std::string>().substr(1))), root);
    if (keyword == "type")
        return rule.is_array()
                   ? std::ranges::any_of(rule, [&](const json& type) { return isOfType(value, type); })
                   : isOfType(value, rule);
    if (keyword == "const")
        return value == rule;
    if (keyword == "enum")
        return std::ranges::find(rule, value) != rule.end();
    if (keyword == "pattern")
        return !value.is_string() || hasPattern(value.get<std::string>(), rule.get<std::string>());
    if (keyword == "minLength")
        return !value.is_string() || value.get<std::string>().size() >= rule;
    if (keyword == "maxLength")
        return !value.is_string() || value.get<std::string>().size() <= rule;
    if (keyword == "minimum")
        return !value.is_number() || value >= rule;
    if (keyword == "maximum")
        return !value.is_number() || value <= rule;
    if (keyword == "minProperties")
        return !value.is_object() || value.size() >= rule;
    if (keyword == "required")
        return !value.is_object() || std::ranges::all_of(rule, [&](const json& name) {
            return value.contains(name.get<std::string>());
        });
    if (keyword == "allOf")
        return std::ranges::all_of(rule, fitsRule);
    if (keyword == "anyOf")
        return std::ranges::any_of(rule, fitsRule);
    if (keyword == "if")
        return !fitsRule(rule) || fitsRule(schema["then"]);
    for (const char* other : {"$schema", "title", "description", "definitions", "then", "properties",
                              "patternProperties", "propertyNames", "additionalProperties"})
        if (keyword == other)
            return true;
    throw std::invalid_argument("a keyword that is not judged: " + keyword);
}

inline bool fits(const json& value, const json& schema, const json& root)
{
    if (schema.is_boolean())
        return schema;
    for (const auto& [keyword, rule] : schema.items())
        if (!keywordFits(keyword, rule, value, schema, root))
            return false;
    if (value.is_object())
        for (const auto& [name, member] : value.items())
            if (!memberFits(name, member, schema, root))
                return false;
    return true;
}

} // namespace schema
