// SPDX-License-Identifier: Apache-2.0
#include "ui/Tidings.h"
#include "ui/Observation.h"
#include "ui/Spoken.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using inventory::Conflict;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

QDevice camera(const char* mac, const char* name, const char* ip, quint32 adapter = 1)
{
    QDevice device;
    device.m_strMacAddress = mac;
    device.m_strUserDefinedName = name;
    device.m_strIpAddress = ip;
    device.m_nNetExport = adapter;
    return device;
}

inventory::Camera seen(const char* mac, const char* name, const char* ip, std::vector<Conflict> conflicts)
{
    inventory::Camera result;
    result.mac = base::MacAddress::parse(mac).value();
    result.userName = name;
    result.ip.address = base::Ipv4::parse(ip).value();
    result.conflicts = std::move(conflicts);
    return result;
}

std::string count(const QVector<QDevice>& devices)
{
    return CountOf(devices).english();
}

std::vector<std::string> texts(const std::vector<base::Sentence>& sentences)
{
    std::vector<std::string> result;
    for (const base::Sentence& sentence : sentences)
        result.push_back(sentence.english());
    return result;
}

const base::MacAddress First = base::MacAddress::parse("00:00:00:00:00:01").value();
const base::MacAddress Second = base::MacAddress::parse("00:00:00:00:00:02").value();
const base::MacAddress Third = base::MacAddress::parse("00:00:00:00:00:03").value();

} // namespace

TEST(Tidings, CountCamerasAndTheAdaptersThatHeardThem)
{
    EXPECT_EQ(count({}), "No camera");
    EXPECT_EQ(count({camera("1", "", "")}), "1 camera");
    EXPECT_EQ(count({camera("1", "", ""), camera("2", "", "")}), "2 cameras on 1 adapter");
    EXPECT_EQ(count({camera("1", "", ""), camera("2", "", "", 2), camera("3", "", "", 2)}),
              "3 cameras on 2 adapters");
}

TEST(Tidings, CallACameraByItsNameOrElseItsSerialNumberOrElseItsMacAddress)
{
    QDevice device = camera("00:00:00:00:00:01", "Left", "");
    device.m_strSerialNumber = "S1";
    EXPECT_EQ(NameOf(device), "Left");
    device.m_strUserDefinedName.clear();
    EXPECT_EQ(NameOf(device), "S1");
    device.m_strSerialNumber.clear();
    EXPECT_EQ(NameOf(device), "00:00:00:00:00:01");
}

TEST(Tidings, TellOfASaveWhatTheListShowsAndNotWhatWasAsked)
{
    const QDevice before = camera("1", "Left", "10.0.0.1");
    QDevice asked = camera("1", "Right", "10.0.0.2");
    const auto outcome = [&](const QVector<QDevice>& listed) {
        return texts(OutcomeOf(before, asked, listed));
    };
    EXPECT_THAT(outcome({camera("2", "Right", "10.0.0.2"), asked}),
                ElementsAre("Right has the address 10.0.0.2", "Right has its new name"));
    EXPECT_THAT(outcome({before}),
                ElementsAre("Left has not taken the address 10.0.0.2", "Left has not taken the name Right"));
    EXPECT_THAT(outcome({camera("2", "Right", "10.0.0.2")}),
                ElementsAre("Right was not heard after the change"));
    asked = before;
    EXPECT_THAT(outcome({before}), ElementsAre("Left is as it was"));
}

TEST(Observation, TellsEachSharedAddressOnceAndOfEachCameraWithWhom)
{
    Observation observation;
    observation.inventory.cameras = {
        seen("00:00:00:00:00:01", "Left", "10.0.0.9", {{Conflict::With::Camera, Second}}),
        seen("00:00:00:00:00:02", "Right", "10.0.0.9", {{Conflict::With::Camera, First}}),
        seen("00:00:00:00:00:03", "Roof", "10.0.0.5", {{Conflict::With::ThisComputer, {}}}),
        seen("00:00:00:00:00:04", "Gate", "10.0.0.6", {})};
    EXPECT_THAT(texts(observation.Conflicts()),
                ElementsAre("Two cameras have the address 10.0.0.9: Left, Right",
                            "Roof and this computer have the address 10.0.0.5"));
    auto remarks = observation.Remarks();
    EXPECT_THAT(texts(remarks["00:00:00:00:00:01"]),
                ElementsAre("Another camera has the same address: Right (00:00:00:00:00:02)."));
    EXPECT_THAT(texts(remarks["00:00:00:00:00:03"]), ElementsAre("This computer has the same address."));
    EXPECT_THAT(remarks["00:00:00:00:00:04"], IsEmpty());
}

TEST(Observation, TellsOfThreeCamerasAndOfAnotherDeviceWithOneAddress)
{
    const auto with = [](const base::MacAddress& a, const base::MacAddress& b) {
        return std::vector<Conflict>{{Conflict::With::Camera, a}, {Conflict::With::Camera, b}};
    };
    Observation observation;
    observation.inventory.cameras = {seen("00:00:00:00:00:01", "A", "10.0.0.9", with(Second, Third)),
                                     seen("00:00:00:00:00:02", "B", "10.0.0.9", with(First, Third)),
                                     seen("00:00:00:00:00:03", "C", "10.0.0.9", with(First, Second))};
    EXPECT_THAT(texts(observation.Conflicts()), ElementsAre("3 cameras have the address 10.0.0.9: A, B, C"));
    observation.inventory.cameras = {
        seen("00:00:00:00:00:01", "A", "10.0.0.9", {{Conflict::With::Machine, Third}})};
    EXPECT_THAT(texts(observation.Conflicts()),
                ElementsAre("A and another device (00:00:00:00:00:03) have the address 10.0.0.9"));
}

TEST(Spoken, ShowsWhatACameraSaysWithoutObeyingIt)
{
    EXPECT_EQ(Spoken(base::Sentence{"%1 is here", {"a\nb\u202E\\%1"}}), "a\\u000Ab\\u202E\\\\%1 is here");
    EXPECT_EQ(Harmless("\U0001F4F7 \u76F8\u673A"), "\U0001F4F7 \u76F8\u673A");
}

TEST(Spoken, SentencesStandApartAsTheirLanguageHasIt)
{
    EXPECT_EQ(Spoken(std::vector<base::Sentence>{{"One.", {}}, {"Two.", {}}}), "One. Two.");
    EXPECT_EQ(Spoken(std::vector<base::Sentence>{{"\u4E00\u3002", {}}, {"\u4E8C\u3002", {}}}),
              QString::fromUtf8("\u4E00\u3002\u4E8C\u3002"));
}
