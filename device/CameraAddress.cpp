// SPDX-License-Identifier: Apache-2.0
#include "device/CameraAddress.h"

#include "device/QDevice.h"
#include "sdk/RzCameraSdk.h"

#include <memory>

namespace {

struct HandleDestroyer
{
    void operator()(void* handle) const { RZ_CC_DestroyHandle(handle); }
};

QString failure(int error)
{
    switch (error) {
    case RZ_ERROR_PARAMETER:
        return QStringLiteral("the SDK takes no such address; check address, mask and gateway");
    case RZ_ERROR_NETWORK:
        return QStringLiteral("the network adapter that heard the camera cannot be used; "
                              "check that it is up and has an address");
    case RZ_ERROR_NO_ANSWER:
        return QStringLiteral("the camera did not answer; check its cable and power, and try again");
    case RZ_ERROR_ACCESS_DENIED:
        return QStringLiteral(
            "another application controls the camera; close that application and try again");
    case RZ_ERROR_REFUSED:
        return QStringLiteral("the camera answered with an error; it may not take an address this way");
    case RZ_ERROR_NOT_STORED:
        return QStringLiteral("the camera took the address but did not store it, so it will have its old one "
                              "after its next reset; try again, or set it with the set command");
    default:
        return QStringLiteral("the SDK failed (error %1)").arg(error);
    }
}

} // namespace

QString ForceAddress(const QDevice& device, quint32 nIp, quint32 nSubnetMask, quint32 nGateway)
{
    void* created = nullptr;
    if (const int error = RZ_CC_CreateHandle(&created, device.m_pDeviceInfo); error != RZ_OK)
        return failure(error);
    const std::unique_ptr<void, HandleDestroyer> handle(created);
    const int error = RZ_GIGE_ForceIpEx(handle.get(), nIp, nSubnetMask, nGateway);
    return error == RZ_OK ? QString() : failure(error);
}
