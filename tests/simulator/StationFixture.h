// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "simulator/station/Station.h"
#include "tests/simulator/Hex.h"

#include <gtest/gtest.h>
#include <memory>

namespace simulator_tests {

using namespace simulator;
using namespace base::literals;
using namespace std::chrono_literals;
using base::Bytes;
using base::IpSettings;
using base::Ipv4;
using base::MacAddress;

inline constexpr MacAddress CameraMac{{0x00, 0x1A, 0x2B, 0x00, 0x00, 0x01}};
inline constexpr MacAddress HostMac{{0x02, 0, 0, 0, 0, 0x05}};
inline constexpr MacAddress RouterMac{{0x02, 0, 0, 0, 0, 0x01}};
inline constexpr Ipv4 CameraAddress = "192.168.1.20"_ip;
inline constexpr Ipv4 NearHost = "192.168.1.5"_ip;
inline constexpr Ipv4 FarHost = "10.0.0.5"_ip;
inline constexpr Ipv4 Router = "192.168.1.1"_ip;

inline const std::string DiscoveryWithBroadcast = "42 11 0002 0000 1234";
inline const std::string DiscoveryWithoutBroadcast = "42 01 0002 0000 1234";
inline const std::string TakeControl = "42 01 0082 0008 0010 00000A00 00000002";
inline const std::string SwitchPendingAckOn = "42 01 0082 0008 0011 00000954 00000002";
inline const std::string ReadAddress = "42 01 0080 0004 0001 00000024";
inline const std::string ForceTo192_168_1_99 = "42 11 0004 0038 0007  0000 001A2B000001"
                                               "000000000000000000000000 C0A80163"
                                               "000000000000000000000000 FFFFFF00"
                                               "000000000000000000000000 00000000";

/// What a test changes of a fault.
inline Fault faultOf(Request request, FaultAction action = FaultAction::Drop,
                     std::optional<unsigned> times = {}, std::chrono::milliseconds time = 0ms)
{
    Fault fault;
    fault.request = request;
    fault.action = action;
    fault.times = times;
    fault.time = time;
    return fault;
}

/// A camera on a wire that writes down what it sends, and a clock that the test moves.
class StationFixture : public testing::Test
{
protected:
    StationFixture() { become({}); }

    /// A camera at 192.168.1.20/24 with these quirks.
    void become(CameraConfig quirks)
    {
        becomeStranger(std::move(quirks));
        answerArp(NearHost, HostMac);
    }

    /// Likewise; it does not know the near host's MAC.
    void becomeStranger(CameraConfig quirks)
    {
        quirks.mac = CameraMac;
        if (quirks.ip == IpSettings{})
            quirks.ip = {CameraAddress, "255.255.255.0"_ip, {}};
        sent.clear();
        // What an earlier camera has left in the queue goes with it.
        timers.emplace(TimerQueue::Clock::time_point{});
        station = std::make_unique<Station>(quirks, 1, *timers,
                                            [this](const Frame& frame) { sent.push_back(frame); });
    }

    static CameraConfig answering(CameraConfig::AnswerBy way)
    {
        CameraConfig quirks;
        quirks.answerBy = way;
        return quirks;
    }

    static CameraConfig withGateway()
    {
        CameraConfig quirks;
        quirks.ip = {CameraAddress, "255.255.255.0"_ip, Router};
        return quirks;
    }

    static CameraConfig withoutAddress()
    {
        CameraConfig camera;
        camera.mac = CameraMac;
        camera.ipMethod = CameraConfig::IpMethod::LinkLocal;
        return camera;
    }

    void ask(const std::string& datagram, Ipv4 from, Ipv4 to = base::LimitedBroadcast)
    {
        const MacAddress mac = to == station->camera().ip().address ? CameraMac : BroadcastMac;
        station->receive(UdpDatagram{HostMac, mac, from, to, 5000, 3956, hex(datagram)});
    }

    /// As if the camera had asked, whether it has or not.
    void answerArp(Ipv4 address, const MacAddress& mac)
    {
        station->receive(
            ArpMessage{mac, CameraMac, false, address, station->camera().ip().address, CameraMac});
    }

    void pass(std::chrono::milliseconds time) { timers->advance(timers->now() + time); }

    template <typename T>
    std::vector<T> sentOf() const
    {
        std::vector<T> all;
        for (const Frame& frame : sent)
            if (const T* const each = std::get_if<T>(&frame))
                all.push_back(*each);
        return all;
    }

    /// Whether exactly one datagram has left, for this MAC and address.
    void expectOneAnswer(const MacAddress& mac, Ipv4 address) const
    {
        const auto answers = sentOf<UdpDatagram>();
        ASSERT_EQ(answers.size(), 1u);
        EXPECT_EQ(answers[0].destinationMac, mac);
        EXPECT_EQ(answers[0].destination, address);
        EXPECT_EQ(answers[0].sourceMac, CameraMac);
        EXPECT_EQ(answers[0].source, CameraAddress);
        EXPECT_EQ(answers[0].sourcePort, 3956);
        EXPECT_EQ(answers[0].destinationPort, 5000);
    }

    std::optional<TimerQueue> timers;
    std::vector<Frame> sent;
    std::unique_ptr<Station> station;
};

} // namespace simulator_tests
