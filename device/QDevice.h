// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QVector>

#include <optional>

struct RZ_CC_DEVICE_INFO;

namespace base {
class Ipv4;
struct IpSettings;
} // namespace base

/// One IPv4 address of a host adapter, in host order.
// NOLINTNEXTLINE(clang-diagnostic-reserved-identifier): the name is agreed with the users of this record
struct _NETWORK_INFO
{
    quint32 nIpAddress = 0;
    quint32 nSubnetMask = 0;
};

/// Numbered as by QDevice::GetDeviceState().
enum class CameraStatus
{
    Free,
    InUse, ///< By another application.
    Unreachable
};

enum class IpConfigType
{
    Static,
    Dhcp,
    LinkLocal
};

/// What users see of it, in the language of now.
QString ToText(CameraStatus status);
QString ToText(IpConfigType type);

/// One camera as the program shows it: a value, handled as copies. The MAC address is a camera's identity.
///
/// IPv4 numbers are in host order with the first octet in the top byte; texts that users see are translated
/// in the context "QObject" and compared in translated form.
class QDevice
{
public:
    /// Empty, with the host's adapters as they are now. Costs a walk over the host's interfaces; a copy does
    /// not.
    QDevice();

    /// Fills every shown member from the record and asks the SDK whether the camera is free. A null record
    /// changes nothing; nor does this touch the adapters.
    void InitDeviceInfo(RZ_CC_DEVICE_INFO* pDeviceInfo);

    /// "a.b.c.d" as a number. Nothing is checked: what is no number counts 0, and a part above 255 spills
    /// into the octet before it.
    static quint32 GetIP(const QString& strIp);

    /// Whether the camera lies in the subnet of the adapter that heard it, as AdapterWith() has it.
    bool IsReachable(const RZ_CC_DEVICE_INFO* pDeviceInfo) const;

    /// The host's adapter that has the address, as of this object's; one that is not among them counts as a
    /// /24.
    base::IpSettings AdapterWith(base::Ipv4 address) const;

    /// -1 no record, 0 free, 1 in use by another application, 2 unreachable.
    int GetDeviceState(const RZ_CC_DEVICE_INFO* pDeviceInfo) const;

    /// What m_strStatus says in the language of now; nothing for any other text.
    std::optional<CameraStatus> Status() const;

    /// What m_strIpConfigType says in the language of now; nothing for any other text.
    std::optional<IpConfigType> ConfigType() const;

    /// The address of the adapter that heard the camera, as the record says it now; -1 without a record.
    int GetNetExport() const;

    void GetNetWorkVector(QVector<_NETWORK_INFO>& vecNetWork) const;

    /// Looks at the host's adapters anew: the IPv4 addresses that have a broadcast address, loopback left
    /// out.
    void InitHostAdapterVector();

    RZ_CC_DEVICE_INFO* m_pDeviceInfo = nullptr; ///< The SDK's, valid as long as the process runs; not owned.
    QString m_strModelName;
    QString m_strUserDefinedName;
    QString m_strSerialNumber;
    QString m_strMacAddress;   ///< "00:1A:2B:3C:4D:5E"
    QString m_strStatus;       ///< ToText() of a CameraStatus.
    QString m_strIpConfigType; ///< ToText() of an IpConfigType.
    QString m_strIpAddress;
    QString m_strSubnetMask;
    QString m_strDefaultGateway;
    QString m_strReserved;                   ///< Never filled here; copied with the rest.
    quint32 m_nNetExport = 0;                ///< The adapter that heard the camera, as of InitDeviceInfo.
    QVector<_NETWORK_INFO> m_vecHostAdapter; ///< As of construction of the object this one was copied from.
};
