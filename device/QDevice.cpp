// SPDX-License-Identifier: Apache-2.0
#include "device/QDevice.h"

#include "base/IpSettings.h"
#include "sdk/RzCameraSdk.h"

#include <QHostAddress>
#include <QNetworkInterface>
#include <QObject>

#include <cstring>
#include <initializer_list>

using namespace base::literals;

namespace {

constexpr quint32 IpConfigPersistent = 1;
constexpr quint32 IpConfigDhcp = 2;

/// The SDK updates its records on whatever thread enumerates, word by word with relaxed stores.
quint32 loadWord(const std::uint32_t& word)
{
    return __atomic_load_n(&word, __ATOMIC_RELAXED);
}

RZ_CC_DEVICE_INFO copyOf(const RZ_CC_DEVICE_INFO& record)
{
    using Word [[gnu::may_alias]] = std::uint32_t;
    RZ_CC_DEVICE_INFO copy;
    static_assert(sizeof copy % sizeof(Word) == 0);
    const auto* words = reinterpret_cast<const Word*>(&record);
    auto* copied = reinterpret_cast<Word*>(&copy);
    for (std::size_t i = 0; i < sizeof copy / sizeof(Word); ++i)
        copied[i] = __atomic_load_n(words + i, __ATOMIC_RELAXED);
    return copy;
}

/// The text at `offset` up to its NUL; one without a NUL runs on to the end of the block at most.
QString textAt(const RZ_GIGE_DEVICE_INFO& block, std::size_t offset)
{
    const char* text = reinterpret_cast<const char*>(&block) + offset;
    return QString::fromUtf8(text, static_cast<int>(strnlen(text, sizeof block - offset)));
}

QString dotted(quint32 address)
{
    return QHostAddress(address).toString();
}

IpConfigType ipConfigTypeOf(const RZ_GIGE_DEVICE_INFO& block)
{
    if (block.nIpConfigCurrent & IpConfigPersistent)
        return IpConfigType::Static;
    return block.nIpConfigCurrent & IpConfigDhcp ? IpConfigType::Dhcp : IpConfigType::LinkLocal;
}

/// The one of `all` whose text this is.
template <typename Enum>
std::optional<Enum> fromText(const QString& text, std::initializer_list<Enum> all)
{
    for (const Enum each : all) {
        if (text == ToText(each))
            return each;
    }
    return std::nullopt;
}

} // namespace

QString ToText(CameraStatus status)
{
    switch (status) {
    case CameraStatus::Free:
        return QObject::tr("Free");
    case CameraStatus::InUse:
        return QObject::tr("In Use");
    case CameraStatus::Unreachable:
        return QObject::tr("Unreachable");
    }
    return {};
}

QString ToText(IpConfigType type)
{
    switch (type) {
    case IpConfigType::Static:
        return QObject::tr("Static IP");
    case IpConfigType::Dhcp:
        return QObject::tr("DHCP");
    case IpConfigType::LinkLocal:
        return QObject::tr("LLA");
    }
    return {};
}

QDevice::QDevice()
{
    InitHostAdapterVector();
}

void QDevice::InitDeviceInfo(RZ_CC_DEVICE_INFO* pDeviceInfo)
{
    if (!pDeviceInfo)
        return;

    m_pDeviceInfo = pDeviceInfo;
    const RZ_CC_DEVICE_INFO record = copyOf(*pDeviceInfo);
    const RZ_GIGE_DEVICE_INFO& block = record.stGigEInfo;

    m_strModelName = textAt(block, offsetof(RZ_GIGE_DEVICE_INFO, szModelName));
    m_strUserDefinedName = textAt(block, offsetof(RZ_GIGE_DEVICE_INFO, szUserDefinedName));
    m_strSerialNumber = textAt(block, offsetof(RZ_GIGE_DEVICE_INFO, szSerialNumber));
    m_strMacAddress =
        QString::asprintf("%02X:%02X:%02X:%02X:%02X:%02X", (record.nMacHigh >> 8) & 0xFF,
                          record.nMacHigh & 0xFF, record.nMacLow >> 24, (record.nMacLow >> 16) & 0xFF,
                          (record.nMacLow >> 8) & 0xFF, record.nMacLow & 0xFF);
    m_strStatus = ToText(static_cast<CameraStatus>(GetDeviceState(pDeviceInfo)));
    m_strIpConfigType = ToText(ipConfigTypeOf(block));
    m_strIpAddress = dotted(block.nDeviceIp);
    m_strSubnetMask = dotted(block.nDeviceSubnetMask);
    m_strDefaultGateway = dotted(block.nDeviceGateway);
    m_nNetExport = block.nNetExportIp;
}

quint32 QDevice::GetIP(const QString& strIp)
{
    const QLatin1Char dot('.');
    const auto a = static_cast<quint32>(strIp.section(dot, 0, 0).toInt());
    const auto b = static_cast<quint32>(strIp.section(dot, 1, 1).toInt());
    const auto c = static_cast<quint32>(strIp.section(dot, 2, 2).toInt());
    const auto d = static_cast<quint32>(strIp.section(dot, 3).toInt());
    return (a << 24) | (b << 16) | (c << 8) | d;
}

bool QDevice::IsReachable(const RZ_CC_DEVICE_INFO* pDeviceInfo) const
{
    if (!pDeviceInfo)
        return false;

    const RZ_GIGE_DEVICE_INFO& block = pDeviceInfo->stGigEInfo;
    return AdapterWith(base::Ipv4(loadWord(block.nNetExportIp)))
        .reaches(base::Ipv4(loadWord(block.nDeviceIp)));
}

base::IpSettings QDevice::AdapterWith(base::Ipv4 address) const
{
    base::IpSettings result{address, "255.255.255.0"_ip, {}};
    for (const _NETWORK_INFO& adapter : m_vecHostAdapter) {
        if (adapter.nIpAddress == address.number())
            result.mask = base::Ipv4(adapter.nSubnetMask);
    }
    return result;
}

int QDevice::GetDeviceState(const RZ_CC_DEVICE_INFO* pDeviceInfo) const
{
    if (!pDeviceInfo)
        return -1;
    CameraStatus status = CameraStatus::Unreachable;
    if (IsReachable(pDeviceInfo))
        status = RZ_CC_IsDeviceAccessible(pDeviceInfo, RZ_ACCESS_EXCLUSIVE) ? CameraStatus::Free
                                                                            : CameraStatus::InUse;
    return static_cast<int>(status);
}

std::optional<CameraStatus> QDevice::Status() const
{
    return fromText(m_strStatus, {CameraStatus::Free, CameraStatus::InUse, CameraStatus::Unreachable});
}

std::optional<IpConfigType> QDevice::ConfigType() const
{
    return fromText(m_strIpConfigType, {IpConfigType::Static, IpConfigType::Dhcp, IpConfigType::LinkLocal});
}

int QDevice::GetNetExport() const
{
    return m_pDeviceInfo ? static_cast<int>(loadWord(m_pDeviceInfo->stGigEInfo.nNetExportIp)) : -1;
}

void QDevice::GetNetWorkVector(QVector<_NETWORK_INFO>& vecNetWork) const
{
    vecNetWork = m_vecHostAdapter;
}

void QDevice::InitHostAdapterVector()
{
    m_vecHostAdapter.clear();
    for (const QNetworkInterface& interface : QNetworkInterface::allInterfaces()) {
        for (const QNetworkAddressEntry& entry : interface.addressEntries()) {
            if (entry.ip().protocol() != QAbstractSocket::IPv4Protocol || entry.broadcast().isNull())
                continue;
            const quint32 address = entry.ip().toIPv4Address();
            if (address >> 24 == 127)
                continue;
            m_vecHostAdapter.append({address, entry.netmask().toIPv4Address()});
        }
    }
}
