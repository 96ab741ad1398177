// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tests/cli/AtOnce.h"
#include "tests/network/Site.h"

#include <map>
#include <nlohmann/json.hpp>
#include <set>
#include <string>
#include <vector>

/// The command as it is run on a host, and what it printed.
class Visit
{
public:
    /// `user` is a program that runs the command, with its arguments.
    explicit Visit(const Site& site, const std::vector<std::string>& more = {},
                   const std::vector<std::string>& user = {});

    /// "outside-subnet eth0 02:00:00:00:01:02" for each finding, without what is not said of it; that all
    /// adapters of a test are made by software is left out.
    std::multiset<std::string> found() const;

    /// The one with that id about that camera or adapter, or the only one with that id; throws without one.
    const nlohmann::json& finding(const std::string& id, const std::string& about = {}) const;

    int status() const { return m_output.status; }
    const std::string& complaint() const { return m_output.standardError; }
    const nlohmann::json& object() const { return m_object; }

private:
    lab::Output m_output;
    nlohmann::json m_object;
};

/// Types the repairs of these findings as they are printed, in a shell on the host whose PATH has the
/// program: those about one camera or adapter one after the other, the others meanwhile. The calling test
/// fails when one of them does not work.
void repair(const Site& site, const std::vector<nlohmann::json>& findings);
