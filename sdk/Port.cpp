// SPDX-License-Identifier: Apache-2.0
#include "sdk/Port.h"

#include "base/CancellationHold.h"
#include "gvcp/Registers.h"
#include "sdk/addressing/IpRestart.h"
#include "sdk/description/DescriptionCompletion.h"
#include "sdk/network/CameraError.h"

namespace sdk {

namespace {

/// From here on registers are the makers' own; below they are the standard's.
constexpr std::uint64_t FirstMakersRegister = 0xA000;

/// One access to the port: under the lock, not to be cancelled, and with no other exceptions than a port has.
template <typename Call>
void access(std::mutex& mutex, const void* buffer, int64_t address, int64_t length, Call call)
{
    const base::CancellationHold hold;
    const std::lock_guard lock(mutex);
    if (!buffer || address < 0 || length <= 0)
        throw GenICam::InvalidArgumentException("there is no access to " + std::to_string(length) +
                                                    " bytes at " + std::to_string(address) +
                                                    (buffer ? "" : " without a buffer"),
                                                __FILE_NAME__, __LINE__);
    try {
        call();
    } catch (const std::exception& error) {
        throw GenICam::RuntimeException(error.what(), __FILE_NAME__, __LINE__);
    }
}

} // namespace

Port::Port(std::shared_ptr<Session> session, ForcedAddresses& forced)
    : m_session(std::move(session)),
      m_forced(forced),
      m_memory(m_session->channel())
{}

GenApi::EAccessMode Port::GetAccessMode() const
{
    const base::CancellationHold hold;
    return m_session->isOpen() ? GenApi::RW : GenApi::NA;
}

void Port::Read(void* pBuffer, int64_t Address, int64_t Length)
{
    access(m_mutex, pBuffer, Address, Length, [&] {
        m_memory.read(static_cast<std::uint64_t>(Address),
                      {static_cast<std::uint8_t*>(pBuffer), static_cast<std::size_t>(Length)});
    });
}

void Port::Write(const void* pBuffer, int64_t Address, int64_t Length)
{
    access(m_mutex, pBuffer, Address, Length, [&] {
        write(static_cast<std::uint64_t>(Address),
              {static_cast<const std::uint8_t*>(pBuffer), static_cast<std::size_t>(Length)});
    });
}

void Port::write(std::uint64_t address, base::ByteView data)
{
    if (address == IpRestartAddress) {
        closeWithIpRestart(*m_session);
        return;
    }
    m_session->requireSameCamera();
    storeForcedAddressIfAsked(address, data);
    try {
        m_memory.write(address, data);
    } catch (const CameraError& error) {
        // Many cameras reset before they acknowledge the command to do so.
        const bool mayBeReset = address >= FirstMakersRegister && error.code() == RZ_ERROR_NO_ANSWER;
        if (!mayBeReset || isUnderControl())
            throw;
    }
}

bool Port::isUnderControl()
{
    try {
        const auto privilege =
            m_session->channel().readRegister(gvcp::reg::ControlChannelPrivilege, ControlChannel::FewTries);
        return (privilege & gvcp::Privilege::Exclusive) != 0;
    } catch (const CameraError&) {
        return false;
    }
}

void Port::storeForcedAddressIfAsked(std::uint64_t address, base::ByteView data)
{
    const std::uint32_t configuration =
        gvcp::reg::ofInterface(m_session->interface(), gvcp::reg::CurrentIpConfig);
    const std::uint64_t bitAt = configuration + 3; // The byte that the bit is in.
    const bool isAsked = address <= bitAt && bitAt - address < data.size() &&
                         (data[bitAt - address] & gvcp::IpConfig::Persistent) != 0;
    if (!isAsked)
        return;
    const auto addresses = m_forced.of(m_session->mac());
    ControlChannel& channel = m_session->channel();
    if (addresses && (channel.readRegister(configuration) & gvcp::IpConfig::Persistent) == 0)
        storeAddress(channel, m_session->interface(), *addresses);
}

} // namespace sdk
