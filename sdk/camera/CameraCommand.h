// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "sdk/network/CameraError.h"
#include "sdk/network/Exchange.h"

#include <optional>
#include <span>
#include <string>

namespace sdk {

/// A command on a camera's registers or memory: what goes out, which answer is believed, and what that means.
/// Its sentences name the command, the address and the cause.
class CameraCommand
{
public:
    static CameraCommand readRegister(std::uint32_t address);
    static CameraCommand writeRegister(std::uint32_t address, std::uint32_t value);
    /// Address and size are multiples of 4.
    static CameraCommand readMemory(std::uint32_t address, std::uint16_t size);
    static CameraCommand writeMemory(std::uint32_t address, base::ByteView data);

    /// "reading 0x00000A00".
    std::string name() const;

    /// To the camera out of that adapter of the network; the exchange throws CameraError when the host cannot
    /// send. The command and the network outlive it.
    Exchange::Plan plan(Network& network, std::size_t adapter, base::Ipv4 camera, int tries) const;

    /// The data that the exchange brought, which has ended. Throws CameraError.
    base::Bytes resultOf(const Exchange& exchange, base::Ipv4 camera) const;

private:
    CameraCommand(gvcp::Command command, std::uint32_t address, base::Bytes payload, std::size_t answerSize)
        : m_command(command),
          m_address(address),
          m_payload(std::move(payload)),
          m_answerSize(answerSize)
    {}

    std::optional<base::ByteView> dataOf(base::ByteView acknowledge) const;

    gvcp::Command m_command;
    std::uint32_t m_address;
    base::Bytes m_payload;
    std::size_t m_answerSize; ///< Bytes of data; 0: any, since the command asks for none.
};

} // namespace sdk
