// SPDX-License-Identifier: Apache-2.0
#include "device/CameraAddress.h"

#include "device/QDevice.h"
#include "sdk/RzCameraSdk.h"

#include <array>
#include <functional>
#include <memory>

namespace {

constexpr bool isNumber(AddressError error, int nSdkError)
{
    return static_cast<int>(error) == nSdkError;
}
static_assert(isNumber(AddressError::None, RZ_OK));
static_assert(isNumber(AddressError::BadAddress, RZ_ERROR_PARAMETER));
static_assert(isNumber(AddressError::Network, RZ_ERROR_NETWORK));
static_assert(isNumber(AddressError::NoAnswer, RZ_ERROR_NO_ANSWER));
static_assert(isNumber(AddressError::InUse, RZ_ERROR_ACCESS_DENIED));
static_assert(isNumber(AddressError::Refused, RZ_ERROR_REFUSED));
static_assert(isNumber(AddressError::NotStored, RZ_ERROR_NOT_STORED));
static_assert(isNumber(AddressError::OtherCamera, RZ_ERROR_OTHER_CAMERA));

struct HandleDestroyer
{
    void operator()(void* handle) const { RZ_CC_DestroyHandle(handle); }
};

/// Calls with a handle of the camera; the error of either.
AddressError withHandle(const QDevice& device, const std::function<int(void*)>& call)
{
    void* created = nullptr;
    if (const int nError = RZ_CC_CreateHandle(&created, device.m_pDeviceInfo); nError != RZ_OK)
        return static_cast<AddressError>(nError);
    const std::unique_ptr<void, HandleDestroyer> handle(created);
    return static_cast<AddressError>(call(handle.get()));
}

} // namespace

AddressError ForceAddress(const QDevice& device, const base::IpSettings& settings)
{
    return withHandle(device, [&settings](void* handle) {
        return RZ_GIGE_ForceIpEx(handle, settings.address.number(), settings.mask.number(),
                                 settings.gateway.number());
    });
}

bool IsForcedAddressWaiting(const QDevice& device)
{
    return RZ_GIGE_IsForcedIpWaiting(device.m_pDeviceInfo);
}

AddressError StoreForcedAddress(const QDevice& device)
{
    return withHandle(device, [](void* handle) { return RZ_CC_OpenDevice(handle, RZ_ACCESS_EXCLUSIVE, 0); });
}

std::optional<base::IpSettings> ReadStoredAddress(const QDevice& device)
{
    unsigned nIp = 0;
    unsigned nSubnetMask = 0;
    unsigned nGateway = 0;
    const AddressError error = withHandle(
        device, [&](void* handle) { return RZ_GIGE_GetPersistentIp(handle, &nIp, &nSubnetMask, &nGateway); });
    if (error != AddressError::None)
        return std::nullopt;
    return base::IpSettings{base::Ipv4(nIp), base::Ipv4(nSubnetMask), base::Ipv4(nGateway)};
}

QString GetCameraError(const QDevice& device)
{
    std::array<char, 1024> text{};
    RZ_CC_GetErrorText(device.m_pDeviceInfo, text.data(), text.size());
    return QString::fromUtf8(text.data());
}
