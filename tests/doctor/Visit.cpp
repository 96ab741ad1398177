// SPDX-License-Identifier: Apache-2.0
#include "tests/doctor/Visit.h"

#include <gtest/gtest.h>

#include <stdexcept>

using nlohmann::json;

namespace {

lab::Output run(const Site& site, const std::vector<std::string>& more, std::vector<std::string> words)
{
    words.insert(words.end(), {PROGRAM, "doctor", "--json"});
    words.insert(words.end(), more.begin(), more.end());
    return site.host().execute(words);
}

/// Whom a repair is about.
std::string subjectOf(const json& finding)
{
    return finding["GevMACAddress"].is_null() ? finding["AdapterName"].dump()
                                              : finding["GevMACAddress"].dump();
}

} // namespace

Visit::Visit(const Site& site, const std::vector<std::string>& more, const std::vector<std::string>& user)
    : m_output(run(site, more, user)),
      m_object(json::parse(m_output.standardOutput, nullptr, false))
{
    if (m_object.is_discarded())
        throw std::runtime_error("no diagnosis: " + m_output.standardOutput + m_output.standardError);
}

std::multiset<std::string> Visit::found() const
{
    std::multiset<std::string> ids;
    for (const json& each : m_object["Findings"]) {
        std::string text = each["Id"];
        for (const char* member : {"AdapterName", "GevMACAddress"})
            if (!each[member].is_null())
                text += " " + each[member].get<std::string>();
        if (text != "container")
            ids.insert(text);
    }
    return ids;
}

const json& Visit::finding(const std::string& id, const std::string& about) const
{
    for (const json& each : m_object["Findings"])
        if (each["Id"] == id &&
            (about.empty() || each["AdapterName"] == about || each["GevMACAddress"] == about))
            return each;
    throw std::runtime_error("no finding " + id + " " + about + " in " + m_object.dump(2));
}

void repair(const Site& site, const std::vector<json>& findings)
{
    std::map<std::string, std::string> scripts;
    for (const json& finding : findings) {
        EXPECT_FALSE(finding["Repair"].empty()) << finding.dump(2);
        for (const json& line : finding["Repair"])
            scripts[subjectOf(finding)] += line.get<std::string>() + " || exit 1\n";
    }
    const std::string path = std::string("PATH=") + PROGRAM_FOLDER + ":/usr/sbin:/usr/bin:/sbin:/bin";
    std::vector<std::vector<std::string>> commands;
    for (const auto& [subject, script] : scripts)
        commands.push_back({"env", path, "sh", "-c", script});
    const auto outputs = runAtOnce(site.host(), commands);
    for (std::size_t i = 0; i < outputs.size(); ++i)
        EXPECT_EQ(outputs[i].status, 0) << commands[i].back() << outputs[i].standardError;
}
