// SPDX-License-Identifier: Apache-2.0
#include "base/Ipv4.h"
#include "device/HearingAdapter.h"
#include "device/QDevice.h"
#include "sdk/RzCameraSdk.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <gmock/gmock.h>
#include <net/if.h>
#include <sched.h>
#include <string>
#include <unistd.h>
#include <utility>

using namespace base::literals;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using testing::UnorderedElementsAre;

namespace {

/// The test's thread is in a network namespace of its own, which has a loopback interface and nothing else.
class HostAdaptersTest : public testing::Test
{
protected:
    void SetUp() override
    {
        m_home = open("/proc/thread-self/ns/net", O_RDONLY | O_CLOEXEC);
        ASSERT_GE(m_home, 0);
        ASSERT_EQ(unshare(CLONE_NEWNET), 0)
            << "this host allows no network namespace: " << std::strerror(errno);
        run("ip link set lo up");
    }

    void TearDown() override
    {
        if (m_home >= 0) {
            EXPECT_EQ(setns(m_home, CLONE_NEWNET), 0);
            close(m_home);
        }
    }

    static void run(const char* command) { ASSERT_EQ(std::system(command), 0) << command; }

    /// Each adapter as address and mask.
    static std::vector<std::pair<base::Ipv4, base::Ipv4>> adapters(const QDevice& device)
    {
        std::vector<std::pair<base::Ipv4, base::Ipv4>> result;
        for (const _NETWORK_INFO& adapter : device.m_vecHostAdapter)
            result.emplace_back(base::Ipv4(adapter.nIpAddress), base::Ipv4(adapter.nSubnetMask));
        return result;
    }

private:
    int m_home = -1;
};

} // namespace

TEST_F(HostAdaptersTest, AHostWithOnlyALoopbackAdapterHasNone)
{
    EXPECT_THAT(QDevice().m_vecHostAdapter, IsEmpty());
}

TEST_F(HostAdaptersTest, EveryIpv4AddressWithABroadcastAddressIsOne)
{
    run("ip link add left type veth peer name right && ip link set left up && ip link set right up");
    run("ip address add 192.168.1.5/16 broadcast + dev left");
    run("ip address add 10.0.0.1/8 broadcast + dev left");
    run("ip address add 172.16.0.1/30 broadcast + dev right");
    run("ip address add fd00::1/64 dev right");
    EXPECT_THAT(adapters(QDevice()), UnorderedElementsAre(Pair("192.168.1.5"_ip, "255.255.0.0"_ip),
                                                          Pair("10.0.0.1"_ip, "255.0.0.0"_ip),
                                                          Pair("172.16.0.1"_ip, "255.255.255.252"_ip)));
}

TEST_F(HostAdaptersTest, TheyStandInTheHostsOrder)
{
    run("ip link add left type veth peer name right && ip link set left up");
    for (const char* address : {"192.168.1.5/24", "10.0.0.1/8", "172.16.0.1/30"})
        run(("ip address add " + std::string(address) + " broadcast + dev left").c_str());
    EXPECT_THAT(adapters(QDevice()),
                ElementsAre(Pair("192.168.1.5"_ip, "255.255.255.0"_ip), Pair("10.0.0.1"_ip, "255.0.0.0"_ip),
                            Pair("172.16.0.1"_ip, "255.255.255.252"_ip)));
}

TEST_F(HostAdaptersTest, AnAdapterThatIsDownCountsToo)
{
    run("ip link add left type veth peer name right && ip address add 192.168.1.5/24 broadcast + dev left");
    EXPECT_THAT(adapters(QDevice()), UnorderedElementsAre(Pair("192.168.1.5"_ip, "255.255.255.0"_ip)));
}

TEST_F(HostAdaptersTest, LoopbackAddressesAreLeftOutOnAnyInterfaceAndOthersCountOnLoopbackToo)
{
    run("ip link add left type veth peer name right && ip link set left up");
    run("ip address add 127.0.5.5/24 broadcast 127.0.5.255 dev left");
    run("ip address add 192.168.9.1/24 broadcast 192.168.9.255 dev lo");
    EXPECT_THAT(adapters(QDevice()), UnorderedElementsAre(Pair("192.168.9.1"_ip, "255.255.255.0"_ip)));
}

TEST_F(HostAdaptersTest, TheSnapshotIsThatOfConstructionAndCopiesCarryIt)
{
    run("ip link add left type veth peer name right && ip address add 192.168.1.5/24 broadcast + dev left");
    QDevice device;
    run("ip address flush dev left");
    const QDevice copy = device;
    EXPECT_THAT(adapters(device), UnorderedElementsAre(Pair("192.168.1.5"_ip, "255.255.255.0"_ip)));
    EXPECT_THAT(adapters(copy), UnorderedElementsAre(Pair("192.168.1.5"_ip, "255.255.255.0"_ip)));

    device.InitHostAdapterVector();
    EXPECT_THAT(adapters(device), IsEmpty());
    EXPECT_THAT(adapters(copy), UnorderedElementsAre(Pair("192.168.1.5"_ip, "255.255.255.0"_ip)));
}

TEST_F(HostAdaptersTest, TheOneThatHeardACameraIsKnownByItsIndexAndWithoutOneByItsAddress)
{
    run("ip link add left type veth peer name right && ip address add 192.168.1.5/24 dev left");
    run("ip address add 192.168.1.6/24 dev right");
    const auto indexOf = [](const char* name) { return static_cast<int>(if_nametoindex(name)); };
    QDevice camera;
    RZ_CC_DEVICE_INFO record{};
    camera.m_pDeviceInfo = &record;
    camera.m_nNetExport = "192.168.1.5"_ip.number();
    EXPECT_EQ(HearingAdapterIndex(camera), indexOf("left"));
    record.stGigEInfo.nNetExportIndex = if_nametoindex("right");
    EXPECT_EQ(HearingAdapterIndex(camera), indexOf("right"));
    run("ip link delete left");
    EXPECT_EQ(HearingAdapterIndex(camera), 0);
    record.stGigEInfo.nNetExportIndex = 0;
    EXPECT_EQ(HearingAdapterIndex(camera), 0);
}
