// SPDX-License-Identifier: Apache-2.0
#include "sdk/discovery/Record.h"

#include <algorithm>
#include <unistr.h>

namespace sdk {

namespace {

/// What fits of the text, in whole characters. Bytes that are no UTF-8 count as Latin-1, so that a name which
/// is none looks the same each time, and as much of it fits as can be shown.
template <std::size_t Size>
void copyText(char (&field)[Size], const std::string& text)
{
    const auto* const bytes = reinterpret_cast<const std::uint8_t*>(text.data());
    std::size_t length = 0;
    for (std::size_t i = 0; i < text.size();) {
        ucs4_t character = 0;
        const int taken = u8_mbtoucr(&character, bytes + i, text.size() - i);
        if (taken <= 0)
            character = bytes[i];
        std::uint8_t encoded[6];
        const int size = u8_uctomb(encoded, character, sizeof encoded);
        if (length + static_cast<std::size_t>(size) > Size - 1)
            return;
        std::copy_n(encoded, size, field + length);
        length += static_cast<std::size_t>(size);
        i += taken > 0 ? static_cast<std::size_t>(taken) : 1;
    }
}

} // namespace

RZ_CC_DEVICE_INFO recordOf(const FoundCamera& camera, const Adapter& adapter)
{
    const gvcp::DiscoveryAck& identity = camera.identity;
    const auto& mac = identity.mac.bytes;
    RZ_CC_DEVICE_INFO record{};
    record.nMajorVersion = identity.versionMajor;
    record.nMinorVersion = identity.versionMinor;
    record.nMacHigh = base::readU16(mac, 0);
    record.nMacLow = base::readU32(mac, 2);
    record.nTransportLayer = RZ_TL_GIGE;

    RZ_GIGE_DEVICE_INFO& gige = record.stGigEInfo;
    gige.nIpConfigOptions = identity.ipConfigOptions;
    gige.nIpConfigCurrent = identity.ipConfigCurrent;
    gige.nDeviceIp = identity.ip.address.number();
    gige.nDeviceSubnetMask = identity.ip.mask.number();
    gige.nDeviceGateway = identity.ip.gateway.number();
    copyText(gige.szManufacturerName, identity.manufacturerName);
    copyText(gige.szModelName, identity.modelName);
    copyText(gige.szDeviceVersion, identity.deviceVersion);
    copyText(gige.szManufacturerInfo, identity.manufacturerInfo);
    copyText(gige.szSerialNumber, identity.serialNumber);
    copyText(gige.szUserDefinedName, identity.userDefinedName);
    gige.nNetExportIp = camera.adapterAddress.number();
    gige.nNetExportIndex = adapter.index;
    return record;
}

base::MacAddress macOf(const RZ_CC_DEVICE_INFO& record)
{
    base::MacAddress mac;
    base::writeU16(mac.bytes, 0, static_cast<std::uint16_t>(record.nMacHigh));
    base::writeU32(mac.bytes, 2, record.nMacLow);
    return mac;
}

base::Ipv4 addressOf(const RZ_CC_DEVICE_INFO& record)
{
    return base::Ipv4(record.stGigEInfo.nDeviceIp);
}

base::IpSettings ipSettingsOf(const RZ_CC_DEVICE_INFO& record)
{
    return {addressOf(record), base::Ipv4(record.stGigEInfo.nDeviceSubnetMask),
            base::Ipv4(record.stGigEInfo.nDeviceGateway)};
}

} // namespace sdk
