// SPDX-License-Identifier: Apache-2.0
#include "simulator/config/ReadFarm.h"
#include "tests/simulator/CameraFixture.h"

#include <gmock/gmock.h>

namespace {

using namespace simulator_tests;
using simulator::readFarm;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Pair;

CameraConfig configOf(const std::string& members)
{
    return readFarm(R"({"cameras": [{"mac": "00:1A:2B:00:00:01", "address": "192.168.1.20", )" + members +
                    "}]}")
        .cameras.at(0);
}

std::string errorOf(const std::string& members)
{
    try {
        configOf(members);
    } catch (const simulator::ConfigError& error) {
        return error.what();
    }
    return "no error";
}

class MakersRegisters : public CameraFixture
{
protected:
    void become(const std::string& members)
    {
        CameraFixture::become(configOf(members));
        answer(TakeControl);
    }

    auto registers() const { return camera.registers().stored().registers; }
};

TEST_F(MakersRegisters, AreReadAndWrittenAsTheirAccessSays)
{
    become(R"("registers": [{"address": "0x18000010", "value": "0xA5A50000"},
                            {"address": "0xb000", "value": "0x1", "access": "RO"},
                            {"address": "0xFFFFFFF0", "access": "WO"}])");
    const Exchange exchanges[] = {
        {"read", "42 01 0080 0004 0001 18000010", "0000 0081 0004 0001 A5A50000"},
        {"write", "42 01 0082 0008 0002 18000010 01020304", "0000 0083 0004 0002 0000 0001"},
        {"read again", "42 01 0080 0004 0003 18000010", "0000 0081 0004 0003 01020304"},
        {"read what is read-only", "42 01 0080 0004 0004 0000B000", "0000 0081 0004 0004 00000001"},
        {"write it", "42 01 0082 0008 0005 0000B000 00000000", "8004 0083 0004 0005 0000 0000"},
        {"write what is write-only", "42 01 0082 0008 0006 FFFFFFF0 00000007",
         "0000 0083 0004 0006 0000 0001"},
        {"read it", "42 01 0080 0004 0007 FFFFFFF0", "8006 0081 0000 0007"},
        {"read it as memory", "42 01 0084 0008 0008 FFFFFFF0 0000 0004", "8006 0085 0000 0008"},
        {"what is beside", "42 01 0080 0004 0009 18000014", "8003 0081 0000 0009"},
    };
    for (const Exchange& each : exchanges)
        EXPECT_EQ(answer(each.command), hex(each.answer)) << each.what;
    EXPECT_THAT(registers(), ElementsAre(Pair(0x18000010, 0x01020304), Pair(0xB000, 1), Pair(0xFFFFFFF0, 7),
                                         Pair(0x00010000, 0)));
}

TEST_F(MakersRegisters, OutliveAReset)
{
    become(R"("registers": [{"address": "0x18000010"}])");
    answer("42 01 0082 0008 0001 18000010 01020304");
    camera.restart();
    EXPECT_EQ(answer("42 01 0080 0004 0001 18000010"), hex("0000 0081 0004 0001 01020304"));
}

TEST_F(MakersRegisters, ResetTheCameraByABitOfTheMaskAndKeepTheOthers)
{
    become(R"("resetRegister": "0x18000010", "resetMask": "0x01000000",
              "registers": [{"address": "0x18000010", "value": "0xA4A50001"}])");
    EXPECT_EQ(react("42 01 0082 0008 0001 18000010 A4A50003").effect, Camera::Effect::None);
    EXPECT_EQ(react("42 01 0082 0008 0002 18000010 A5A50003").effect, Camera::Effect::Reset);
    EXPECT_EQ(react("42 01 0080 0004 0003 18000010").effect, Camera::Effect::None) << "once";
    EXPECT_THAT(registers(), ElementsAre(Pair(0x18000010, 0xA4A50003)));
    EXPECT_EQ(react("42 01 0086 0008 0004 18000010 01000000").effect, Camera::Effect::Reset);
    EXPECT_THAT(registers(), ElementsAre(Pair(0x18000010, 0)));
}

TEST_F(MakersRegisters, MayHoldABitOfTheMaskFromTheStart)
{
    become(
        R"("resetMask": "0xF0", "registers": [{"address": "0x00010000", "value": "0x10", "access": "WO"}])");
    EXPECT_EQ(react("42 01 0080 0004 0001 00010000").answer->packet, hex("8006 0081 0000 0001"));
    EXPECT_EQ(react("42 01 0082 0008 0002 00010000 00000001").effect, Camera::Effect::None);
    EXPECT_EQ(react("42 01 0082 0008 0003 00010000 00000080").effect, Camera::Effect::Reset);
}

TEST(MakersRegistersOfAConfiguration, SayWhatIsWrongWithThem)
{
    const std::pair<const char*, const char*> rows[] = {
        {R"("registers": {})", R"("registers" must be a list)"},
        {R"("registers": [7])", R"(registers: must be an object)"},
        {R"("registers": [{}])", R"(registers: "address" is missing)"},
        {R"("registers": [{"address": 45056}])", R"("address" must be a text)"},
        {R"("registers": [{"address": "0xB001"}])", R"("address" must be the address of a maker's register)"},
        {R"("registers": [{"address": "0x9FFC"}])", R"("address" must be the address)"},
        {R"("registers": [{"address": "B000"}])", R"("address" must be the address)"},
        {R"("registers": [{"address": "0x"}])", R"("address" must be the address)"},
        {R"("registers": [{"address": "0xC0A00010"}])", R"("address" must not be where the description is)"},
        {R"("registers": [{"address": "0xB000", "value": "1"}])", R"("value" must be 32 bits)"},
        {R"("registers": [{"address": "0xB000", "value": "0x1G"}])", R"("value" must be 32 bits)"},
        {R"("registers": [{"address": "0xB000", "access": "rw"}])",
         R"("access" must be one of "RW", "RO", "WO")"},
        {R"("registers": [{"address": "0xB000", "bits": "0x1"}])", R"("bits" is unknown)"},
        {R"("registers": [{"address": "0xB000"}, {"address": "0x0000B000"}])",
         R"("registers" lists an address twice)"},
        {R"("resetMask": "0x00")", R"("resetMask" must have a bit)"},
        {R"("resetMask": "1")", R"("resetMask" must be the bits)"},
    };
    for (const auto& [members, error] : rows) {
        EXPECT_THAT(errorOf(members), HasSubstr("cameras[0] (00:1A:2B:00:00:01)")) << members;
        EXPECT_THAT(errorOf(members), HasSubstr(error)) << members;
    }
}

} // namespace
