// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "genapi/GenApi/IPort.h"
#include "sdk/addressing/LastingAddress.h"
#include "sdk/camera/CameraMemory.h"
#include "sdk/camera/Session.h"

#include <memory>
#include <mutex>

namespace sdk {

/// An open camera's registers, for a node map. Beside the camera's own addresses there is IpRestartAddress: a
/// write there closes the session and has the camera run its stored IP configuration again. When a write
/// tells the camera to start with its stored address from now on, the address that was forced onto it is
/// stored first. Any thread; a cancellation of the calling thread waits until a call is done.
class Port final : public GenApi::IPort
{
public:
    Port(std::shared_ptr<Session> session, ForcedAddresses& forced);

    GenApi::EAccessMode GetAccessMode() const override;
    void Read(void* pBuffer, int64_t Address, int64_t Length) override;
    void Write(const void* pBuffer, int64_t Address, int64_t Length) override;

private:
    void write(std::uint64_t address, base::ByteView data);
    bool isUnderControl();
    void storeForcedAddressIfAsked(std::uint64_t address, base::ByteView data);

    const std::shared_ptr<Session> m_session;
    ForcedAddresses& m_forced;
    std::mutex m_mutex; ///< Held during a call: one access is more than one command.
    CameraMemory m_memory;
};

} // namespace sdk
