// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "gvcp/Registers.h"
#include "sdk/network/Network.h"
#include "tests/sdk/FakeNetwork.h"

#include <functional>
#include <map>
#include <memory>

/// A camera's control channel on a FakeNetwork: memory of words, and whatever misbehaviour the test puts in.
/// Answers a millisecond after each command.
class FakeCamera
{
public:
    static constexpr base::Ipv4 Host = "192.168.1.5"_ip;
    static constexpr base::Ipv4 Ip = "192.168.1.20"_ip;
    static constexpr base::MacAddress Mac{{0x02, 0, 0, 0, 0, 1}};

    FakeCamera();
    FakeCamera(const FakeCamera&) = delete;
    FakeCamera& operator=(const FakeCamera&) = delete;
    ~FakeCamera() = default;

    /// The network as code takes it that wants to own one; several may exist one after the other.
    std::unique_ptr<sdk::Network> connect();

    /// From now on another camera answers at the address: it has the same memory but for its MAC, and is
    /// free.
    void becomeAnother();

    /// Bytes as registers see them: the first one is the top one of its word.
    void setBytes(std::uint32_t address, const std::string& bytes);
    std::string bytes(std::uint32_t address, std::size_t size) const;
    /// The registers of a persistent address, mask and gateway, of which the first one stands there.
    void storeAddress(const base::IpSettings& settings, std::uint32_t at = gvcp::reg::PersistentIp);
    base::IpSettings storedAddress(std::uint32_t at = gvcp::reg::PersistentIp) const;
    /// The commands that came, in order: "READREG 00000A00", "WRITEREG 00000A00=00000001", "READMEM
    /// 00000200+512", "WRITEMEM 000000E8+16", "FORCEIP 0.0.0.0".
    std::vector<std::string> log() const;

    FakeNetwork network{{adapterWith(1, Host)}};
    std::map<std::uint32_t, std::uint32_t> words; ///< The memory; what is not in it is no valid address.
    std::uint32_t writeProtected = 1;             ///< An address that cannot be written.
    /// Sees each command first; true when it has dealt with it.
    std::function<bool(const gvcp::CommandPacket&)> onCommand = [](const auto&) { return false; };

    void answer(const gvcp::CommandPacket& command, gvcp::Status status, const base::Bytes& payload = {});
    /// As it would have answered without onCommand.
    void obey(const gvcp::CommandPacket& command);

private:
    gvcp::Status write(std::uint32_t address, std::uint32_t value);
    gvcp::Status readMemory(base::ByteView payload, base::Bytes& answer) const;
    gvcp::Status writeMemory(base::ByteView payload);
};
