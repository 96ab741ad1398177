// SPDX-License-Identifier: Apache-2.0
#include "device/QDeviceManager.h"

#include "sdk/RzCameraSdk.h"
#include "tests/device/QtFixture.h"
#include "tests/support/SdkDouble.h"

#include <QTranslator>

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class QDeviceManagerTest : public QtFixture
{
protected:
    enum Status
    {
        Free,
        InUse,
        Unreachable
    };

    /// A camera that will have this status, with a name to know the report by.
    RZ_CC_DEVICE_INFO* report(const std::string& mac, Status status, const std::string& name)
    {
        RZ_CC_DEVICE_INFO* const record = sdk.record(
            {.mac = mac, .ip = status == Unreachable ? "198.51.100.9" : "192.0.2.9", .userName = name});
        if (status == InUse)
            m_held.push_back(record);
        return record;
    }

    void SetUp() override
    {
        sdk.isDeviceAccessible = [this](const RZ_CC_DEVICE_INFO* record) {
            return std::find(m_held.begin(), m_held.end(), record) == m_held.end();
        };
    }

    void enumerate(std::vector<RZ_CC_DEVICE_INFO*> records)
    {
        sdk.listed = std::move(records);
        manager.EnumGigEDevices();
    }

    static RZ_CC_DEVICE_INFO_LIST listOf(std::initializer_list<RZ_CC_DEVICE_INFO*> records)
    {
        RZ_CC_DEVICE_INFO_LIST list{};
        list.nDeviceCount = static_cast<uint32_t>(records.size());
        std::copy(records.begin(), records.end(), list.apDeviceInfo);
        return list;
    }

    /// The list, each device as "name status".
    std::vector<std::string> rows() const
    {
        QVector<QDevice> devices;
        manager.GetAllDevices(devices);
        std::vector<std::string> result;
        for (const QDevice& device : devices)
            result.push_back((device.m_strUserDefinedName + ' ' + device.m_strStatus).toStdString());
        return result;
    }

    /// What FilterDevice leaves of these reports of one camera.
    std::vector<std::string> filtered(std::initializer_list<RZ_CC_DEVICE_INFO*> records)
    {
        const RZ_CC_DEVICE_INFO_LIST list = listOf(records);
        manager.InitMyDeviceList(&list);
        manager.FilterDevice();
        return rows();
    }

    static constexpr const char* MacA = "00:00:00:00:00:01";
    static constexpr const char* MacB = "00:00:00:00:00:02";
    static constexpr const char* MacC = "00:00:00:00:00:03";

    SdkDouble sdk;
    QDeviceManager manager;

private:
    std::vector<const RZ_CC_DEVICE_INFO*> m_held;
};

} // namespace

TEST_F(QDeviceManagerTest, BeginsEmpty)
{
    QDevice device;
    EXPECT_THAT(rows(), IsEmpty());
    EXPECT_FALSE(manager.GetOneDevice(0, device));
    EXPECT_EQ(manager.GetTheOperaDevice(), 0);
    EXPECT_THAT(sdk.calls(), IsEmpty());
}

TEST_F(QDeviceManagerTest, AnEnumerationListsAllCamerasInOrder)
{
    enumerate({report(MacC, InUse, "c"), report(MacA, Free, "a"), report(MacB, Unreachable, "b")});
    EXPECT_THAT(rows(), ElementsAre("a Free", "b Unreachable", "c In Use"));
    EXPECT_THAT(sdk.calls(),
                ElementsAre("EnumerateTls()", "EnumDevices(1)", "IsDeviceAccessible(00:00:00:00:00:03, 1)",
                            "IsDeviceAccessible(00:00:00:00:00:01, 1)"));
}

TEST_F(QDeviceManagerTest, AnyModelIsListed)
{
    enumerate({sdk.record({.mac = MacA, .model = "Other"}), sdk.record({.mac = MacB, .model = ""})});
    EXPECT_THAT(rows(), ElementsAre("Name Free", "Name Free"));
}

TEST_F(QDeviceManagerTest, AnEnumerationThatFindsNoCameraEmptiesTheList)
{
    enumerate({report(MacA, Free, "a")});
    enumerate({});
    EXPECT_THAT(rows(), IsEmpty());
}

TEST_F(QDeviceManagerTest, WithoutGigETransportLayerNothingIsEnumerated)
{
    enumerate({report(MacA, Free, "a")});
    sdk.enumerateTls = [] { return ~RZ_TL_GIGE; };
    const size_t callsBefore = sdk.calls().size();
    enumerate({});
    EXPECT_THAT(rows(), ElementsAre("a Free"));
    EXPECT_EQ(sdk.calls().size(), callsBefore + 1);
}

TEST_F(QDeviceManagerTest, OtherTransportLayersBesideGigEDoNotMatter)
{
    sdk.enumerateTls = [] { return ~0u; };
    enumerate({report(MacA, Free, "a")});
    EXPECT_THAT(rows(), ElementsAre("a Free"));
}

TEST_F(QDeviceManagerTest, AFailedEnumerationKeepsTheOldList)
{
    enumerate({report(MacA, Free, "a")});
    RZ_CC_DEVICE_INFO* const other = report(MacB, Free, "b");
    for (int error : {1, -1}) {
        sdk.enumDevices = [=](RZ_CC_DEVICE_INFO_LIST& list) {
            list.nDeviceCount = 1;
            list.apDeviceInfo[0] = other;
            return error;
        };
        manager.EnumGigEDevices();
        EXPECT_THAT(rows(), ElementsAre("a Free")) << error;
    }
}

TEST_F(QDeviceManagerTest, TheSdkGetsAListOfZeros)
{
    enumerate({report(MacA, Free, "a")});
    bool allZero = false;
    sdk.enumDevices = [&](RZ_CC_DEVICE_INFO_LIST& list) {
        const char* bytes = reinterpret_cast<const char*>(&list);
        allZero = std::all_of(bytes, bytes + sizeof list, [](char byte) { return byte == 0; });
        return 0;
    };
    manager.EnumGigEDevices();
    EXPECT_TRUE(allZero);
    EXPECT_THAT(rows(), IsEmpty());
}

TEST_F(QDeviceManagerTest, TakesAFullListOf256Cameras)
{
    for (unsigned i = 0; i < 256; ++i) {
        char mac[18];
        std::snprintf(mac, sizeof mac, "00:00:00:00:%02u:%02u", i / 10, i % 10);
        sdk.listed.insert(sdk.listed.begin(), report(mac, Free, std::to_string(i)));
    }
    manager.EnumGigEDevices();
    ASSERT_EQ(rows().size(), 256u);
    EXPECT_EQ(rows().front(), "0 Free");
    EXPECT_EQ(rows().back(), "255 Free");
}

TEST_F(QDeviceManagerTest, InitMyDeviceListTakesTheRecordsAsTheyCome)
{
    const RZ_CC_DEVICE_INFO_LIST list =
        listOf({report(MacC, Free, "c"), report(MacA, Free, "a"), report(MacC, InUse, "again")});
    manager.InitMyDeviceList(&list);
    EXPECT_THAT(rows(), ElementsAre("c Free", "a Free", "again In Use"));
}

TEST_F(QDeviceManagerTest, InitMyDeviceListWithoutAListChangesNothing)
{
    enumerate({report(MacA, Free, "a")});
    manager.InitMyDeviceList(nullptr);
    EXPECT_THAT(rows(), ElementsAre("a Free"));
}

TEST_F(QDeviceManagerTest, ANegativeCountIsAnEmptyList)
{
    enumerate({report(MacA, Free, "a")});
    RZ_CC_DEVICE_INFO_LIST list = listOf({report(MacB, Free, "b")});
    list.nDeviceCount = 0x80000000;
    manager.InitMyDeviceList(&list);
    EXPECT_THAT(rows(), IsEmpty());
}

TEST_F(QDeviceManagerTest, NoMoreThanAListHoldsIsReadOfIt)
{
    RZ_CC_DEVICE_INFO_LIST list{};
    std::fill(std::begin(list.apDeviceInfo), std::end(list.apDeviceInfo), report(MacA, Free, "a"));
    list.nDeviceCount = 257;
    manager.InitMyDeviceList(&list);
    EXPECT_EQ(rows().size(), 256u);
}

TEST_F(QDeviceManagerTest, ANullEntryRepeatsTheDeviceBeforeIt)
{
    const RZ_CC_DEVICE_INFO_LIST list = listOf({report(MacA, InUse, "a"), nullptr, report(MacB, Free, "b")});
    manager.InitMyDeviceList(&list);
    EXPECT_THAT(rows(), ElementsAre("a In Use", "a In Use", "b Free"));
}

TEST_F(QDeviceManagerTest, ALeadingNullEntryIsWhateverWasDecodedLast)
{
    const RZ_CC_DEVICE_INFO_LIST first = listOf({nullptr});
    manager.InitMyDeviceList(&first);
    EXPECT_THAT(rows(), ElementsAre(" "));

    enumerate({report(MacB, Free, "b"), report(MacA, Free, "a")}); // decoded in this order
    const RZ_CC_DEVICE_INFO_LIST second = listOf({nullptr, report(MacC, Free, "c")});
    manager.InitMyDeviceList(&second);
    EXPECT_THAT(rows(), ElementsAre("a Free", "c Free"));
}

TEST_F(QDeviceManagerTest, OfOneCamerasReportsTheFirstReachableOneIsKept)
{
    EXPECT_THAT(filtered({report(MacA, Unreachable, "1"), report(MacA, Free, "2")}), ElementsAre("2 Free"));
    EXPECT_THAT(filtered({report(MacA, Unreachable, "1"), report(MacA, InUse, "2")}),
                ElementsAre("2 In Use"));
    EXPECT_THAT(filtered({report(MacA, Free, "1"), report(MacA, Unreachable, "2")}), ElementsAre("1 Free"));
    EXPECT_THAT(filtered({report(MacA, InUse, "1"), report(MacA, Unreachable, "2")}),
                ElementsAre("1 In Use"));
    EXPECT_THAT(filtered({report(MacA, Unreachable, "1"), report(MacA, InUse, "2"), report(MacA, Free, "3")}),
                ElementsAre("2 In Use"));
    EXPECT_THAT(
        filtered({report(MacA, Unreachable, "1"), report(MacA, Unreachable, "2"), report(MacA, Free, "3")}),
        ElementsAre("3 Free"));
}

TEST_F(QDeviceManagerTest, OfSeveralReachableReportsTheFirstStays)
{
    EXPECT_THAT(filtered({report(MacA, InUse, "1"), report(MacA, Free, "2")}), ElementsAre("1 In Use"));
    EXPECT_THAT(filtered({report(MacA, Free, "1"), report(MacA, InUse, "2")}), ElementsAre("1 Free"));
    EXPECT_THAT(filtered({report(MacA, Free, "1"), report(MacA, Free, "2")}), ElementsAre("1 Free"));
    EXPECT_THAT(filtered({report(MacA, InUse, "1"), report(MacA, InUse, "2")}), ElementsAre("1 In Use"));
}

TEST_F(QDeviceManagerTest, OfSeveralUnreachableReportsTheFirstStays)
{
    EXPECT_THAT(filtered({report(MacA, Unreachable, "1"), report(MacA, Unreachable, "2")}),
                ElementsAre("1 Unreachable"));
}

TEST_F(QDeviceManagerTest, AReachableReportTakesThePlaceOfTheFirstOne)
{
    EXPECT_THAT(filtered({report(MacC, Unreachable, "c1"), report(MacA, Free, "a"),
                          report(MacB, Unreachable, "b"), report(MacC, Free, "c2")}),
                ElementsAre("c2 Free", "a Free", "b Unreachable"));
    EXPECT_THAT(filtered({report(MacA, Free, "a"), report(MacC, Unreachable, "c1"), report(MacC, InUse, "c2"),
                          report(MacB, Free, "b")}),
                ElementsAre("a Free", "c2 In Use", "b Free"));
}

TEST_F(QDeviceManagerTest, FilteringNothingLeavesNothing)
{
    EXPECT_THAT(filtered({}), IsEmpty());
}

TEST_F(QDeviceManagerTest, ACameraHeardOnTwoAdaptersIsListedOnceAsTheOneThatReachesIt)
{
    enumerate({sdk.record({.mac = MacA, .ip = "198.51.100.7", .adapter = "192.0.2.5"}),
               sdk.record({.mac = MacA, .ip = "198.51.100.7", .adapter = "198.51.100.5"})});
    QDevice device;
    ASSERT_TRUE(manager.GetOneDevice(0, device));
    EXPECT_EQ(rows().size(), 1u);
    EXPECT_EQ(device.m_strStatus, "Free");
    EXPECT_EQ(device.m_nNetExport, SdkDouble::address("198.51.100.5"));
    EXPECT_EQ(device.m_pDeviceInfo, sdk.listed[1]);
}

TEST_F(QDeviceManagerTest, RepeatsAreRemovedInTheOrderInWhichTheyWereReported)
{
    // Sorting turns two equal ones round.
    enumerate({report(MacA, InUse, "1"), report(MacA, Free, "2")});
    EXPECT_THAT(rows(), ElementsAre("1 In Use"));
}

TEST_F(QDeviceManagerTest, CamerasThatSortEquallyMoveAsThePartitionMovesThem)
{
    enumerate({report("00:00:00:00:00:0A", Free, "a"), report("00:00:00:00:00:0B", Free, "b"),
               report("00:00:00:00:00:0C", Free, "c")});
    EXPECT_THAT(rows(), ElementsAre("b Free", "c Free", "a Free"));
}

TEST_F(QDeviceManagerTest, StatusIsComparedAsTranslated)
{
    /// Translates the one text that filtering compares, both when a device is decoded and when it is
    /// compared.
    class Chinese : public QTranslator
    {
    public:
        QString translate(const char*, const char* sourceText, const char*, int) const override
        {
            return qstrcmp(sourceText, "Unreachable") == 0 ? QStringLiteral("不可达") : QString();
        }
        bool isEmpty() const override { return false; }
    };
    Chinese translator;
    ASSERT_TRUE(QCoreApplication::installTranslator(&translator));
    EXPECT_THAT(filtered({report(MacA, Unreachable, "1"), report(MacA, Free, "2")}), ElementsAre("2 Free"));
    EXPECT_THAT(filtered({report(MacA, Unreachable, "1")}), ElementsAre("1 不可达"));
}

TEST_F(QDeviceManagerTest, GetOneDeviceHandsOutTheDeviceOfARow)
{
    enumerate({report(MacA, Free, "a"), report(MacB, InUse, "b")});
    QDevice device;
    ASSERT_TRUE(manager.GetOneDevice(1, device));
    EXPECT_EQ(device.m_strUserDefinedName, "b");
    EXPECT_EQ(device.m_pDeviceInfo, sdk.listed[1]);
}

TEST_F(QDeviceManagerTest, ARowThatDoesNotExistChangesNeitherDeviceNorTheOperatedOne)
{
    enumerate({report(MacA, Free, "a"), report(MacB, Free, "b")});
    QDevice device;
    ASSERT_TRUE(manager.GetOneDevice(1, device));

    for (int row : {-1, 2}) {
        EXPECT_FALSE(manager.GetOneDevice(row, device)) << row;
        EXPECT_EQ(device.m_strUserDefinedName, "b");
        EXPECT_EQ(manager.GetTheOperaDevice(), 1);
    }
}

TEST_F(QDeviceManagerTest, TheOperatedDeviceIsFoundAgainByItsMacAddress)
{
    enumerate({report(MacB, Free, "b"), report(MacC, Free, "c")});
    QDevice device;
    ASSERT_TRUE(manager.GetOneDevice(1, device)); // c
    EXPECT_EQ(manager.GetTheOperaDevice(), 1);

    enumerate({report(MacA, Free, "a"), report(MacB, Free, "b"), report(MacC, Unreachable, "renamed")});
    EXPECT_EQ(manager.GetTheOperaDevice(), 2);
    enumerate({report(MacA, Free, "a"), report(MacB, Free, "b")});
    EXPECT_EQ(manager.GetTheOperaDevice(), 0);
    enumerate({});
    EXPECT_EQ(manager.GetTheOperaDevice(), 0);
    enumerate({report(MacB, Free, "b"), report(MacC, Free, "c")});
    EXPECT_EQ(manager.GetTheOperaDevice(), 1);
}

TEST_F(QDeviceManagerTest, OfSeveralRowsWithTheOperatedMacAddressTheLastOneCounts)
{
    const RZ_CC_DEVICE_INFO_LIST list = listOf(
        {report(MacA, Free, "1"), report(MacB, Free, "b"), report(MacA, Free, "2"), report(MacC, Free, "c")});
    manager.InitMyDeviceList(&list);
    QDevice device;
    ASSERT_TRUE(manager.GetOneDevice(0, device));
    EXPECT_EQ(manager.GetTheOperaDevice(), 2);
}

TEST_F(QDeviceManagerTest, AListHandedOutStaysWhenTheNextOneIsMade)
{
    enumerate({report(MacA, Free, "a")});
    QVector<QDevice> old;
    manager.GetAllDevices(old);
    enumerate({report(MacB, Free, "b"), report(MacC, Free, "c")});
    ASSERT_EQ(old.size(), 1);
    EXPECT_EQ(old[0].m_strUserDefinedName, "a");
}

TEST_F(QDeviceManagerTest, OurModelsBeginWithTheirPrefix)
{
    const auto isOurs = [](const char* model) {
        QDevice device;
        device.m_strModelName = model;
        return QDeviceManager::IsOurDevice(&device);
    };
    EXPECT_TRUE(isOurs("RZ-"));
    EXPECT_TRUE(isOurs("RZ-1200M"));
    EXPECT_FALSE(isOurs("RZ"));
    EXPECT_FALSE(isOurs(""));
    EXPECT_FALSE(isOurs("rz-1200M"));
    EXPECT_FALSE(isOurs(" RZ-1200M"));
    EXPECT_FALSE(QDeviceManager::IsOurDevice(nullptr));
}
