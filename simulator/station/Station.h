// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "simulator/faults/FaultPlan.h"
#include "simulator/station/BootSequence.h"
#include "simulator/station/CommandHandler.h"

#include <random>

namespace simulator {

/// A camera on the wire: its interface's ARP, ICMP echo and UDP, how it boots, and what the network or its
/// own faults do to its answers. The timer queue tells the time and must outlive this. One thread.
class Station
{
public:
    Station(const CameraConfig& config, std::uint32_t seed, TimerQueue& timers, FrameSink send);
    Station(const Station&) = delete;
    Station& operator=(const Station&) = delete;

    const base::MacAddress& mac() const { return m_camera.config().mac; }
    /// With control that has expired by now taken away.
    const Camera& camera();
    BootSequence::Phase phase() const { return m_boot.phase(); }
    bool isPlugged() const { return m_isPlugged; }
    unsigned resets() const { return m_resets; }
    /// How many requests of each kind have reached it, ignored ones too.
    const std::array<unsigned, RequestNames.size()>& counters() const { return m_counters; }

    /// A frame for its MAC, or for all.
    void receive(const Frame& frame);

    /// One that was not plugged at the start boots when it is for the first time, unless it has an address.
    void setPlugged(bool isPlugged);
    void hold(const CameraConfig::Holder& holder) { m_camera.hold(holder); }
    void release() { m_camera.release(); }
    void addFault(const Fault& fault) { m_faults.add(fault); }
    void clearFaults() { m_faults.clear(); }
    /// Takes it off the network for its reboot time.
    void reset();
    /// Tells everyone by ARP that its address is at its MAC. Whoever knew the address as another interface's
    /// believes it.
    void announceAddress();

private:
    void hear(const UdpDatagram& datagram);
    void hear(const ArpMessage& message);
    void hear(const Echo& echo);
    /// Counts the request; nothing for one that goes well.
    std::optional<Fault> meetFault(Request request);
    /// What comes after the answer to a command; `before` is what the address was when it came.
    void followUp(Camera::Effect effect, const base::IpSettings& before);
    void restartIp(std::chrono::milliseconds off);
    /// Ends whatever it is about to do on the network.
    void dropAll();
    bool isLost();
    void transmit(const Frame& frame);

    Camera m_camera;
    std::mt19937 m_random;
    TimerQueue& m_timers;
    FrameSink m_send;
    AnswerRoute m_route;
    BootSequence m_boot;
    CommandHandler m_commands;
    FaultPlan m_faults;
    std::array<unsigned, RequestNames.size()> m_counters{};
    bool m_isPlugged = false;
    bool m_hasBooted;
    unsigned m_resets = 0;
};

} // namespace simulator
