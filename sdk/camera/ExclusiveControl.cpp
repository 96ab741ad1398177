// SPDX-License-Identifier: Apache-2.0
#include "sdk/camera/ExclusiveControl.h"

#include "gvcp/Registers.h"
#include "sdk/network/CameraError.h"

namespace sdk {

namespace {

using gvcp::reg::ControlChannelPrivilege;

bool isExclusive(std::uint32_t privilege)
{
    return (privilege & gvcp::Privilege::Exclusive) != 0;
}

} // namespace

void ExclusiveControl::giveBack(ControlChannel& channel, int tries) noexcept
{
    try {
        channel.writeRegister(ControlChannelPrivilege, gvcp::Privilege::Open, tries);
    } catch (const std::exception&) {
        // The camera is gone, or under another application's control by now: in both cases there is nothing
        // to give back.
        return;
    }
}

ExclusiveControl::ExclusiveControl(ControlChannel& channel, int tries) : m_channel(channel)
{
    try {
        channel.writeRegister(ControlChannelPrivilege, gvcp::Privilege::Exclusive, tries);
        if (!isExclusive(channel.readRegister(ControlChannelPrivilege)))
            throw CameraError(RZ_ERROR_ACCESS_DENIED,
                              channel.camera().toText() + " does not give exclusive control");
    } catch (const CameraError&) {
        // The camera may have given control all the same, and only its answers were lost.
        giveBack(channel, 1);
        throw;
    }
}

ExclusiveControl::~ExclusiveControl()
{
    giveBack(m_channel, m_channel.triesForFarewell());
}

bool ExclusiveControl::isHeld()
{
    try {
        return isExclusive(m_channel.readRegister(ControlChannelPrivilege, ControlChannel::FewTries));
    } catch (const CameraError& error) {
        return error.code() == RZ_ERROR_NO_ANSWER || error.code() == RZ_ERROR_NETWORK;
    }
}

} // namespace sdk
