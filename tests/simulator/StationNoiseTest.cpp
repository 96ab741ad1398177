// SPDX-License-Identifier: Apache-2.0
#include "tests/simulator/StationFixture.h"

#include <algorithm>
#include <set>

namespace {

using namespace simulator_tests;
using StationNoise = StationFixture;

TEST_F(StationNoise, LosesAboutItsShareOfFramesAndTheSameOnesEachTime)
{
    CameraConfig lossy;
    lossy.loss = 0.1;
    std::vector<bool> runs[2];
    for (std::vector<bool>& run : runs) {
        become(lossy);
        answerArp(NearHost, HostMac); // One of the two gets there.
        for (int i = 0; i < 2000; ++i) {
            sent.clear();
            ask(ReadAddress, NearHost, CameraAddress);
            run.push_back(!sent.empty());
        }
    }
    // Both ways have to work: 0.9 * 0.9 of 2000, give or take five standard deviations.
    EXPECT_NEAR(static_cast<double>(std::count(runs[0].begin(), runs[0].end(), true)), 1620, 90);
    EXPECT_EQ(runs[0], runs[1]);
}

/// Whether a receiver that looks at code, id and contents, and not beyond them, takes it for the answer.
bool isGenuine(const Bytes& payload, const Bytes& genuine)
{
    constexpr long LengthAt = 4;
    return payload.size() >= genuine.size() &&
           std::equal(genuine.begin(), genuine.begin() + LengthAt, payload.begin()) &&
           std::equal(genuine.begin() + LengthAt + 2, genuine.end(), payload.begin() + LengthAt + 2);
}

TEST_F(StationNoise, SendsItsNoiseAlongWithTheGenuineAnswer)
{
    using Kind = NoiseKind;
    ask(DiscoveryWithBroadcast, NearHost);
    const Bytes genuine = sentOf<UdpDatagram>().at(0).payload;

    for (const Kind kind :
         {Kind::Truncated, Kind::Oversized, Kind::Foreign, Kind::Duplicate, Kind::Random, Kind::WrongId}) {
        CameraConfig noisy;
        noisy.noise = {kind};
        become(noisy);
        ask(DiscoveryWithBroadcast, NearHost);
        const auto datagrams = sentOf<UdpDatagram>();
        ASSERT_GT(datagrams.size(), 2u);
        EXPECT_EQ(datagrams.back().payload, genuine);
        for (const UdpDatagram& each : datagrams) {
            EXPECT_LE(each.payload.size(), 1472u);
            EXPECT_EQ(each.sourcePort, 3956);
        }
        std::size_t same = 0;
        for (const UdpDatagram& each : datagrams)
            same += isGenuine(each.payload, genuine) ? 1 : 0;
        if (kind == Kind::Duplicate) {
            EXPECT_EQ(same, datagrams.size());
        } else if (kind != Kind::Oversized) {
            EXPECT_EQ(same, 1u) << "noise of kind " << static_cast<int>(kind) << " passes for genuine";
        }
    }
}

TEST_F(StationNoise, AnAnswerWithAWrongIdBearsAnotherAddressAndOtherTexts)
{
    CameraConfig noisy;
    noisy.noise = {NoiseKind::WrongId};
    become(noisy);
    ask(DiscoveryWithBroadcast, NearHost);
    const auto datagrams = sentOf<UdpDatagram>();
    std::set<unsigned> ids;
    for (std::size_t i = 0; i + 1 < datagrams.size(); ++i) {
        const Bytes& payload = datagrams[i].payload;
        ids.insert(static_cast<unsigned>(payload[6] << 8 | payload[7]));
        EXPECT_EQ(Bytes(payload.begin() + 18, payload.begin() + 24), hex("001A2B000001"));
        EXPECT_EQ(Bytes(payload.begin() + 44, payload.begin() + 48), hex("C6336401"));
        EXPECT_EQ(std::string(payload.begin() + 112, payload.begin() + 128), "Wrong request id");
    }
    EXPECT_EQ(ids, (std::set<unsigned>{0, 0x1233, 0x1235, 0x9234}));
}

TEST_F(StationNoise, ForgesTheSameManyCamerasEachTimeAndStaysAliveMeanwhile)
{
    CameraConfig forger;
    forger.forgedAnswers = 1000;
    become(forger);
    std::set<Bytes> macs;
    for (int round = 0; round < 2; ++round) {
        sent.clear();
        ask(DiscoveryWithBroadcast, NearHost);
        EXPECT_LT(sent.size(), 200u) << "a batch at a time";
        for (int i = 0; i < 1000 && timers->next(); ++i)
            pass(5ms);
        const auto datagrams = sentOf<UdpDatagram>();
        ASSERT_EQ(datagrams.size(), 1001u);
        for (const UdpDatagram& each : datagrams) {
            EXPECT_EQ(each.payload.size(), 256u);
            EXPECT_EQ(Bytes(each.payload.begin(), each.payload.begin() + 8), hex("0000 0003 00F8 1234"));
            EXPECT_EQ(Bytes(each.payload.begin() + 44, each.payload.begin() + 47), hex("C0A801"))
                << "in the genuine camera's subnet";
            macs.insert(Bytes(each.payload.begin() + 18, each.payload.begin() + 24));
        }
        EXPECT_EQ(macs.size(), 1001u);
    }
}

TEST_F(StationNoise, AccompaniesNoRefusal)
{
    using Kind = NoiseKind;
    CameraConfig noisy;
    noisy.noise = {Kind::Truncated, Kind::Oversized, Kind::Foreign, Kind::Duplicate, Kind::WrongId};
    noisy.forgedAnswers = 3;
    become(noisy);
    ask("42 11 0002 0220 1234" + std::string(2 * 0x220, '0'), NearHost); // longer than any command
    const auto datagrams = sentOf<UdpDatagram>();
    ASSERT_EQ(datagrams.size(), 1u);
    EXPECT_EQ(datagrams[0].payload, hex("8002 0003 0000 1234"));
}

} // namespace
