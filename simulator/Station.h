// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "simulator/ArpClient.h"
#include "simulator/Camera.h"
#include "simulator/FaultPlan.h"

#include <random>

namespace simulator {

/// A camera on the wire: its interface's ARP, ICMP echo and UDP, how its answers find their way, and what the
/// network or its own faults do to them. Times come from the timer queue, which must
/// not run on when this is gone; one thread.
class Station
{
public:
    Station(const CameraConfig& config, std::uint32_t seed, TimerQueue& timers, FrameSink send);
    Station(const Station&) = delete;
    Station& operator=(const Station&) = delete;

    const gvcp::MacAddress& mac() const { return m_config.mac; }
    const Camera& camera() const { return m_camera; }
    bool isPlugged() const { return m_isPlugged; }
    /// How many requests of each kind have reached it, ignored ones too.
    const std::array<unsigned, RequestNames.size()>& counters() const { return m_counters; }

    /// A frame for its MAC, or for all.
    void receive(const Frame& frame);

    void setPlugged(bool isPlugged) { m_isPlugged = isPlugged; }
    void hold(const CameraConfig::Holder& holder) { m_camera.hold(holder); }
    void release() { m_camera.release(); }
    void addFault(const CameraConfig::Fault& fault) { m_faults.add(fault); }
    /// Takes it off the network for its reboot time.
    void reset();

private:
    struct Recipient
    {
        gvcp::MacAddress mac; ///< Where the command's frame came from.
        gvcp::Ipv4 address = 0;
        std::uint16_t port = 0;
    };

    void hear(const UdpDatagram& datagram);
    void hear(const ArpMessage& message);
    void hear(const Echo& echo);
    bool ignores(Request request);
    void answerDiscovery(const Camera::Answer& answer, const Recipient& to);
    void sendForged(const Camera::Answer& answer, const Recipient& to, unsigned next);
    void deliver(const Camera::Answer& answer, const Recipient& to);
    void deliverByArp(gvcp::Ipv4 nextHop, const Camera::Answer& answer, const Recipient& to);
    void deliverByBroadcast(const Camera::Answer& answer, const Recipient& to);
    void transmitTo(const gvcp::MacAddress& mac, const Camera::Answer& answer, const Recipient& to);
    void announceAddress();
    /// Runs the action later, unless the camera is reset before.
    void after(std::chrono::milliseconds delay, std::function<void()> action);
    bool isLost();
    void transmit(const Frame& frame);

    CameraConfig m_config;
    Camera m_camera;
    TimerQueue& m_timers;
    FrameSink m_send;
    ArpClient m_arp;
    FaultPlan m_faults;
    std::mt19937 m_random;
    std::array<unsigned, RequestNames.size()> m_counters{};
    bool m_isPlugged = true;
    bool m_isRunning = true; ///< Not rebooting.
    unsigned m_boot = 0;     ///< Counts resets: what was under way before one is not finished after it.
};

} // namespace simulator
