// SPDX-License-Identifier: Apache-2.0
#include "inventory/Watch.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <malloc.h>
#include <random>

using inventory::Adapter;
using inventory::Arrival;
using inventory::Camera;
using inventory::Registers;
using inventory::Status;
using inventory::Watch;
using inventory::WatchEvent;
using testing::ElementsAre;
using testing::IsEmpty;
using namespace base::literals;
using namespace std::chrono_literals;

namespace {

base::MacAddress mac(unsigned number)
{
    base::MacAddress result;
    result.bytes = {2,
                    0,
                    static_cast<std::uint8_t>(number >> 24),
                    static_cast<std::uint8_t>(number >> 16),
                    static_cast<std::uint8_t>(number >> 8),
                    static_cast<std::uint8_t>(number)};
    return result;
}

Camera camera(unsigned number, Status status = Status::Free, base::Ipv4 address = "192.168.1.20"_ip)
{
    Camera result;
    result.mac = mac(number);
    result.model = "Model";
    result.userName = "Name";
    result.ip.address = address;
    result.status = status;
    result.registers = status == Status::Unreachable ? Registers::NotAsked : Registers::Told;
    result.adapterName = status == Status::Unreachable ? "eth1" : "eth0";
    return result;
}

/// A camera in reach that was not heard to say whether it is free.
Camera silentCamera(unsigned number)
{
    Camera result = camera(number, Status::InUse);
    result.registers = Registers::Silent;
    return result;
}

std::string text(const WatchEvent& event)
{
    constexpr const char* kinds[] = {"present", "appeared", "gone", "address", "status", "asks"};
    constexpr const char* statuses[] = {"free", "in use", "unreachable"};
    return std::string(kinds[static_cast<int>(event.kind)]) + " " +
           std::to_string(event.mac.bytes[5] + 256 * event.mac.bytes[4]) + " " +
           (event.address ? event.address->toText() : "-") + " " +
           (event.status ? statuses[static_cast<int>(*event.status)] : "-");
}

/// Looks of three seconds each, on a clock of the test's own.
class WatchTest : public testing::Test
{
protected:
    /// One that finds these and nothing else; what it told.
    std::vector<std::string> look(const std::vector<Camera>& cameras,
                                  const std::vector<Arrival>& arrivals = {})
    {
        told.clear();
        for (const Arrival& arrival : arrivals)
            watch.hear(arrival, adapters, now);
        for (const Camera& each : cameras)
            watch.see(each, now);
        now += 3s;
        watch.see(cameras, now);
        watch.endLook(now);
        std::vector<std::string> texts;
        for (const WatchEvent& event : told)
            texts.push_back(text(event));
        return texts;
    }

    static Arrival asks(unsigned number, Arrival::Kind kind = Arrival::Kind::DhcpRequest,
                        base::Ipv4 address = {})
    {
        return {kind, 2, mac(number), address};
    }

    std::vector<Adapter> adapters{[] {
        Adapter adapter;
        adapter.index = 2;
        adapter.name = "eth0";
        adapter.mac = mac(99);
        return adapter;
    }()};
    std::vector<WatchEvent> told;
    Watch watch{[this](const WatchEvent& event) { told.push_back(event); }};
    Watch::Time now{1h};
};

} // namespace

TEST_F(WatchTest, TellsWhoIsThereAtTheStartAndThenWhoAppears)
{
    EXPECT_THAT(look({camera(1), camera(2, Status::InUse)}),
                ElementsAre("present 1 192.168.1.20 free", "present 2 192.168.1.20 in use"));
    EXPECT_THAT(look({camera(1), camera(2, Status::InUse)}), IsEmpty());
    EXPECT_THAT(look({camera(1), camera(2, Status::InUse), camera(3)}),
                ElementsAre("appeared 3 192.168.1.20 free"));
}

TEST_F(WatchTest, TellsOfACameraWithAllThatIsKnownOfIt)
{
    look({camera(1)});
    WatchEvent expected;
    expected.mac = mac(1);
    expected.address = "192.168.1.20"_ip;
    expected.status = Status::Free;
    expected.adapterName = "eth0";
    expected.model = "Model";
    expected.userName = "Name";
    EXPECT_THAT(told, ElementsAre(expected));
}

TEST_F(WatchTest, TellsOfACameraInReachAtOnceAndOfOthersWhenTheLookEnds)
{
    watch.see(camera(1), now);
    EXPECT_EQ(told.size(), 1u);
    watch.see(camera(2, Status::Unreachable), now);
    EXPECT_EQ(told.size(), 1u);
    watch.see({camera(1), camera(2, Status::Unreachable)}, now);
    EXPECT_EQ(told.size(), 2u);
}

TEST_F(WatchTest, TellsOfAChangedAddressAndStatus)
{
    look({camera(1)});
    EXPECT_THAT(look({camera(1, Status::InUse)}), ElementsAre("status 1 192.168.1.20 in use"));
    EXPECT_THAT(look({camera(1, Status::InUse, "192.168.1.30"_ip)}),
                ElementsAre("address 1 192.168.1.30 in use"));
    EXPECT_THAT(look({camera(1, Status::Unreachable, "10.0.0.1"_ip)}),
                ElementsAre("address 1 10.0.0.1 unreachable", "status 1 10.0.0.1 unreachable"));
    EXPECT_THAT(look({camera(1, Status::Unreachable, "10.0.0.1"_ip)}), IsEmpty());
}

TEST_F(WatchTest, CountsACameraAsGoneWhenItHasNotAnsweredForTenSeconds)
{
    look({camera(1), camera(2, Status::Unreachable)});
    look({camera(1), camera(2, Status::Unreachable)}); // From 3 s to 6 s: heard at 3 s.
    EXPECT_THAT(look({}), IsEmpty());                  // Until 9 s.
    EXPECT_THAT(look({}), IsEmpty());                  // Until 12 s.
    EXPECT_THAT(look({}), ElementsAre("gone 1 192.168.1.20 -", "gone 2 192.168.1.20 -"));
    EXPECT_EQ(told[0].model, "Model");
    EXPECT_THAT(look({}), IsEmpty()) << "once";
    EXPECT_THAT(look({camera(1)}), ElementsAre("appeared 1 192.168.1.20 free"));
}

TEST_F(WatchTest, TakesACameraThatMissesSomeLooksForOneThatIsThere)
{
    look({camera(1)});
    for (int i = 0; i < 5; ++i) {
        EXPECT_THAT(look({}), IsEmpty());
        EXPECT_THAT(look({}), IsEmpty());
        EXPECT_THAT(look({camera(1)}), IsEmpty());
    }
}

TEST_F(WatchTest, TakesACameraOnTwoAdaptersForOneWhereItIsReachable)
{
    const Camera elsewhere = camera(1, Status::Unreachable);
    EXPECT_THAT(look({elsewhere, camera(1)}), ElementsAre("present 1 192.168.1.20 free"));
    EXPECT_EQ(told[0].adapterName, "eth0");
    EXPECT_THAT(look({elsewhere, camera(1)}), IsEmpty());
    EXPECT_THAT(look({elsewhere}), IsEmpty()) << "its answer on the other one may have been lost";
    EXPECT_THAT(look({elsewhere, camera(1, Status::InUse)}), ElementsAre("status 1 192.168.1.20 in use"));
    EXPECT_EQ(told[0].adapterName, "eth0");
    for (int i = 0; i < 3; ++i)
        EXPECT_THAT(look({elsewhere}), IsEmpty());
    EXPECT_THAT(look({elsewhere}), ElementsAre("status 1 192.168.1.20 unreachable"));
    EXPECT_EQ(told[0].adapterName, "eth1");
}

TEST_F(WatchTest, TakesALostAnswerAboutTheStatusForNoChange)
{
    look({camera(1)});
    EXPECT_THAT(look({silentCamera(1)}), IsEmpty());
    EXPECT_THAT(look({camera(1)}), IsEmpty());
    for (int i = 0; i < 3; ++i)
        EXPECT_THAT(look({silentCamera(1)}), IsEmpty());
    EXPECT_THAT(look({silentCamera(1)}), ElementsAre("status 1 192.168.1.20 in use"));
    EXPECT_THAT(look({camera(1)}), ElementsAre("status 1 192.168.1.20 free"));
}

TEST_F(WatchTest, TellsWhoAsksForAnAddressOnceUntilItHasBeenQuiet)
{
    EXPECT_THAT(look({}, {asks(7), asks(7), asks(7, Arrival::Kind::Probe, "169.254.1.2"_ip)}),
                ElementsAre("asks 7 - -"));
    EXPECT_EQ(told[0].adapterName, "eth0");
    EXPECT_FALSE(told[0].model);
    EXPECT_FALSE(told[0].userName);
    for (int i = 0; i < 100; ++i)
        EXPECT_THAT(look({}, {asks(7)}), IsEmpty());
    now += Watch::Quiet;
    EXPECT_THAT(look({}, {asks(7, Arrival::Kind::Probe, "169.254.1.2"_ip)}),
                ElementsAre("asks 7 169.254.1.2 -"));
}

TEST_F(WatchTest, TellsOfACameraThatRestartsThatItAsksEachTime)
{
    look({camera(1)});
    for (int i = 0; i < 2; ++i) {
        EXPECT_THAT(look({}, {asks(1)}), ElementsAre("asks 1 - -"));
        EXPECT_EQ(told[0].model, "Model");
        EXPECT_THAT(look({}, {asks(1)}), IsEmpty());
        EXPECT_THAT(look({}, {asks(1)}), ElementsAre("gone 1 192.168.1.20 -"));
        EXPECT_THAT(look({}, {asks(1)}), IsEmpty());
        EXPECT_THAT(look({camera(1)}), ElementsAre("appeared 1 192.168.1.20 free"));
    }
}

TEST_F(WatchTest, LeavesOutWhatIsNoQuestionForAnAddressAndThisComputersOwn)
{
    EXPECT_THAT(look({}, {asks(7, Arrival::Kind::Announcement, "192.168.1.9"_ip),
                          asks(7, Arrival::Kind::Speech, "192.168.1.9"_ip), asks(99)}),
                IsEmpty());
    EXPECT_EQ(watch.remembered(), 0u);
}

TEST_F(WatchTest, BoundsAFloodOfDevicesAndCountsWhatItDoesNotTell)
{
    std::vector<Arrival> flood;
    for (unsigned i = 0; i < 150; ++i)
        flood.push_back(asks(i + 1000));
    EXPECT_EQ(look({}, flood).size(), Watch::MaxAskingPerSecond);
    EXPECT_EQ(watch.takeUntold(), 50u);
    EXPECT_EQ(watch.takeUntold(), 0u);
    EXPECT_EQ(look({}, flood).size(), 50u) << "the others, when they ask again";
    EXPECT_EQ(watch.takeUntold(), 0u);

    unsigned number = 2000;
    for (int i = 0; i < 29; ++i) { // Less than the time in which they would be forgotten.
        for (Arrival& each : flood)
            each = asks(++number);
        look({}, flood);
    }
    EXPECT_EQ(watch.remembered(), Watch::MaxDevices);
    EXPECT_GT(watch.takeUntold(), 0u);
    now += Watch::Quiet;
    EXPECT_THAT(look({}, {asks(1)}), ElementsAre("asks 1 - -"));
    EXPECT_EQ(watch.remembered(), 1u);
}

TEST_F(WatchTest, ForgetsOfTooManyCamerasThoseThatHaveGone)
{
    const auto some = [](unsigned first, unsigned count) {
        std::vector<Camera> cameras;
        for (unsigned i = 0; i < count; ++i)
            cameras.push_back(camera(first + i));
        return cameras;
    };
    constexpr auto most = static_cast<unsigned>(Watch::MaxCameras);
    EXPECT_EQ(look(some(0, most)).size(), most);
    EXPECT_THAT(look({camera(most)}), IsEmpty());
    EXPECT_GT(watch.takeUntold(), 0u);
    for (int i = 0; i < 3; ++i)
        look(some(1, most - 1));
    EXPECT_THAT(look({camera(most)}), ElementsAre("appeared 4096 192.168.1.20 free")) << "number 0 has gone";
    EXPECT_EQ(watch.remembered(), most);
}

TEST_F(WatchTest, TakesNoMoreMemoryInItsSecondHourThanInItsFirst)
{
#ifdef __SANITIZE_ADDRESS__
    GTEST_SKIP() << "the sanitizer's allocator does not tell how much is in use";
#endif
    std::mt19937 random(1);
    std::size_t events = 0;
    Watch hours([&events](const WatchEvent&) { ++events; });
    // A flood: cameras that nobody has heard of and devices that nobody knows, beside a hundred that stay.
    const auto hour = [&] {
        for (int i = 0; i < 1200; ++i) {
            std::vector<Camera> cameras;
            for (unsigned j = 0; j < 100; ++j)
                cameras.push_back(camera(j, i % 7 == 0 ? Status::InUse : Status::Free));
            for (int j = 0; j < 200; ++j)
                cameras.push_back(camera(static_cast<unsigned>(random()) | 0x1000'0000));
            for (int j = 0; j < 200; ++j)
                hours.hear(asks(static_cast<unsigned>(random())), adapters, now);
            now += 3s;
            hours.see(cameras, now);
            hours.endLook(now);
        }
        return ::mallinfo2().uordblks;
    };
    const std::size_t first = hour();
    const std::size_t second = hour();
    EXPECT_LE(second, first + first / 100);
    EXPECT_LE(hours.remembered(), Watch::MaxCameras + Watch::MaxDevices);
    EXPECT_GT(events, 100'000u) << "so much has happened";
}
