// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "site/Apply.h"
#include "site/Site.h"
#include "tests/network/Site.h"
#include "tests/support/Sanitizers.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

/// One camera of a line, and what is to become of it.
struct LineCamera
{
    std::string atFirst; ///< Members of its farm's JSON but the MAC address.
    inventory::IpMethod method = inventory::IpMethod::Static;
    std::string address; ///< With that method, of a network of 16 bits.
    std::string name;
    std::string fault; ///< What goes wrong, for a failed test.
};

/// One of so many cameras is there, where the others would be asked too much.
inline constexpr int Slowness = IsSanitized ? 4 : 1;

/// A line of cameras on one switch, whose plan is applied with little patience. What is said of each camera
/// is held against what the camera's farm says.
class AppliedLine : public testing::Test
{
protected:
    /// 256 cameras at most.
    void build(std::vector<LineCamera> cameras);

    /// Plans what to do, and does it, with a network that loses so many percent of the frames meanwhile. All
    /// cameras are there, and nothing is in the way.
    void apply(int loss = 0);

    /// What was said of each.
    const std::vector<site::Outcome>& outcomes() const { return m_outcomes; }
    /// What the farm says of it now.
    nlohmann::json shown(std::size_t camera) const;

    /// Each camera has exactly what was said of it, as planned or as before where that was said, and no two
    /// have one address.
    void judgeAll() const;
    void expectAsPlanned(std::size_t camera) const;
    /// How many ended each way, for the test's record.
    std::string tally() const;

    std::string describe(std::size_t camera) const;
    std::size_t count() const { return m_cameras.size(); }

    Site site;
    lab::Switch& network = site.addAdapter("eth0", "192.168.0.5/16");
    lab::Farm* farm = nullptr;

private:
    void judge(std::size_t camera) const;
    void expectAsBefore(std::size_t camera) const;
    void expectUntouched(std::size_t camera) const;

    site::Site m_site;
    std::vector<LineCamera> m_cameras;
    std::vector<nlohmann::json> m_before; ///< As the farm showed them when it was last applied.
    std::vector<site::Outcome> m_outcomes;
};
