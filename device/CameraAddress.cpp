// SPDX-License-Identifier: Apache-2.0
#include "device/CameraAddress.h"

#include "device/QDevice.h"
#include "sdk/RzCameraSdk.h"

#include <array>
#include <functional>
#include <memory>

namespace {

struct HandleDestroyer
{
    void operator()(void* handle) const { RZ_CC_DestroyHandle(handle); }
};

/// What failed, unless the SDK has more to say of it, and what may be done.
struct Sentence
{
    QString strWhat;
    QString strAdvice;
};

Sentence sentenceFor(int error)
{
    switch (error) {
    case RZ_ERROR_PARAMETER:
        return {QStringLiteral("the SDK takes no such address"),
                QStringLiteral("check address, mask and gateway")};
    case RZ_ERROR_NETWORK:
        return {QStringLiteral("the network adapter that heard the camera cannot be used"),
                QStringLiteral("check that it is up and has an address")};
    case RZ_ERROR_NO_ANSWER:
        return {QStringLiteral("the camera did not answer"),
                QStringLiteral("check its cable and power, and try again")};
    case RZ_ERROR_ACCESS_DENIED:
        return {QStringLiteral("another application controls the camera"),
                QStringLiteral("close that application and try again")};
    case RZ_ERROR_REFUSED:
        return {QStringLiteral("the camera answered with an error"),
                QStringLiteral("switch it off and on, and try again")};
    case RZ_ERROR_NOT_STORED:
        return {QStringLiteral("the camera did not store the address"), QStringLiteral("try again")};
    case RZ_ERROR_OTHER_CAMERA:
        return {QStringLiteral("another camera answers at its address"),
                QStringLiteral("give one of the two another address first")};
    default:
        return {QStringLiteral("the SDK failed (error %1)").arg(error), QStringLiteral("try again")};
    }
}

QString failure(int error, const QDevice& device)
{
    const Sentence sentence = sentenceFor(error);
    const QString strReason = GetCameraError(device);
    return (strReason.isEmpty() ? sentence.strWhat : strReason) + QStringLiteral("; ") + sentence.strAdvice;
}

/// Calls with a handle of the camera; the error code of either.
int withHandle(const QDevice& device, const std::function<int(void*)>& call)
{
    void* created = nullptr;
    if (const int error = RZ_CC_CreateHandle(&created, device.m_pDeviceInfo); error != RZ_OK)
        return error;
    const std::unique_ptr<void, HandleDestroyer> handle(created);
    return call(handle.get());
}

} // namespace

QString ForceAddress(const QDevice& device, quint32 nIp, quint32 nSubnetMask, quint32 nGateway)
{
    const int error = withHandle(
        device, [=](void* handle) { return RZ_GIGE_ForceIpEx(handle, nIp, nSubnetMask, nGateway); });
    return error == RZ_OK ? QString() : failure(error, device);
}

bool IsForcedAddressWaiting(const QDevice& device)
{
    return RZ_GIGE_IsForcedIpWaiting(device.m_pDeviceInfo);
}

QString StoreForcedAddress(const QDevice& device)
{
    const int error =
        withHandle(device, [](void* handle) { return RZ_CC_OpenDevice(handle, RZ_ACCESS_EXCLUSIVE, 0); });
    return error == RZ_OK ? QString() : failure(error, device);
}

std::optional<StoredAddress> ReadStoredAddress(const QDevice& device)
{
    StoredAddress stored;
    const int error = withHandle(device, [&stored](void* handle) {
        return RZ_GIGE_GetPersistentIp(handle, &stored.nIp, &stored.nSubnetMask, &stored.nGateway);
    });
    return error == RZ_OK ? std::optional(stored) : std::nullopt;
}

QString GetCameraError(const QDevice& device)
{
    std::array<char, 1024> text{};
    RZ_CC_GetErrorText(device.m_pDeviceInfo, text.data(), text.size());
    return QString::fromUtf8(text.data());
}
