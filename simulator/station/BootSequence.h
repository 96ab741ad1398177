// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "simulator/camera/StoredSettings.h"
#include "simulator/wire/DhcpClient.h"
#include "simulator/wire/LinkLocalClaim.h"

namespace simulator {

struct CameraConfig;

/// How a camera comes by its address: the stored one, else DHCP, else a link-local one. Moved on by timers
/// and by the frames it is given.
class BootSequence
{
public:
    enum class Phase
    {
        Off,
        Dhcp,
        LinkLocal,
        Running
    };
    using Done = std::function<void(const base::IpSettings&)>;

    /// `config` and `random` must outlive this. `done` is called each time the camera has got its address; it
    /// is running then. It is so from the start with an address of its configuration, and off without.
    BootSequence(const CameraConfig& config, TimerQueue& timers, const FrameSink& send, std::mt19937& random,
                 Done done);

    /// From any phase: no address and nothing on the network for the time `off`, then as the settings say.
    void run(std::chrono::milliseconds off, const StoredIp& settings);
    /// From any phase: nothing on the network for the time `off`, then running with this address.
    void pause(std::chrono::milliseconds off, const base::IpSettings& ip);
    /// What the interface hears before it has an address.
    void receive(const Frame& frame);

    Phase phase() const { return m_phase; }
    bool isOn() const { return m_phase != Phase::Off; }
    bool isRunning() const { return m_phase == Phase::Running; }

private:
    void switchOff();
    void obtainAddress(const StoredIp& settings);
    void obtainLease();
    void claimLinkLocal();
    void finish(const base::IpSettings& ip);

    const CameraConfig& m_config;
    Timeouts m_timeouts;
    DhcpClient m_dhcp;
    LinkLocalClaim m_claim;
    Done m_done;
    Phase m_phase;
    std::optional<base::Ipv4> m_lastLinkLocal; ///< Preferred when there is need of one again.
};

} // namespace simulator
