// SPDX-License-Identifier: Apache-2.0
#include "cli/neighbours/NeighbourWatch.h"

#include "tests/support/NetworkLab.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <net/if.h>
#include <optional>
#include <system_error>

using cli::Neighbour;
using cli::NeighbourWatch;
using testing::ElementsAre;

namespace {

using namespace base::literals;

constexpr base::Ipv4 Address = "192.168.1.20"_ip;

/// The test's thread is on a host with two adapters, behind which nobody is.
class NeighbourWatchTest : public testing::Test
{
protected:
    NeighbourWatchTest()
    {
        for (const char* adapter : {"eth0", "eth1"})
            lab::connect(host, adapter, other, adapter);
        host.run("ip address add 192.168.1.5/24 dev eth0");
        m_visit.emplace(host);
    }

    void enter(const std::string& address, const std::string& state,
               const std::string& adapter = "eth0") const
    {
        host.run("ip neigh replace " + address + " lladdr 02:00:00:00:aB:01 nud " + state + " dev " +
                 adapter);
    }

    static std::vector<int> states(const std::vector<Neighbour>& entries)
    {
        std::vector<int> result;
        for (const Neighbour& entry : entries)
            result.push_back(entry.state);
        return result;
    }

    lab::Namespace host;
    lab::Namespace other;

private:
    std::optional<lab::Visit> m_visit;
};

} // namespace

TEST_F(NeighbourWatchTest, SeesStateMacAndAgeOfAnEntry)
{
    NeighbourWatch watch(static_cast<int>(if_nametoindex("eth0")), Address);
    EXPECT_THAT(states(watch.look()), ElementsAre(NUD_NONE));
    enter("192.168.1.20", "stale");
    const Neighbour stale = watch.look().back();
    EXPECT_EQ(stale.state, NUD_STALE);
    EXPECT_EQ(stale.mac, (base::MacAddress{{2, 0, 0, 0, 0xAB, 1}}));
    enter("192.168.1.20", "reachable");
    const Neighbour confirmed = watch.look().back();
    EXPECT_EQ(confirmed.state, NUD_REACHABLE);
    EXPECT_LT(confirmed.sinceConfirmed, stale.sinceConfirmed);
}

TEST_F(NeighbourWatchTest, SeesWhatTheEntryWasSinceTheLastLook)
{
    NeighbourWatch watch(static_cast<int>(if_nametoindex("eth0")), Address);
    watch.look();
    enter("192.168.1.20", "reachable");
    enter("192.168.1.20", "permanent");
    host.run("ip neigh del 192.168.1.20 dev eth0");
    std::vector<int> seen = states(watch.look());
    EXPECT_THAT(seen, testing::AllOf(testing::Contains(NUD_REACHABLE), testing::Contains(NUD_PERMANENT)));
    EXPECT_EQ(seen.back(), NUD_NONE);
}

TEST_F(NeighbourWatchTest, SeesNothingOfOtherAddressesAndAdapters)
{
    NeighbourWatch watch(static_cast<int>(if_nametoindex("eth0")), Address);
    enter("192.168.1.20", "permanent", "eth1");
    enter("192.168.1.21", "permanent");
    EXPECT_THAT(states(watch.look()), ElementsAre(NUD_NONE));
}

TEST_F(NeighbourWatchTest, MakesTheKernelAskForTheOwner)
{
    NeighbourWatch watch(static_cast<int>(if_nametoindex("eth0")), Address);
    watch.provoke();
    EXPECT_EQ(watch.look().back().state, NUD_INCOMPLETE);
}

TEST_F(NeighbourWatchTest, SaysThatAnAdapterIsGone)
{
    NeighbourWatch watch(9999, Address);
    EXPECT_THROW(watch.provoke(), std::system_error);
}
