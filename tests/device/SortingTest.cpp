// SPDX-License-Identifier: Apache-2.0
#include "device/QDeviceManager.h"

#include <gmock/gmock.h>
#include <initializer_list>
#include <string>
#include <utility>

using testing::ElementsAre;

namespace {

QDevice withMac(const QString& macAddress, const QString& name = {})
{
    QDevice device;
    device.m_strMacAddress = macAddress;
    device.m_strUserDefinedName = name;
    return device;
}

bool sortsAfter(const char* a, const char* b)
{
    return QDeviceManager::CompareFunc(withMac(a), withMac(b));
}

/// Devices whose key is the number that the name begins with: "5a" and "5b" have equal ones.
QVector<QDevice> named(std::initializer_list<const char*> names)
{
    QVector<QDevice> devices;
    for (const char* name : names)
        devices.append(withMac(QStringLiteral("00:00:00:00:00:0") + QLatin1Char(name[0]), name));
    return devices;
}

std::vector<std::string> namesOf(const QVector<QDevice>& devices)
{
    std::vector<std::string> names;
    for (const QDevice& device : devices)
        names.push_back(device.m_strUserDefinedName.toStdString());
    return names;
}

std::vector<std::string> sorted(QVector<QDevice> devices)
{
    QDeviceManager::QuickSort(devices, 0, devices.size() - 1);
    return namesOf(devices);
}

} // namespace

TEST(CompareFuncTest, ReadsPartsAsDecimalNumbers)
{
    EXPECT_TRUE(sortsAfter("00:00:00:00:00:10", "00:00:00:00:00:09"));
    EXPECT_FALSE(sortsAfter("00:00:00:00:00:09", "00:00:00:00:00:10"));
}

TEST(CompareFuncTest, ReadsEachPartAsADecimalNumber)
{
    // Ten counts ten and not sixteen: a little less than the other half.
    const std::pair<const char*, const char*> halves[] = {
        {"10:00:00", "00:99:99"}, {"00:10:00", "01:00:01"}, {"00:00:10", "00:01:01"}};
    for (const auto& [ten, more] : halves) {
        for (const bool isHigh : {true, false}) {
            const auto macOf = [isHigh](const std::string& half) {
                return isHigh ? half + ":00:00:00" : "00:00:00:" + half;
            };
            EXPECT_TRUE(sortsAfter(macOf(more).c_str(), macOf(ten).c_str())) << macOf(ten);
            EXPECT_FALSE(sortsAfter(macOf(ten).c_str(), macOf(more).c_str())) << macOf(ten);
        }
    }
}

TEST(CompareFuncTest, APartWithALetterCountsZero)
{
    EXPECT_TRUE(sortsAfter("00:00:00:00:00:01", "00:00:00:00:00:0A"));
    EXPECT_FALSE(sortsAfter("00:00:00:00:00:0A", "00:00:00:00:00:01"));
    // Also one that begins with a digit other than zero.
    EXPECT_TRUE(sortsAfter("00:00:00:00:00:01", "00:00:00:00:00:9A"));
    EXPECT_FALSE(sortsAfter("00:00:00:00:00:9A", "00:00:00:00:00:01"));
    // Two parts with letters are equal, whatever they say.
    EXPECT_FALSE(sortsAfter("00:00:00:00:00:FF", "00:00:00:00:00:A0"));
    EXPECT_FALSE(sortsAfter("00:00:00:00:00:A0", "00:00:00:00:00:FF"));
}

TEST(CompareFuncTest, WeighsThePartsOfAHalf100And10And1)
{
    // 0*100 + 12*10 + 0 = 120 against 1*100 = 100.
    EXPECT_TRUE(sortsAfter("00:12:00:00:00:00", "01:00:00:00:00:00"));
    EXPECT_FALSE(sortsAfter("01:00:00:00:00:00", "00:12:00:00:00:00"));
    // 10*10 = 1*100: equal halves.
    EXPECT_FALSE(sortsAfter("00:10:00:00:00:00", "01:00:00:00:00:00"));
    EXPECT_FALSE(sortsAfter("01:00:00:00:00:00", "00:10:00:00:00:00"));
    // In the low half too: 0*100 + 9*10 + 99 = 189 against 1*100 + 8*10 + 8 = 188.
    EXPECT_TRUE(sortsAfter("00:00:00:00:09:99", "00:00:00:01:08:08"));
    EXPECT_FALSE(sortsAfter("00:00:00:01:08:08", "00:00:00:00:09:99"));
}

TEST(CompareFuncTest, TheHighHalfDecidesBeforeTheLowHalf)
{
    EXPECT_TRUE(sortsAfter("00:00:01:00:00:00", "00:00:00:99:99:99"));
    EXPECT_FALSE(sortsAfter("00:00:00:99:99:99", "00:00:01:00:00:00"));
}

TEST(CompareFuncTest, EqualAddressesSortAfterNeither)
{
    EXPECT_FALSE(sortsAfter("00:11:22:33:44:55", "00:11:22:33:44:55"));
}

TEST(CompareFuncTest, ATextOfOtherThanSixPartsSortsAfterNothing)
{
    for (const char* text : {"", "99", "99:99:99:99:99", "99:99:99:99:99:99:99", "99:99:99:99:99:99:"}) {
        EXPECT_FALSE(sortsAfter(text, "00:00:00:00:00:00")) << text;
        EXPECT_FALSE(sortsAfter("99:99:99:99:99:99", text)) << text;
    }
}

TEST(CompareFuncTest, EmptyPartsAreParts)
{
    EXPECT_TRUE(sortsAfter(":::::1", ":::::")); // six empty parts: all zero
}

TEST(QuickSortTest, LeavesNothingAndOneAsTheyAre)
{
    EXPECT_THAT(sorted({}), ElementsAre());
    EXPECT_THAT(sorted(named({"3"})), ElementsAre("3"));
}

TEST(QuickSortTest, SortsAscending)
{
    EXPECT_THAT(sorted(named({"2", "1"})), ElementsAre("1", "2"));
    EXPECT_THAT(sorted(named({"1", "2", "3", "4"})), ElementsAre("1", "2", "3", "4"));
    EXPECT_THAT(sorted(named({"4", "3", "2", "1"})), ElementsAre("1", "2", "3", "4"));
    EXPECT_THAT(sorted(named({"5", "3", "9", "1", "7", "2", "8", "4", "6"})),
                ElementsAre("1", "2", "3", "4", "5", "6", "7", "8", "9"));
}

TEST(QuickSortTest, MovesEqualKeysAsThePartitionDoes)
{
    EXPECT_THAT(sorted(named({"1a", "1b"})), ElementsAre("1b", "1a"));
    EXPECT_THAT(sorted(named({"1a", "1b", "1c"})), ElementsAre("1b", "1c", "1a"));
    EXPECT_THAT(sorted(named({"1a", "1b", "1c", "1d"})), ElementsAre("1b", "1c", "1d", "1a"));
}

TEST(QuickSortTest, EqualKeysEndUpOnTheLeftOfThePivot)
{
    EXPECT_THAT(sorted(named({"5a", "9", "5b", "1"})), ElementsAre("1", "5b", "5a", "9"));
    EXPECT_THAT(sorted(named({"5a", "5b", "1"})), ElementsAre("1", "5b", "5a"));
}

TEST(QuickSortTest, SortsOnlyWithinItsBounds)
{
    QVector<QDevice> devices = named({"9", "3", "2", "1", "0"});
    QDeviceManager::QuickSort(devices, 1, 3);
    EXPECT_THAT(namesOf(devices), ElementsAre("9", "1", "2", "3", "0"));
}

TEST(QuickSortTest, ReturnsAtOnceForEmptyBounds)
{
    QVector<QDevice> none;
    QDeviceManager::QuickSort(none, 0, -1);
    EXPECT_TRUE(none.isEmpty());

    QVector<QDevice> devices = named({"2", "1"});
    QDeviceManager::QuickSort(devices, 1, 1);
    QDeviceManager::QuickSort(devices, 1, 0);
    EXPECT_THAT(namesOf(devices), ElementsAre("2", "1"));
}

TEST(QuickSortTest, ATextThatIsNoMacAddressMovesLikeAnEqualKey)
{
    QVector<QDevice> devices = named({"9", "0", "1"});
    devices[1] = withMac("no address", "none");
    EXPECT_THAT(sorted(devices), ElementsAre("none", "1", "9"));
}

TEST(QuickSortTest, TakesAsManyAsAnEnumerationGives)
{
    QVector<QDevice> devices;
    for (int i = 0; i < 256; ++i)
        devices.append(withMac(QString::asprintf("00:00:00:00:%02d:%02d", i / 10, i % 10)));
    const QVector<QDevice> before = devices;
    QDeviceManager::QuickSort(devices, 0, 255);
    for (int i = 0; i < 256; ++i)
        EXPECT_EQ(devices[i].m_strMacAddress, before[i].m_strMacAddress) << i;
}
