// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tests/support/NetworkLab.h"

#include <memory>
#include <string>
#include <vector>

/// A machine with its adapters, and the switches and cameras behind them.
class Site
{
public:
    /// Gives the host an adapter on a switch of its own.
    lab::Switch& addAdapter(const std::string& interface, const std::string& address);

    /// Puts cameras on a switch; `cameras` are the elements of a farm's JSON array.
    lab::Farm& addCameras(lab::Switch& network, const std::string& cameras);

    /// 0, 1 or 2 on all of the host's adapters.
    void setReversePathFilter(int mode);

    /// Drops what comes in, but for answers to what went out.
    void raiseFirewall();

    const lab::Namespace& host() const { return m_host; }
    /// Another machine, without adapters at first.
    const lab::Namespace& router() const { return m_router; }

private:
    lab::Namespace m_host;
    lab::Namespace m_router;
    std::vector<std::unique_ptr<lab::Switch>> m_switches;
    std::vector<std::unique_ptr<lab::Farm>> m_farms;
};

/// The MAC address of camera 0 to 255 where they are counted up from 02:00:00:00:01:00.
std::string macOf(int camera);
