// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "gvcp/DiscoveryAck.h"
#include "gvcp/Registers.h"
#include "tests/sdk/FakeNetwork.h"

#include <functional>
#include <map>
#include <optional>
#include <string>

/// A whole camera on a FakeNetwork: finds its address as it is configured to, obeys FORCEIP, lets nobody
/// write but who controls it, forgets control after three seconds of silence. Something may happen to it at
/// one of the packets that it gets.
class LineCamera
{
public:
    enum class Event
    {
        None,
        CommandLost,
        AnswerLost,
        Unplugged,
        Rebooted, ///< Its power was cut for a moment.
        Held      ///< Another application takes control.
    };

    LineCamera(FakeNetwork& network, std::uint8_t number);
    LineCamera(const LineCamera&) = delete;
    LineCamera& operator=(const LineCamera&) = delete;
    ~LineCamera() = default;

    /// A packet for everybody, or for its address.
    void take(const FakeNetwork::Sent& sent);

    bool isThere() const { return isPlugged && network.now() >= backAt; }

    FakeNetwork& network;
    gvcp::DiscoveryAck camera; ///< What it has now.
    base::IpSettings stored;
    base::IpSettings leased; ///< What the DHCP server gives it; unspecified: there is none.
    base::IpSettings linkLocal;
    bool isPlugged = true;
    bool canWriteMemory = true;
    bool ignoresRestarts = false;
    std::uint32_t privilege = 0;
    bool isHeldByOther = false;
    std::optional<std::uint32_t> writeProtected; ///< An address that cannot be written.
    unsigned writes = 0;                         ///< Of registers other than the control privilege.
    unsigned packets = 0;                        ///< That it got.
    unsigned eventAt = 0;                        ///< Which of them; counted from 1.
    Event event = Event::None;
    std::function<bool()> isLost = [] { return false; }; ///< Asked for each packet, in either direction.
    sdk::Clock::time_point backAt{};

private:
    void obtainAddress(sdk::Clock::duration away);
    void obey(const gvcp::CommandPacket& command);
    void answer(const gvcp::CommandPacket& command, gvcp::Status status, const base::Bytes& payload = {});
    std::optional<std::uint32_t> word(std::uint32_t address) const;
    gvcp::Status write(std::uint32_t address, std::uint32_t value);

    sdk::Clock::time_point m_silentSince{};
    bool m_losesAnswer = false;
};
