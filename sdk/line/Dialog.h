// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "base/IpSettings.h"
#include "base/MacAddress.h"
#include "sdk/camera/CameraCommand.h"
#include "sdk/line/Steps.h"
#include "sdk/line/Task.h"

#include <string>

namespace sdk {

/// What is asked of one camera, and told to it, by its registers: at the address where it was seen last. Each
/// throws CameraError. The line outlives it.
class Dialog
{
public:
    Dialog(Line& line, const base::MacAddress& mac) : m_line(line), m_mac(mac) {}

    /// From now on it is there.
    void follow(const Sighting& seen) { m_seen = seen; }
    const Sighting& seen() const { return m_seen; }

    /// A camera that somebody holds would ignore FORCEIP. Whatever else is wrong is no error.
    Task<Nothing> requireFree();
    /// Exclusively.
    Task<Nothing> takeControl();
    /// No error when it fails. One that is silent is told only once.
    Task<Nothing> giveControlBack(bool isSilent);

    /// Which of its network interfaces, from 0, has the MAC. At its address another camera may answer.
    Task<unsigned> findInterface();
    Task<std::uint32_t> readIpConfig(unsigned interface);
    Task<Nothing> writeIpConfig(unsigned interface, std::uint32_t value);
    Task<base::IpSettings> readStored(unsigned interface);
    /// Writes what differs from the present.
    Task<Nothing> writeStored(unsigned interface, base::IpSettings present, base::IpSettings wanted);
    /// What is too long for it is cut off.
    Task<Nothing> writeName(std::string name);

private:
    Task<base::Bytes> ask(CameraCommand command, int tries);
    Task<std::uint32_t> readRegister(std::uint32_t address);
    Task<Nothing> writeRegister(std::uint32_t address, std::uint32_t value);

    Line& m_line;
    const base::MacAddress m_mac;
    Sighting m_seen;
};

} // namespace sdk
