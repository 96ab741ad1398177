// SPDX-License-Identifier: Apache-2.0
#include "tests/simulator/CameraFixture.h"

// A camera with several network interfaces, of which one is on this network.
namespace {

using namespace simulator_tests;

class CameraInterfaces : public CameraFixture
{
protected:
    CameraInterfaces() { become(withThree(2)); }

    /// At 192.168.1.20/24, with 192.168.1.99/24 stored for its interface `own`.
    static CameraConfig withThree(unsigned own)
    {
        CameraConfig camera = config();
        camera.interface = own;
        camera.interfaceMacs = {{{0x00, 0x1A, 0x2B, 0, 0, 0xA0}},
                                {{0x00, 0x1A, 0x2B, 0, 0, 0xA1}},
                                {{0x00, 0x1A, 0x2B, 0, 0, 0xA2}}};
        camera.interfaceMacs[own] = camera.mac;
        camera.persistent = {"192.168.1.99"_ip, "255.255.255.0"_ip, "192.168.1.254"_ip};
        return camera;
    }

    void expectAnswers(const std::vector<Exchange>& exchanges)
    {
        for (const Exchange& each : exchanges)
            EXPECT_EQ(answer(each.command), hex(each.answer)) << each.what;
    }
};

TEST_F(CameraInterfaces, AnswersDiscoveryForTheOneThatIsOnTheNetwork)
{
    for (const unsigned own : {0u, 1u, 2u}) {
        become(withThree(own));
        const Bytes packet = answer("42 11 0002 0000 1234");
        ASSERT_EQ(packet.size(), 8u + 248u);
        const Bytes beginning(packet.begin() + 8, packet.begin() + 8 + 72);
        EXPECT_EQ(beginning,
                  hex("00010002 80000001 0000001A 2B000001 00000007 00000006 000000000000000000000000"
                      "C0A80114 000000000000000000000000 FFFFFF00 000000000000000000000000 00000000"))
            << own;
    }
}

TEST_F(CameraInterfaces, HasARegisterBlockForEach)
{
    expectAnswers({
        {"number", "42 01 0080 0004 0001 00000600", "0000 0081 0004 0001 00000003"},
        {"first MAC", "42 01 0080 0008 0002 00000008 0000000C", "0000 0081 0008 0002 0000001A 2B0000A0"},
        {"first one's modes", "42 01 0080 0008 0003 00000010 00000014",
         "0000 0081 0008 0003 00000007 00000005"},
        {"first one's address", "42 01 0080 000C 0004 00000024 00000034 00000044",
         "0000 0081 000C 0004 0A090001 FFFFFF00 00000000"},
        {"first one's stored address", "42 01 0080 000C 0005 0000064C 0000065C 0000066C",
         "0000 0081 000C 0005 0A090001 FFFFFF00 00000000"},
        {"second MAC", "42 01 0080 0008 0006 00000680 00000684", "0000 0081 0008 0006 0000001A 2B0000A1"},
        {"second one's modes", "42 01 0080 0008 0007 00000688 0000068C",
         "0000 0081 0008 0007 00000007 00000005"},
        {"second one's address", "42 01 0080 000C 0008 0000069C 000006AC 000006BC",
         "0000 0081 000C 0008 0A090101 FFFFFF00 00000000"},
        {"second one's stored address", "42 01 0080 000C 0009 000006CC 000006DC 000006EC",
         "0000 0081 000C 0009 0A090101 FFFFFF00 00000000"},
        {"own MAC", "42 01 0080 0008 000A 00000700 00000704", "0000 0081 0008 000A 0000001A 2B000001"},
        {"own modes", "42 01 0080 0008 000B 00000708 0000070C", "0000 0081 0008 000B 00000007 00000006"},
        {"own address", "42 01 0080 000C 000C 0000071C 0000072C 0000073C",
         "0000 0081 000C 000C C0A80114 FFFFFF00 00000000"},
        {"own stored address", "42 01 0080 000C 000D 0000074C 0000075C 0000076C",
         "0000 0081 000C 000D C0A80163 FFFFFF00 C0A801FE"},
        {"no fourth one", "42 01 0080 0004 000E 00000780", "8003 0081 0000 000E"},
        {"no fourth one's stored address", "42 01 0080 0004 000F 000007CC", "8003 0081 0000 000F"},
    });
}

TEST_F(CameraInterfaces, LetsTheSameBeWrittenOfEach)
{
    answer(TakeControl);
    expectAnswers({
        {"another one's stored address",
         "42 01 0082 0018 0001 000006CC AC100007 000006DC FFFF0000 000006EC AC100001",
         "0000 0083 0004 0001 0000 0003"},
        {"the first one's mode", "42 01 0082 0008 0002 00000014 80000002", "0000 0083 0004 0002 0000 0001"},
        {"its link-local addressing stays on", "42 01 0080 0004 0003 00000014",
         "0000 0081 0004 0003 80000006"},
        {"own mode", "42 01 0082 0008 0004 0000070C 40000001", "0000 0083 0004 0004 0000 0001"},
        {"stays on too", "42 01 0080 0004 0005 0000070C", "0000 0081 0004 0005 40000005"},
        {"another one's address", "42 01 0082 0008 0006 0000069C AC100007", "8004 0083 0004 0006 0000 0000"},
        {"another one's MAC", "42 01 0082 0008 0007 00000684 AC100007", "8004 0083 0004 0007 0000 0000"},
        {"own address", "42 01 0082 0008 0008 0000071C AC100007", "8004 0083 0004 0008 0000 0000"},
    });
    camera.restart();
    const auto stored = camera.registers().stored().interfaces;
    ASSERT_EQ(stored.size(), 3u) << "all of it outlives a reset";
    EXPECT_EQ(stored[0], (simulator::StoredIp{0x80000006, {"10.9.0.1"_ip, "255.255.255.0"_ip, {}}}));
    EXPECT_EQ(stored[1], (simulator::StoredIp{5, {"172.16.0.7"_ip, "255.255.0.0"_ip, "172.16.0.1"_ip}}));
    EXPECT_EQ(stored[2],
              (simulator::StoredIp{0x40000005, {"192.168.1.99"_ip, "255.255.255.0"_ip, "192.168.1.254"_ip}}));
    EXPECT_EQ(camera.registers().storedIp(), stored[2]);
}

TEST_F(CameraInterfaces, TakesAForcedAddressInItsOwnBlock)
{
    answer(ForceTo10_0_0_9);
    EXPECT_EQ(answer("42 01 0080 000C 0001 0000071C 00000024 0000069C"),
              hex("0000 0081 000C 0001 0A000009 0A090001 0A090101"));
}

TEST_F(CameraInterfaces, LacksAStoredAddressOfItsOwnOnly)
{
    CameraConfig poor = withThree(1);
    poor.hasPersistentIp = false;
    become(poor);
    expectAnswers({
        {"own", "42 01 0080 0004 0001 000006CC", "8003 0081 0000 0001"},
        {"own modes", "42 01 0080 0004 0002 00000688", "0000 0081 0004 0002 00000006"},
        {"another one's", "42 01 0080 0004 0003 0000064C", "0000 0081 0004 0003 0A090001"},
        {"another one's modes", "42 01 0080 0004 0004 00000010", "0000 0081 0004 0004 00000007"},
    });
}

} // namespace
