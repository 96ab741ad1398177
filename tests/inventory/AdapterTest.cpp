// SPDX-License-Identifier: Apache-2.0
#include "inventory/Adapter.h"
#include "tests/support/NetworkLab.h"
#include "tests/support/WaitUntil.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

using namespace base::literals;
using testing::ElementsAre;
using testing::IsEmpty;

namespace inventory {

static void PrintTo(const AdapterAddress& address, std::ostream* out)
{
    *out << address.toText();
}

namespace {

class HostAdapters : public testing::Test
{
protected:
    std::vector<Adapter> all() const
    {
        const lab::Visit visit(host);
        return hostAdapters();
    }

    Adapter adapter(const std::string& name) const
    {
        const auto adapters = all();
        const auto found = std::ranges::find(adapters, name, &Adapter::name);
        if (found == adapters.end())
            throw std::runtime_error("no adapter " + name);
        return *found;
    }

    lab::Namespace host;
    lab::Namespace other;
};

} // namespace

TEST_F(HostAdapters, AreNotTheLoopback)
{
    EXPECT_THAT(all(), IsEmpty());
}

TEST_F(HostAdapters, AreAsTheKernelHasThem)
{
    lab::connect(host, "line0", other, "far0");
    host.run("ip link set line0 address 02:00:00:00:00:33 mtu 9000;"
             "ip addr add 192.168.10.1/24 dev line0; ip addr add 10.0.0.1/31 dev line0 label line0:1");
    const Adapter line = adapter("line0");
    EXPECT_EQ(line.mac.toText(), "02:00:00:00:00:33");
    EXPECT_TRUE(line.isUp);
    EXPECT_TRUE(line.hasCarrier);
    EXPECT_TRUE(line.isEthernet);
    EXPECT_EQ(line.kind, "veth");
    EXPECT_FALSE(line.isPhysical());
    EXPECT_EQ(line.mtu, 9000u);
    EXPECT_EQ(line.linkSpeed, 10000u) << "as its driver says of each";
    EXPECT_EQ(line.master, 0u);
    EXPECT_THAT(line.addresses,
                ElementsAre(AdapterAddress{"192.168.10.1"_ip, 24}, AdapterAddress{"10.0.0.1"_ip, 31}));
}

TEST_F(HostAdapters, OneThatIsSwitchedOffOrHasNobodyAtItsOtherEndSaysSo)
{
    lab::connect(host, "line0", other, "far0");
    other.run("ip link set far0 down");
    // The kernel may take a second until it tells.
    EXPECT_TRUE(waitUntil([this] { return !adapter("line0").hasCarrier; }));
    EXPECT_TRUE(adapter("line0").isUp);
    host.run("ip link set line0 down");
    EXPECT_FALSE(adapter("line0").isUp);
}

TEST_F(HostAdapters, APortOfABridgeNamesIt)
{
    lab::connect(host, "line0", other, "far0");
    host.run(
        "ip link add name bridge0 type bridge; ip link set bridge0 up; ip link set line0 master bridge0");
    EXPECT_EQ(adapter("line0").master, adapter("bridge0").index);
    EXPECT_EQ(adapter("bridge0").kind, "bridge");
}

TEST_F(HostAdapters, TheLargerReversePathFilterCounts)
{
    lab::connect(host, "line0", other, "far0");
    const auto set = [this](const std::string& all, const std::string& own) {
        host.run("echo " + all + " >/proc/sys/net/ipv4/conf/all/rp_filter; echo " + own +
                 " >/proc/sys/net/ipv4/conf/line0/rp_filter");
        return adapter("line0").reversePathFilter;
    };
    EXPECT_EQ(set("0", "0"), 0);
    EXPECT_EQ(set("1", "0"), 1);
    EXPECT_EQ(set("1", "2"), 2);
    EXPECT_EQ(set("2", "1"), 2);
}

TEST(AdapterAddress, KnowsItsMaskAndItsSubnet)
{
    EXPECT_EQ((AdapterAddress{"10.1.2.3"_ip, 0}.mask()), "0.0.0.0"_ip);
    EXPECT_EQ((AdapterAddress{"10.1.2.3"_ip, 8}.mask()), "255.0.0.0"_ip);
    EXPECT_EQ((AdapterAddress{"10.1.2.3"_ip, 32}.mask()), "255.255.255.255"_ip);
    EXPECT_TRUE((AdapterAddress{"10.1.2.3"_ip, 24}.reaches("10.1.2.200"_ip)));
    EXPECT_FALSE((AdapterAddress{"10.1.2.3"_ip, 25}.reaches("10.1.2.200"_ip)));
}

} // namespace inventory
