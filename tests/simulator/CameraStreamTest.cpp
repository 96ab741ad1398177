// SPDX-License-Identifier: Apache-2.0
#include "tests/simulator/CameraFixture.h"

// Where a camera's images would go.
namespace {

using namespace simulator_tests;

class CameraStream : public CameraFixture
{
protected:
    /// Under control, to 192.168.1.5:50020 in packets of 1500 bytes that are not fragmented.
    void openStream()
    {
        answer(TakeControl);
        EXPECT_EQ(answer("42 01 0082 0018 0020 00000D00 0000C364 00000D04 400005DC 00000D18 C0A80105"),
                  hex("0000 0083 0004 0020 0000 0003"));
    }

    const std::string read = "42 01 0080 000C 0021 00000D00 00000D04 00000D18";
    const Bytes open = hex("0000 0081 000C 0021 0000C364 400005DC C0A80105");
    const Bytes closed = hex("0000 0081 000C 0021 00000000 00000000 00000000");
};

TEST_F(CameraStream, GoesWhereItsControllerSays)
{
    EXPECT_EQ(answer("42 01 0080 0004 0001 00000904"), hex("0000 0081 0004 0001 00000001"));
    EXPECT_EQ(answer("42 01 0080 0004 0002 00000D40"), hex("8003 0081 0000 0002")) << "no second one";
    EXPECT_EQ(answer(read), closed);
    EXPECT_EQ(answer("42 01 0082 0008 0003 00000D18 C0A80105"), hex("8006 0083 0004 0003 0000 0000"))
        << "without control";
    openStream();
    EXPECT_EQ(answer(read, OtherApplication), open);
    EXPECT_EQ(answer("42 01 0084 0008 0004 00000D00 0000 0008"),
              hex("0000 0085 000C 0004 00000D00 0000C364 400005DC"));
}

TEST_F(CameraStream, EndsWhenControlIsGivenBack)
{
    openStream();
    answer("42 01 0082 0008 0001 00000A00 00000001");
    EXPECT_EQ(answer(read), open) << "another privilege, the same holder";
    answer("42 01 0082 0008 0002 00000A00 00000000");
    EXPECT_EQ(answer(read), closed);
}

TEST_F(CameraStream, EndsWhenControlIsLost)
{
    openStream();
    now += 3001ms;
    EXPECT_EQ(answer(read, OtherApplication), closed);

    openStream();
    camera.hold({"192.168.1.77"_ip, 2});
    EXPECT_EQ(answer(read), closed) << "to another application";
    camera.release();

    openStream();
    camera.restart();
    EXPECT_EQ(answer(read), closed);
}

TEST_F(CameraStream, OfATestPacketKeepsTheSizeOnly)
{
    answer(TakeControl);
    answer("42 01 0082 0008 0001 00000D04 C00005DC");
    EXPECT_EQ(answer("42 01 0080 0004 0002 00000D04"), hex("0000 0081 0004 0002 400005DC"));
}

TEST_F(CameraStream, IsOneOfSeveralOrNone)
{
    CameraConfig many = config();
    many.streams = 2;
    become(many);
    EXPECT_EQ(answer("42 01 0080 0004 0001 00000904"), hex("0000 0081 0004 0001 00000002"));
    openStream();
    answer("42 01 0082 0018 0002 00000D40 0000C365 00000D44 000023F4 00000D58 C0A80106");
    const std::string readSecond = "42 01 0080 000C 0003 00000D40 00000D44 00000D58";
    EXPECT_EQ(answer(readSecond), hex("0000 0081 000C 0003 0000C365 000023F4 C0A80106"));
    EXPECT_EQ(answer(read), open);
    EXPECT_EQ(answer("42 01 0080 0004 0004 00000D80"), hex("8003 0081 0000 0004")) << "no third one";
    answer("42 01 0082 0008 0005 00000A00 00000000");
    EXPECT_EQ(answer(readSecond), hex("0000 0081 000C 0003 00000000 00000000 00000000"));

    CameraConfig none = config();
    none.streams = 0;
    become(none);
    EXPECT_EQ(answer("42 01 0080 0004 0001 00000904"), hex("0000 0081 0004 0001 00000000"));
    EXPECT_EQ(answer(read), hex("8003 0081 0000 0021"));
}

TEST_F(CameraStream, IsOpenFromTheStartForAHolderElsewhere)
{
    CameraConfig held = config();
    held.heldBy = CameraConfig::Holder{"192.168.1.77"_ip, 2, 50010, false,
                                       simulator::Endpoint{"192.168.1.78"_ip, 50020}};
    become(held);
    EXPECT_EQ(answer(read), hex("0000 0081 000C 0021 0000C364 000005DC C0A8014E"));
    camera.release();
    EXPECT_EQ(answer(read), closed);
}

} // namespace
