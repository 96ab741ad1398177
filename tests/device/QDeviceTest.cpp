// SPDX-License-Identifier: Apache-2.0
#include "device/QDevice.h"

#include "base/Ipv4.h"
#include "sdk/RzCameraSdk.h"
#include "tests/device/QtFixture.h"
#include "tests/support/SdkDouble.h"

#include <QTextCodec>
#include <QTranslator>

#include <cstring>
#include <gmock/gmock.h>
#include <optional>

using namespace base::literals;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

/// Marks every text of the context "QObject"; others stay untranslated.
class MarkingTranslator : public QTranslator
{
public:
    QString translate(const char* context, const char* sourceText, const char* disambiguation,
                      int n) const override
    {
        if (qstrcmp(context, "QObject") != 0 || disambiguation || n != -1)
            return {};
        return QLatin1Char('<') + QString::fromUtf8(sourceText) + QLatin1Char('>');
    }
    bool isEmpty() const override { return false; }
};

class QDeviceTest : public QtFixture
{
protected:
    QDevice decoded(const SdkDouble::Camera& camera)
    {
        QDevice device;
        device.InitDeviceInfo(sdk.record(camera));
        return device;
    }

    SdkDouble sdk;
};

} // namespace

TEST_F(QDeviceTest, IsEmptyAfterConstruction)
{
    const QDevice device;
    EXPECT_EQ(device.m_pDeviceInfo, nullptr);
    for (const QString& text :
         {device.m_strModelName, device.m_strUserDefinedName, device.m_strSerialNumber,
          device.m_strMacAddress, device.m_strStatus, device.m_strIpConfigType, device.m_strIpAddress,
          device.m_strSubnetMask, device.m_strDefaultGateway, device.m_strReserved})
        EXPECT_TRUE(text.isEmpty());
    EXPECT_EQ(device.m_nNetExport, 0u);
}

TEST_F(QDeviceTest, DecodesEveryShownFieldOfARecord)
{
    QDevice device;
    device.m_strReserved = "kept";
    const QVector<_NETWORK_INFO> adapters = {{"10.0.0.1"_ip.number(), "255.0.0.0"_ip.number()}};
    device.m_vecHostAdapter = adapters;
    RZ_CC_DEVICE_INFO* const record = sdk.record({.mac = "00:1A:2B:3C:4D:5E",
                                                  .ip = "192.0.2.20",
                                                  .mask = "255.255.255.128",
                                                  .gateway = "192.0.2.1",
                                                  .model = "FC-1200M",
                                                  .serial = "0123",
                                                  .userName = "left",
                                                  .ipConfig = 2,
                                                  .adapter = "192.0.2.5"});

    device.InitDeviceInfo(record);

    EXPECT_EQ(device.m_pDeviceInfo, record);
    EXPECT_EQ(device.m_strModelName, "FC-1200M");
    EXPECT_EQ(device.m_strUserDefinedName, "left");
    EXPECT_EQ(device.m_strSerialNumber, "0123");
    EXPECT_EQ(device.m_strMacAddress, "00:1A:2B:3C:4D:5E");
    EXPECT_EQ(device.m_strStatus, "Free");
    EXPECT_EQ(device.m_strIpConfigType, "DHCP");
    EXPECT_EQ(device.m_strIpAddress, "192.0.2.20");
    EXPECT_EQ(device.m_strSubnetMask, "255.255.255.128");
    EXPECT_EQ(device.m_strDefaultGateway, "192.0.2.1");
    EXPECT_EQ(device.m_nNetExport, "192.0.2.5"_ip.number());
    EXPECT_EQ(device.m_strReserved, "kept");
    ASSERT_EQ(device.m_vecHostAdapter.size(), 1);
    EXPECT_EQ(device.m_vecHostAdapter[0].nIpAddress, "10.0.0.1"_ip.number());
}

TEST_F(QDeviceTest, FormatsTheMacAddressFromBothWords)
{
    RZ_CC_DEVICE_INFO* const record = sdk.record({});
    record->nMacHigh = 0x0000001A;
    record->nMacLow = 0x2B3C4D5E;
    QDevice device;
    device.InitDeviceInfo(record);
    EXPECT_EQ(device.m_strMacAddress, "00:1A:2B:3C:4D:5E");

    record->nMacHigh = 0xFFFF0A0B; // only the low 16 bits are MAC bytes
    record->nMacLow = 0x00000001;
    device.InitDeviceInfo(record);
    EXPECT_EQ(device.m_strMacAddress, "0A:0B:00:00:00:01");
}

TEST_F(QDeviceTest, NamesTheIpConfigurationStaticBeforeDhcpBeforeLla)
{
    EXPECT_EQ(decoded({.ipConfig = 1}).m_strIpConfigType, "Static IP");
    EXPECT_EQ(decoded({.ipConfig = 3}).m_strIpConfigType, "Static IP");
    EXPECT_EQ(decoded({.ipConfig = 7}).m_strIpConfigType, "Static IP");
    EXPECT_EQ(decoded({.ipConfig = 2}).m_strIpConfigType, "DHCP");
    EXPECT_EQ(decoded({.ipConfig = 6}).m_strIpConfigType, "DHCP");
    EXPECT_EQ(decoded({.ipConfig = 0}).m_strIpConfigType, "LLA");
    EXPECT_EQ(decoded({.ipConfig = 4}).m_strIpConfigType, "LLA");
}

TEST_F(QDeviceTest, DecodesTextsAsUtf8WhateverTheLocale)
{
    QTextCodec* const before = QTextCodec::codecForLocale();
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("ISO-8859-1"));
    const QDevice device = decoded({.model = "工业相机", .serial = "№7", .userName = "Größe"});
    QTextCodec::setCodecForLocale(before);
    EXPECT_EQ(device.m_strModelName, QStringLiteral("工业相机"));
    EXPECT_EQ(device.m_strSerialNumber, QStringLiteral("№7"));
    EXPECT_EQ(device.m_strUserDefinedName, QStringLiteral("Größe"));
}

TEST_F(QDeviceTest, ATextWithoutNulReadsOnIntoTheFollowingBytes)
{
    RZ_CC_DEVICE_INFO* const record = sdk.record({});
    std::memset(record->stGigEInfo.szModelName, 'A', sizeof record->stGigEInfo.szModelName);
    std::strcpy(record->stGigEInfo.szDeviceVersion, "v1");
    QDevice device;
    device.InitDeviceInfo(record);
    EXPECT_EQ(device.m_strModelName, QString(32, 'A') + "v1");
}

TEST_F(QDeviceTest, ATextWithoutNulEndsWithTheBlockAtTheLatest)
{
    RZ_CC_DEVICE_INFO* const record = sdk.record({});
    RZ_GIGE_DEVICE_INFO& block = record->stGigEInfo;
    std::memset(reinterpret_cast<char*>(&block) + offsetof(RZ_GIGE_DEVICE_INFO, szUserDefinedName), 'B',
                sizeof block - offsetof(RZ_GIGE_DEVICE_INFO, szUserDefinedName));
    QDevice device;
    device.InitDeviceInfo(record);
    EXPECT_EQ(device.m_strUserDefinedName, QString(36, 'B'));
}

TEST_F(QDeviceTest, ANullRecordChangesNothing)
{
    QDevice device = decoded({.model = "M", .ipConfig = 1});
    const RZ_CC_DEVICE_INFO* const record = device.m_pDeviceInfo;
    device.InitDeviceInfo(nullptr);
    EXPECT_EQ(device.m_pDeviceInfo, record);
    EXPECT_EQ(device.m_strModelName, "M");
    EXPECT_EQ(device.m_strIpConfigType, "Static IP");
    EXPECT_EQ(device.m_strStatus, "Free");
}

TEST_F(QDeviceTest, IsReachableInTheSubnetOfTheAdaptersMask)
{
    QDevice device;
    device.m_vecHostAdapter = {{"192.168.1.5"_ip.number(), "255.255.0.0"_ip.number()}};
    EXPECT_TRUE(device.IsReachable(sdk.record({.ip = "192.168.1.20", .adapter = "192.168.1.5"})));
    EXPECT_TRUE(device.IsReachable(sdk.record({.ip = "192.168.2.20", .adapter = "192.168.1.5"})));
    EXPECT_FALSE(device.IsReachable(sdk.record({.ip = "192.169.1.20", .adapter = "192.168.1.5"})));
}

TEST_F(QDeviceTest, AnAdapterOutsideTheSnapshotCountsAsASlash24)
{
    QDevice device;
    device.m_vecHostAdapter = {{"192.168.1.6"_ip.number(), "255.255.0.0"_ip.number()}};
    EXPECT_TRUE(device.IsReachable(sdk.record({.ip = "192.168.1.20", .adapter = "192.168.1.5"})));
    EXPECT_FALSE(device.IsReachable(sdk.record({.ip = "192.168.2.20", .adapter = "192.168.1.5"})));
}

TEST_F(QDeviceTest, OfSeveralAdaptersWithOneAddressTheLastMaskDecides)
{
    RZ_CC_DEVICE_INFO* const record = sdk.record({.ip = "192.168.2.20", .adapter = "192.168.1.5"});
    QDevice device;
    device.m_vecHostAdapter = {{"192.168.1.5"_ip.number(), "255.255.255.0"_ip.number()},
                               {"192.168.1.5"_ip.number(), "255.255.0.0"_ip.number()},
                               {"10.0.0.1"_ip.number(), "255.0.0.0"_ip.number()}};
    EXPECT_TRUE(device.IsReachable(record));
    device.m_vecHostAdapter = {{"192.168.1.5"_ip.number(), "255.255.0.0"_ip.number()},
                               {"192.168.1.5"_ip.number(), "255.255.255.0"_ip.number()}};
    EXPECT_FALSE(device.IsReachable(record));
}

TEST_F(QDeviceTest, TheCamerasOwnMaskPlaysNoPartInReachability)
{
    QDevice device;
    device.m_vecHostAdapter = {{"192.168.1.5"_ip.number(), "255.255.255.0"_ip.number()}};
    const SdkDouble::Camera wide{.ip = "192.168.2.20", .mask = "255.0.0.0", .adapter = "192.168.1.5"};
    EXPECT_FALSE(device.IsReachable(sdk.record(wide)));
    EXPECT_TRUE(device.IsReachable(
        sdk.record({.ip = "192.168.1.20", .mask = "255.255.255.255", .adapter = "192.168.1.5"})));
    device.m_vecHostAdapter.clear();
    EXPECT_FALSE(device.IsReachable(sdk.record(wide)));
}

TEST_F(QDeviceTest, NoRecordIsNeitherReachableNorInAnyState)
{
    const QDevice device;
    EXPECT_FALSE(device.IsReachable(nullptr));
    EXPECT_EQ(device.GetDeviceState(nullptr), -1);
    EXPECT_THAT(sdk.calls(), IsEmpty());
}

TEST_F(QDeviceTest, AReachableCameraIsAskedForExclusiveAccess)
{
    const QDevice free = decoded({.mac = "00:00:00:00:00:01"});
    EXPECT_EQ(free.m_strStatus, "Free");
    EXPECT_EQ(free.GetDeviceState(free.m_pDeviceInfo), 0);

    sdk.isDeviceAccessible = [](const RZ_CC_DEVICE_INFO*) { return false; };
    const QDevice held = decoded({.mac = "00:00:00:00:00:02"});
    EXPECT_EQ(held.m_strStatus, "In Use");
    EXPECT_EQ(held.GetDeviceState(held.m_pDeviceInfo), 1);

    EXPECT_THAT(sdk.calls(), ElementsAre("IsDeviceAccessible(00:00:00:00:00:01, 1)",
                                         "IsDeviceAccessible(00:00:00:00:00:01, 1)",
                                         "IsDeviceAccessible(00:00:00:00:00:02, 1)",
                                         "IsDeviceAccessible(00:00:00:00:00:02, 1)"));
}

TEST_F(QDeviceTest, AnUnreachableCameraIsNotAskedForAccess)
{
    const QDevice device = decoded({.ip = "198.51.100.20"});
    EXPECT_EQ(device.m_strStatus, "Unreachable");
    EXPECT_EQ(device.GetDeviceState(device.m_pDeviceInfo), 2);
    EXPECT_THAT(sdk.calls(), IsEmpty());
}

TEST_F(QDeviceTest, StatusAndIpConfigurationAreTranslatedInTheContextQObject)
{
    MarkingTranslator translator;
    ASSERT_TRUE(QCoreApplication::installTranslator(&translator));
    EXPECT_EQ(decoded({.ipConfig = 1}).m_strStatus, "<Free>");
    EXPECT_EQ(decoded({.ip = "198.51.100.20"}).m_strStatus, "<Unreachable>");
    EXPECT_EQ(decoded({.ipConfig = 1}).m_strIpConfigType, "<Static IP>");
    EXPECT_EQ(decoded({.ipConfig = 2}).m_strIpConfigType, "<DHCP>");
    EXPECT_EQ(decoded({.ipConfig = 4}).m_strIpConfigType, "<LLA>");
    sdk.isDeviceAccessible = [](const RZ_CC_DEVICE_INFO*) { return false; };
    EXPECT_EQ(decoded({}).m_strStatus, "<In Use>");
}

TEST_F(QDeviceTest, StatusAndIpConfigurationAreReadBackInEveryLanguage)
{
    const auto expectReadBack = [](CameraStatus status, IpConfigType type) {
        QDevice device;
        device.m_strStatus = ToText(status);
        device.m_strIpConfigType = ToText(type);
        EXPECT_EQ(device.Status(), status) << qPrintable(device.m_strStatus);
        EXPECT_EQ(device.ConfigType(), type) << qPrintable(device.m_strIpConfigType);
    };
    MarkingTranslator translator;
    for (const bool translated : {false, true}) {
        if (translated) {
            ASSERT_TRUE(QCoreApplication::installTranslator(&translator));
        }
        expectReadBack(CameraStatus::Free, IpConfigType::Static);
        expectReadBack(CameraStatus::InUse, IpConfigType::Dhcp);
        expectReadBack(CameraStatus::Unreachable, IpConfigType::LinkLocal);
    }
}

TEST_F(QDeviceTest, ATextThatNamesNoStatusAndNoIpConfigurationIsReadAsNone)
{
    QDevice device;
    const auto expectNone = [&device] {
        EXPECT_EQ(device.Status(), std::nullopt);
        EXPECT_EQ(device.ConfigType(), std::nullopt);
    };
    expectNone();
    device.m_strStatus = "free";
    device.m_strIpConfigType = "Free";
    expectNone();

    device = decoded({.ipConfig = 1});
    MarkingTranslator translator;
    ASSERT_TRUE(QCoreApplication::installTranslator(&translator));
    expectNone(); // It still speaks the language of before.
}

TEST_F(QDeviceTest, GetIpReadsDottedText)
{
    EXPECT_EQ(QDevice::GetIP(""), 0u);
    EXPECT_EQ(QDevice::GetIP("192.168.1.10"), "192.168.1.10"_ip.number());
    EXPECT_EQ(QDevice::GetIP("255.255.255.255"), "255.255.255.255"_ip.number());
    EXPECT_EQ(QDevice::GetIP("0.0.0.0"), 0u);
}

TEST_F(QDeviceTest, GetIpLetsAPartAbove255SpillIntoTheNeighbouringOctet)
{
    EXPECT_EQ(QDevice::GetIP("1.2.3.300"), 0x0102032Cu); // 0x01020300 | 0x12C: the 1 is in the 3 already
    EXPECT_EQ(QDevice::GetIP("1.2.256.0"), 0x01030000u);
    EXPECT_EQ(QDevice::GetIP("256.0.0.1"), 1u); // above the top octet it is gone
    EXPECT_EQ(QDevice::GetIP("0.0.0.65536"), 0x00010000u);
}

TEST_F(QDeviceTest, GetIpCountsWhatIsNoNumberAsZero)
{
    EXPECT_EQ(QDevice::GetIP("192.x.1.10"), 0xC000010Au);
    EXPECT_EQ(QDevice::GetIP("192..1.10"), 0xC000010Au);
    EXPECT_EQ(QDevice::GetIP("192.168.1"), 0xC0A80100u);
    EXPECT_EQ(QDevice::GetIP("0x10.168.1.A"), 0x00A80100u);
    EXPECT_EQ(QDevice::GetIP("1.2.3.4.5"), 0x01020300u); // "4.5" is no number
}

TEST_F(QDeviceTest, GetNetExportIsMinusOneUntilThereIsARecord)
{
    EXPECT_EQ(QDevice().GetNetExport(), -1);
    const QDevice device = decoded({.ip = "192.168.1.20", .adapter = "192.168.1.5"});
    EXPECT_EQ(device.GetNetExport(), static_cast<int>("192.168.1.5"_ip.number()));
    EXPECT_EQ(device.m_nNetExport, "192.168.1.5"_ip.number());
}

TEST_F(QDeviceTest, GetNetExportFollowsTheRecordAndTheCopyStays)
{
    const QDevice device = decoded({});
    device.m_pDeviceInfo->stGigEInfo.nNetExportIp = "10.0.0.1"_ip.number();
    EXPECT_EQ(device.GetNetExport(), "10.0.0.1"_ip.number());
    EXPECT_EQ(device.m_nNetExport, "192.0.2.5"_ip.number());
}

TEST_F(QDeviceTest, ACopyCarriesEveryMember)
{
    QDevice device = decoded({.model = "M", .serial = "S", .userName = "U", .ipConfig = 1});
    device.m_strReserved = "R";
    device.m_vecHostAdapter = {{1, 2}, {3, 4}};

    const QDevice copy = device;
    EXPECT_EQ(copy.m_pDeviceInfo, device.m_pDeviceInfo);
    EXPECT_EQ(copy.m_strModelName, "M");
    EXPECT_EQ(copy.m_strSerialNumber, "S");
    EXPECT_EQ(copy.m_strUserDefinedName, "U");
    EXPECT_EQ(copy.m_strMacAddress, device.m_strMacAddress);
    EXPECT_EQ(copy.m_strStatus, "Free");
    EXPECT_EQ(copy.m_strIpConfigType, "Static IP");
    EXPECT_EQ(copy.m_strIpAddress, device.m_strIpAddress);
    EXPECT_EQ(copy.m_strSubnetMask, device.m_strSubnetMask);
    EXPECT_EQ(copy.m_strDefaultGateway, device.m_strDefaultGateway);
    EXPECT_EQ(copy.m_strReserved, "R");
    EXPECT_EQ(copy.m_nNetExport, device.m_nNetExport);

    QVector<_NETWORK_INFO> adapters = {{9, 9}};
    copy.GetNetWorkVector(adapters);
    ASSERT_EQ(adapters.size(), 2);
    EXPECT_EQ(adapters[1].nIpAddress, 3u);
    EXPECT_EQ(adapters[1].nSubnetMask, 4u);
}
