// SPDX-License-Identifier: Apache-2.0
#include "tests/simulator/Capture.h"
#include "tests/simulator/GvcpClient.h"
#include "tests/simulator/Hex.h"
#include "tests/support/NetworkLab.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <set>

// What others make of a farm's neighbours, and of cameras that share an address or a body.
namespace {

using base::Bytes;
using namespace base::literals;
using simulator_tests::Capture;
using simulator_tests::GvcpClient;
using testing::HasSubstr;
using testing::StartsWith;

class FarmNeighbours : public testing::Test
{
protected:
    FarmNeighbours() { network.attach(host, "eth0", "192.168.1.5/24"); }

    lab::Switch network;
    lab::Namespace host;
};

Bytes part(const Bytes& packet, std::size_t from, std::size_t count)
{
    const auto begin = packet.begin() + static_cast<long>(from);
    return {begin, begin + static_cast<long>(count)};
}

TEST_F(FarmNeighbours, TheKernelKnowsOneByArpThatAnswersNoPing)
{
    const lab::Farm farm(network,
                         R"({"neighbours": [{"mac": "02:A0:00:00:00:01", "address": "192.168.1.30"}]})");
    EXPECT_EQ(host.execute({"ping", "-c1", "-W1", "192.168.1.30"}).status, 1);
    EXPECT_THAT(host.run("ip neigh show 192.168.1.30"), HasSubstr("lladdr 02:a0:00:00:00:01"));
}

TEST_F(FarmNeighbours, ADissectorKnowsTheirQuestionsAndFindsNoneMalformed)
{
    Capture capture(host, "ether src 02:a0:00:00:00:01", 2);
    const lab::Farm farm(network, R"({"neighbours": [
        {"mac": "02:A0:00:00:00:01", "asks": "dhcp", "every": 100}]})");
    EXPECT_THAT(capture.finish("dhcp"),
                testing::ElementsAre(StartsWith(" 1 1 DHCP DHCP Discover - Transaction"),
                                     StartsWith(" 1 1 DHCP DHCP Discover - Transaction")));
}

TEST_F(FarmNeighbours, ADissectorTellsAProbeFromAnAnnouncement)
{
    const std::pair<const char*, const char*> table[] = {
        {"arp", "Who has 192.168.1.30? (ARP Probe)"},
        {"announce", "ARP Announcement for 192.168.1.30"},
    };
    for (const auto& [asks, info] : table) {
        Capture capture(host, "ether src 02:a0:00:00:00:01", 2);
        const lab::Farm farm(network, R"({"neighbours": [{"mac": "02:A0:00:00:00:01", "asks": ")" +
                                          std::string(asks) +
                                          R"(", "address": "192.168.1.30", "every": 100}]})");
        EXPECT_THAT(capture.finish("arp"), testing::ElementsAre(HasSubstr(info), HasSubstr(info)));
    }
}

TEST_F(FarmNeighbours, BothOfTwoCamerasWithOneAddressAnswerDiscovery)
{
    const lab::Farm farm(network, R"({"cameras": [
        {"mac": "00:1A:2B:00:00:01", "address": "192.168.1.20"},
        {"mac": "00:1A:2B:00:00:02", "address": "192.168.1.20"}],
        "neighbours": [{"mac": "02:A0:00:00:00:01", "address": "192.168.1.20"}]})");
    const GvcpClient client(host);
    client.send(base::LimitedBroadcast, hex("42 11 0002 0000 0001"));
    std::set<Bytes> macs;
    for (int i = 0; i < 2; ++i) {
        const auto answer = client.receive();
        ASSERT_EQ(answer.payload.size(), 256u);
        EXPECT_EQ(answer.source, "192.168.1.20"_ip);
        macs.insert(part(answer.payload, 18, 6));
    }
    EXPECT_EQ(macs, (std::set<Bytes>{hex("001A2B000001"), hex("001A2B000002")}));
}

TEST_F(FarmNeighbours, TwoPortsOfOneCameraSayTheSameOfItAndEachItsOwnMac)
{
    const std::string ofBoth =
        R"(, "serial": "SN0001", "interfaceMacs": ["00:1A:2B:00:00:01", "00:1A:2B:00:00:02"]})";
    const lab::Farm farm(network, R"({"cameras": [
        {"mac": "00:1A:2B:00:00:01", "interface": 0, "interfaces": 2, "address": "192.168.1.20")" +
                                      ofBoth + R"(,
        {"mac": "00:1A:2B:00:00:02", "interface": 1, "address": "192.168.1.21")" +
                                      ofBoth + "]}");
    const GvcpClient client(host);
    client.send(base::LimitedBroadcast, hex("42 11 0002 0000 0001"));
    std::set<Bytes> macs;
    for (int i = 0; i < 2; ++i) {
        const auto answer = client.receive();
        ASSERT_EQ(answer.payload.size(), 256u);
        EXPECT_EQ(part(answer.payload, 8 + 216, 6), hex("534E30303031")) << "SN0001";
        macs.insert(part(answer.payload, 18, 6));
    }
    EXPECT_EQ(macs, (std::set<Bytes>{hex("001A2B000001"), hex("001A2B000002")}));
    // The low parts of both MACs.
    for (const base::Ipv4 port : {"192.168.1.20"_ip, "192.168.1.21"_ip})
        EXPECT_EQ(client.ask(port, hex("42 01 0080 0008 0002 0000000C 00000684")),
                  hex("0000 0081 0008 0002 2B000001 2B000002"));
}

} // namespace
