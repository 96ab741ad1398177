// SPDX-License-Identifier: Apache-2.0
// What the program shows of cameras that come, go and change behind real adapters.
#include "tests/network/Site.h"

#include <csignal>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

using nlohmann::json;

namespace {

constexpr const char* Mac = "02:00:00:00:01:01";
constexpr const char* OtherMac = "02:00:00:00:01:02";

/// The program at work, on a computer with two adapters on one switch, behind which there are two cameras, in
/// the subnet of the first.
class Watching : public testing::Test
{
protected:
    Watching()
    {
        lan = &site.addAdapter("eth0", "192.168.1.5/24");
        lan->attach(site.host(), "eth1", "10.0.0.5/8");
        farm = &site.addCameras(*lan, R"(
            {"mac": "02:00:00:00:01:01", "address": "192.168.1.20", "model": "FC-1", "userName": "Left"},
            {"mac": "02:00:00:00:01:02", "address": "192.168.1.21"})");
        process.emplace(site.host().start({PROGRAM, "watch", "--json"}));
    }

    /// The next event that is about this device; others are passed over.
    json next(const std::string& mac)
    {
        for (;;) {
            json event = json::parse(process->readLine());
            if (event["GevMACAddress"] == mac)
                return event;
        }
    }

    void expectNext(const std::string& event, const std::string& address, const json& status)
    {
        const json seen = next(Mac);
        EXPECT_EQ(seen["Event"], event);
        EXPECT_EQ(seen["GevCurrentIPAddress"], address);
        EXPECT_EQ(seen["Status"], status);
        EXPECT_EQ(seen["DeviceModelName"], "FC-1");
        EXPECT_EQ(seen["DeviceUserID"], "Left");
        EXPECT_EQ(seen["AdapterName"], "eth0");
    }

    void send(const std::string& command) { farm->control(command); }

    Site site;
    lab::Switch* lan = nullptr;
    lab::Farm* farm = nullptr;
    std::optional<lab::Process> process;
};

} // namespace

TEST_F(Watching, ShowsACameraThatIsThereChangesGoesAndComesBack)
{
    expectNext("present", "192.168.1.20", "Free");
    send(std::string("hold ") + Mac + " 192.168.1.77");
    expectNext("status", "192.168.1.20", "InUse");
    send(std::string("release ") + Mac);
    expectNext("status", "192.168.1.20", "Free");
    const lab::Output forced =
        site.host().execute({PROGRAM, "force", Mac, "--ip", "192.168.1.30", "--mask", "255.255.255.0"});
    EXPECT_EQ(forced.status, 0) << forced.standardError;
    expectNext("address", "192.168.1.30", "Free");
    send(std::string("unplug ") + Mac);
    expectNext("gone", "192.168.1.30", nullptr);
    send(std::string("plug ") + Mac);
    expectNext("appeared", "192.168.1.30", "Free");
}

TEST_F(Watching, ShowsWhoAsksForAnAddress)
{
    EXPECT_EQ(next(OtherMac)["Event"], "present");
    const lab::Farm devices(*lan, R"({"cameras": [{"mac": "02:00:00:00:05:01"}]})");
    const json asks = next("02:00:00:00:05:01");
    EXPECT_EQ(asks["Event"], "asks-for-address");
    EXPECT_TRUE(asks["DeviceModelName"].is_null());
    const json appeared = next("02:00:00:00:05:01");
    EXPECT_EQ(appeared["Event"], "appeared") << "without having asked once more";
    EXPECT_THAT(appeared["GevCurrentIPAddress"], testing::StartsWith("169.254."));
}

TEST_F(Watching, GoesOnWithAdaptersThatChange)
{
    expectNext("present", "192.168.1.20", "Free");
    site.addCameras(site.addAdapter("eth2", "172.16.0.5/16"),
                    R"({"mac": "02:00:00:00:06:01", "address": "172.16.0.20"})");
    const json appeared = next("02:00:00:00:06:01");
    EXPECT_EQ(appeared["Event"], "appeared");
    EXPECT_EQ(appeared["AdapterName"], "eth2");
}

TEST_F(Watching, EndsWellAtEachSignal)
{
    expectNext("present", "192.168.1.20", "Free");
    ::kill(process->id(), SIGINT);
    EXPECT_EQ(process->wait(), 0);
    for (const int signal : {SIGTERM, SIGHUP}) {
        lab::Process again = site.host().start({PROGRAM, "watch"});
        EXPECT_THAT(again.readLine(), testing::StartsWith("TIME "));
        ::kill(again.id(), signal);
        EXPECT_EQ(again.wait(), 0);
    }
}

TEST_F(Watching, EndsWithItsReaderThoughNothingHappens)
{
    expectNext("present", "192.168.1.20", "Free");
    // The header is all that is read, and on this network there is nothing more.
    const lab::Namespace empty;
    const lab::Output output = empty.execute({"bash", "-c", PROGRAM " watch | head -n 1"});
    EXPECT_EQ(output.status, 0);
    EXPECT_THAT(output.standardOutput, testing::StartsWith("TIME "));
}
