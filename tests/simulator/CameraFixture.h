// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "simulator/camera/Camera.h"
#include "tests/simulator/Hex.h"

#include <gtest/gtest.h>

namespace simulator_tests {

using base::Bytes;
using base::IpSettings;
using namespace base::literals;
using simulator::Camera;
using simulator::CameraConfig;
using namespace std::chrono_literals;

struct Exchange
{
    const char* what;
    const char* command;
    const char* answer;
};

inline constexpr Camera::Asker Application{"192.168.1.5"_ip, 5000};
inline constexpr Camera::Asker OtherApplication{"192.168.1.5"_ip, 5001};

inline const std::string TakeControl = "42 01 0082 0008 0010  00000A00 00000002";
inline const std::string TakeExclusive = "42 01 0082 0008 0010  00000A00 00000001";
inline const std::string ForceTo10_0_0_9 = "42 01 0004 0038 0007  0000 001A2B000001"
                                           "000000000000000000000000 0A000009"
                                           "000000000000000000000000 FF000000"
                                           "000000000000000000000000 0A000001";

inline CameraConfig config()
{
    CameraConfig camera;
    camera.mac = {{0x00, 0x1A, 0x2B, 0x00, 0x00, 0x01}};
    camera.ip = {"192.168.1.20"_ip, "255.255.255.0"_ip, {}};
    camera.serial = "SN1";
    return camera;
}

/// A camera that is asked as bytes, and a clock that the test moves.
class CameraFixture : public testing::Test
{
protected:
    /// What the camera answers to this datagram, sent to it alone; empty when it stays silent.
    Bytes answer(const std::string& datagram, const Camera::Asker& asker = Application)
    {
        const auto answered = handle(datagram, asker);
        return answered ? answered->packet : Bytes();
    }

    std::optional<Camera::Answer> handle(const std::string& datagram,
                                         const Camera::Asker& asker = Application)
    {
        return react(datagram, asker).answer;
    }

    Camera::Reaction react(const std::string& datagram, const Camera::Asker& asker = Application)
    {
        const Bytes bytes = hex(datagram);
        const auto command = gvcp::parseCommand(bytes);
        if (!command || !camera.concerns(*command, false))
            return {};
        return camera.handle(*command, asker, now);
    }

    bool isHeld()
    {
        camera.passTime(now);
        return camera.control().application().has_value();
    }

    void become(const CameraConfig& other) { camera = Camera(other); }

    Camera camera{config()};
    Camera::Clock::time_point now;
};

} // namespace simulator_tests
