// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "sdk/network/Network.h"
#include "sdk/network/RequestIds.h"

#include <map>
#include <optional>

namespace sdk {

/// Asks all cameras who they are, for all who wait for one to appear: one question serves them together,
/// since every camera answers it.
class Looks
{
public:
    Looks(Network& network, RequestIds& ids) : m_network(network), m_ids(ids) {}

    /// Asks, if that is due for somebody who has been waiting since then.
    void proceed(Clock::time_point since);
    Clock::time_point nextStep(Clock::time_point since) const;

    /// When the question with this id was asked; nothing for an id that is none's.
    std::optional<Clock::time_point> timeOf(std::uint16_t id) const;

private:
    Network& m_network;
    RequestIds& m_ids;
    std::optional<Clock::time_point> m_last;
    std::map<std::uint16_t, Clock::time_point> m_times; ///< Of those that may still be answered.
};

} // namespace sdk
