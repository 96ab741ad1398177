// SPDX-License-Identifier: Apache-2.0
#include "sdk/camera/Identity.h"

#include "gvcp/Registers.h"
#include "sdk/network/CameraError.h"

#include <algorithm>
#include <array>

namespace sdk {

namespace {

base::MacAddress macOfInterface(ControlChannel& channel, unsigned number, int tries)
{
    // Both registers are read at once: two cameras that have one address could each answer for one of them.
    std::array<std::uint8_t, 8> registers{};
    channel.readMemory(gvcp::reg::ofInterface(number, gvcp::reg::MacHigh), registers, tries);
    base::MacAddress mac;
    std::copy(registers.begin() + 2, registers.end(), mac.bytes.begin());
    return mac;
}

[[noreturn]] void refuse(const ControlChannel& channel, const base::MacAddress& other,
                         const base::MacAddress& wanted)
{
    throw CameraError(RZ_ERROR_OTHER_CAMERA, "at its address " + channel.camera().toText() + " the camera " +
                                                 other.toText() + " answers and not " + wanted.toText());
}

} // namespace

unsigned interfaceWith(ControlChannel& channel, const base::MacAddress& mac, int tries)
{
    const auto first = macOfInterface(channel, 0, tries);
    if (first == mac)
        return 0;
    const auto count =
        std::min(channel.findRegister(gvcp::reg::InterfaceCount).value_or(1), gvcp::MaxInterfaces);
    for (unsigned number = 1; number < count; ++number)
        if (macOfInterface(channel, number, tries) == mac)
            return number;
    refuse(channel, first, mac);
}

void requireMac(ControlChannel& channel, unsigned interface, const base::MacAddress& mac, int tries)
{
    const auto present = macOfInterface(channel, interface, tries);
    if (present != mac)
        refuse(channel, present, mac);
}

} // namespace sdk
