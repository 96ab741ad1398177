// SPDX-License-Identifier: Apache-2.0
#include "cli/neighbours/AddressOwner.h"

#include "tests/support/NetworkLab.h"
#include "tests/support/ScriptedProgram.h"

#include <QScopeGuard>

#include <gtest/gtest.h>
#include <net/if.h>

namespace {

using namespace base::literals;

constexpr base::MacAddress OwnerMac{{2, 0, 0, 0, 9, 1}};
constexpr base::MacAddress OtherMac{{2, 0, 0, 0, 9, 0x99}};
constexpr base::MacAddress CameraMac{{2, 0, 0, 0, 1, 1}};

constexpr base::Ipv4 Taken = "192.168.1.30"_ip;
constexpr base::Ipv4 Free = "192.168.1.31"_ip;

/// A computer with two adapters in one subnet, and behind the second a device that has Taken. The kernel asks
/// ten times as fast as usual. Nobody answers ping unless a test says so.
class AddressOwnerTest : public testing::Test
{
protected:
    AddressOwnerTest()
    {
        first.attach(host, "eth0", "192.168.1.5/24");
        second.attach(host, "eth1", "192.168.1.6/24");
        second.attach(owner, "eth0", "192.168.1.30/24");
        host.run("for each in eth0 eth1; do\n"
                 "    cd /proc/sys/net/ipv4/neigh/$each; echo 100 > retrans_time_ms; echo 1 > "
                 "delay_first_probe_time\n"
                 "done");
        owner.run("ip link set eth0 address " + OwnerMac.toText());
        ping.set("exit 1");
    }

    /// In the host's network, on the second adapter unless another is given.
    cli::OwnerAnswer find(base::Ipv4 address, const char* adapter = "eth1") const
    {
        const lab::Visit visit(host);
        return cli::findAddressOwner({address, static_cast<int>(if_nametoindex(adapter)), CameraMac, {}});
    }

    void remember(base::Ipv4 address, const base::MacAddress& mac, const std::string& state) const
    {
        host.run("ip neigh replace " + address.toText() + " lladdr " + mac.toText() + " nud " + state +
                 " dev eth1");
    }

    ScriptedProgram ping{"ping"};
    lab::Namespace host;
    lab::Namespace owner;
    lab::Switch first;
    lab::Switch second;
};

} // namespace

TEST_F(AddressOwnerTest, IsKnownByItsAnswerToArpAlone)
{
    const cli::OwnerAnswer answer = find(Taken);
    ASSERT_TRUE(answer.owner);
    EXPECT_EQ(answer.owner->mac, OwnerMac);
    EXPECT_FALSE(answer.owner->answersPing);
    EXPECT_FALSE(answer.owner->lastHeard);
    EXPECT_EQ(answer.pingFailure, "");
    EXPECT_EQ(answer.arpFailure, "");
}

TEST_F(AddressOwnerTest, IsLookedForByPingOutOfTheAdapterWithoutNames)
{
    ping.set("printf '%s ' \"$@\" > \"$(dirname \"$0\")/arguments\"; exit 1");
    EXPECT_FALSE(find(Free).owner);
    EXPECT_EQ(ping.file("arguments"), "-n -I eth1 -c 1 -w 6 192.168.1.31 ");
}

TEST_F(AddressOwnerTest, IsKnownByItsAnswerToPingAlone)
{
    remember(Free, OwnerMac, "permanent");
    ping.set("exit 0");
    const cli::OwnerAnswer answer = find(Free);
    ASSERT_TRUE(answer.owner);
    EXPECT_TRUE(answer.owner->answersPing);
    EXPECT_EQ(answer.owner->mac, OwnerMac);
}

TEST_F(AddressOwnerTest, IsNotTheCameraItself)
{
    remember(Free, CameraMac, "permanent");
    ping.set("exit 0");
    EXPECT_FALSE(find(Free).owner);
}

TEST_F(AddressOwnerTest, IsThereForTheAdapterThatItIsBehind)
{
    EXPECT_TRUE(find(Taken, "eth1").owner);
    EXPECT_FALSE(find(Taken, "eth0").owner);
}

TEST_F(AddressOwnerTest, IsFoundOutsideTheAdaptersSubnetPastTheGateway)
{
    owner.run("ip address add 10.1.2.3/8 dev eth0");
    host.run("ip route add default via 192.168.1.30 dev eth1");
    EXPECT_TRUE(find("10.1.2.3"_ip).owner);
    EXPECT_FALSE(find("10.1.2.4"_ip).owner);
}

TEST_F(AddressOwnerTest, IsNobodyWhenAllWereAskedSixTimesInVain)
{
    owner.run("nft 'add table arp lab;"
              " add chain arp lab input { type filter hook input priority 0; };"
              " add rule arp lab input arp operation request arp daddr ip 192.168.1.31 counter'");
    EXPECT_FALSE(find(Free).owner);
    EXPECT_EQ(owner.run("nft list chain arp lab input | sed -n 's/.*counter packets \\([0-9]*\\).*/\\1/p'"),
              "6\n");
}

TEST_F(AddressOwnerTest, IsRememberedWhenItIsSilent)
{
    owner.run("ip link set eth0 down");
    remember(Taken, OwnerMac, "reachable");
    const cli::OwnerAnswer answer = find(Taken);
    ASSERT_TRUE(answer.owner);
    EXPECT_EQ(answer.owner->mac, OwnerMac);
    EXPECT_TRUE(answer.owner->lastHeard);
}

TEST_F(AddressOwnerTest, IsForgottenWhenTheKernelFindsItGone)
{
    remember(Free, OwnerMac, "stale");
    EXPECT_FALSE(find(Free).owner);
}

TEST_F(AddressOwnerTest, IsFoundWhereAnotherWasBefore)
{
    remember(Taken, OtherMac, "stale");
    const cli::OwnerAnswer answer = find(Taken);
    ASSERT_TRUE(answer.owner);
    EXPECT_EQ(answer.owner->mac, OwnerMac);
}

TEST_F(AddressOwnerTest, IsLookedForByArpWhereThereIsNoPing)
{
    const auto restored = qScopeGuard([path = qgetenv("PATH")] { qputenv("PATH", path); });
    qputenv("PATH", "/nowhere");
    for (const base::Ipv4 address : {Taken, Free}) {
        const cli::OwnerAnswer answer = find(address);
        EXPECT_EQ(answer.owner.has_value(), address == Taken);
        EXPECT_NE(answer.pingFailure, "");
        EXPECT_EQ(answer.arpFailure, "");
    }
}

TEST_F(AddressOwnerTest, IsLookedForByArpWherePingMayNotSend)
{
    ping.set("echo 'ping: a warning' >&2; echo 'ping: not permitted' >&2; exit 2");
    const cli::OwnerAnswer answer = find(Free);
    EXPECT_FALSE(answer.owner);
    EXPECT_EQ(answer.pingFailure, "ping: not permitted");
    EXPECT_TRUE(find(Taken).owner);
}

TEST_F(AddressOwnerTest, IsLookedForByPingWhereTheKernelCannotAsk)
{
    const cli::OwnerAnswer nobody = find("192.168.1.255"_ip); // A broadcast address has no owner.
    EXPECT_FALSE(nobody.owner);
    EXPECT_NE(nobody.arpFailure, "");
    ping.set("exit 0");
    EXPECT_TRUE(find("192.168.1.255"_ip).owner);
}

TEST_F(AddressOwnerTest, IsNotLookedForOnAnAdapterThatIsGone)
{
    const cli::OwnerAnswer answer = find(Taken, "gone0");
    EXPECT_FALSE(answer.owner);
    EXPECT_NE(answer.pingFailure, "");
    EXPECT_NE(answer.arpFailure, "");
}
