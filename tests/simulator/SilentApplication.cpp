// SPDX-License-Identifier: Apache-2.0
#include "tests/simulator/SilentApplication.h"

#include "tests/simulator/GvcpClient.h"
#include "tests/simulator/Hex.h"
#include "tests/simulator/Shown.h"
#include "tests/support/WaitUntil.h"

#include <stdexcept>

namespace simulator_tests {

void waitForTimeouts(int count, const lab::Namespace& host, const lab::Farm& farm, const std::string& mac)
{
    const auto address = base::Ipv4::parse(shown(farm, mac).at("address").get<std::string>());
    const GvcpClient application(host);
    for (int i = 0; i < count; ++i) {
        const auto taken = application.ask(address.value(), hex("42 01 0082 0008 0001 00000A00 00000001"));
        if (taken.size() < 2 || base::readU16(taken, 0) != 0)
            throw std::runtime_error("the camera " + mac + " cannot be taken");
        if (!waitUntil([&] { return !shown(farm, mac).at("held").get<bool>(); }))
            throw std::runtime_error("the camera " + mac + " does not let go of who is silent");
    }
}

} // namespace simulator_tests
