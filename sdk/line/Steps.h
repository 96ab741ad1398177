// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "gvcp/ForceIp.h"
#include "sdk/addressing/ForceIpExchange.h"
#include "sdk/line/Line.h"
#include "sdk/network/Exchange.h"

#include <functional>
#include <optional>

/// What a change waits for.
namespace sdk {

/// One command, to its end.
class Command : public Step
{
public:
    Command(Line& line, Exchange::Plan plan) : m_exchange(line.network(), line.ids(), std::move(plan)) {}

    const Exchange& exchange() const { return m_exchange; }

    void proceed() override { m_exchange.proceed(); }
    void take(const Datagram& datagram, const gvcp::AcknowledgePacket& acknowledge) override
    {
        m_exchange.take(datagram, acknowledge);
    }
    bool isOver() const override { return !m_exchange.isPending(); }
    Clock::time_point nextStep() const override { return m_exchange.nextStep(); }

private:
    Exchange m_exchange;
};

/// Waits for a camera to answer as it should.
class Search : public Step
{
public:
    using Predicate = std::function<bool(const Sighting&)>;

    /// Answers to questions from now on count; until `end`. `home` is the interface index of the adapter that
    /// heard the camera before: what others hear counts after a while only.
    Search(Line& line, const base::MacAddress& mac, unsigned home, Clock::time_point end, Predicate isWanted);

    /// The answer that was waited for.
    const std::optional<Sighting>& found() const { return m_found; }
    /// The latest of any kind.
    const std::optional<Sighting>& last() const { return m_last; }

    void proceed() override;
    void see(const Sighting& sighting) override;
    bool isOver() const override { return m_found || m_line.network().now() >= m_end; }
    Clock::time_point nextStep() const override { return std::min(m_end, m_line.looks().nextStep(m_begin)); }

private:
    Line& m_line;
    const base::MacAddress m_mac;
    const unsigned m_home;
    const Clock::time_point m_begin;
    const Clock::time_point m_end;
    const Predicate m_isWanted;
    std::optional<Sighting> m_found;
    std::optional<Sighting> m_last;
};

/// FORCEIP until the camera is found with all that it was given, or refuses. It goes out three times at most,
/// as some cameras begin to change anew with each.
class Forcing : public Step
{
public:
    /// `before` is where the camera is.
    Forcing(Line& line, const gvcp::ForceIp& wanted, const Sighting& before, unsigned home);

    const Search& search() const { return m_search; }
    /// Nothing when the camera acknowledged nothing.
    const std::optional<Exchange::Answer>& answer() const { return m_force.answer(); }
    bool isRefused() const { return answer() && answer()->status != gvcp::Status::Success; }

    void proceed() override;
    void take(const Datagram& datagram, const gvcp::AcknowledgePacket& acknowledge) override
    {
        m_force.take(datagram, acknowledge);
    }
    void see(const Sighting& sighting) override { m_search.see(sighting); }
    bool isOver() const override { return m_search.isOver() || isRefused(); }
    Clock::time_point nextStep() const override { return std::min(m_force.nextStep(), m_search.nextStep()); }

private:
    Search m_search;
    ForceIpSender m_sender;
    Exchange m_force;
};

} // namespace sdk
