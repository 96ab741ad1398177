// SPDX-License-Identifier: Apache-2.0
#include "tests/hear/Frames.h"
#include "tests/hear/Listener.h"

#include <gtest/gtest.h>

using frames::Answer;

TEST(CameraPackets, ComeAsTheyWereSentOnceItHasSaidThatItListens)
{
    const Cable cable;
    Listener listener = Listener::listening(cable);
    base::Bytes broadcast = frames::changed(Answer, 0, {0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF});
    broadcast.push_back(0x63);
    for (const base::Bytes& frame : {Answer, broadcast, Answer}) {
        cable.send(frame);
        EXPECT_EQ(listener.read(), frame);
    }
}

TEST(CameraPackets, ComeBehindIpOptionsToo)
{
    const Cable cable;
    Listener listener = Listener::listening(cable);
    base::Bytes frame = frames::changed(Answer, 14, {0x46});
    frame.insert(frame.begin() + 34, {1, 1, 1, 0});
    cable.send(frame);
    EXPECT_EQ(listener.read(), frame);
}

TEST(CameraPackets, AreHeardWhetherOrNotTheyMayBeFragmented)
{
    const Cable cable;
    Listener listener = Listener::listening(cable);
    const base::Bytes frame = frames::changed(Answer, 20, {0x00, 0x00});
    cable.send(frame);
    EXPECT_EQ(listener.read(), frame);
}

TEST(CameraPackets, AreHeardWithATagThatGivesAPriorityOnly)
{
    const Cable cable;
    Listener listener = Listener::listening(cable);
    cable.send(frames::tagged(Answer, 0x6000));
    EXPECT_EQ(listener.read(), Answer) << "the kernel has taken the tag out";
}

TEST(CameraPackets, ComeToThePortNamedAlone)
{
    const Cable cable;
    Listener one = Listener::listening(cable, "40000");
    Listener other = Listener::listening(cable, "65535");
    const base::Bytes toOther = frames::changed(Answer, 36, {0xFF, 0xFF});
    cable.send(Answer);
    cable.send(toOther);
    cable.send(Answer);
    EXPECT_EQ(other.read(), toOther);
    EXPECT_EQ(one.read(), Answer);
    EXPECT_EQ(one.read(), Answer);
}

TEST(CameraPackets, AreAllThatComes)
{
    const Cable cable;
    cable.host().run("ip link set eth0 promisc on");
    Listener listener = Listener::listening(cable);
    for (const frames::Named& each : frames::unlikeAnswers()) {
        SCOPED_TRACE(each.what);
        cable.send(each.frame);
        cable.send(Answer);
        ASSERT_EQ(listener.read(), Answer);
    }
    cable.sendFromHost(frames::changed(Answer, 42, {0x7A, 0x7A}));
    cable.send(Answer);
    EXPECT_EQ(listener.read(), Answer);
    listener.endInput();
    EXPECT_EQ(listener.rest(), "");
}

TEST(CameraPackets, OfAVlanBelongToItsAdapter)
{
    const Cable cable;
    if (!cable.addVlan())
        GTEST_SKIP() << "this kernel has no VLANs";
    Listener listener = Listener::listening(cable);
    Listener ofVlan = Listener::listening(cable, "40000", "eth0.7");
    const base::Bytes untagged = frames::changed(Answer, 42, {0x63, 0x64});
    cable.send(frames::tagged(Answer, 7));
    cable.send(untagged);
    EXPECT_EQ(ofVlan.read(), Answer);
    EXPECT_EQ(listener.read(), untagged);
}

TEST(CameraPackets, ToAMacvlanBelongToIt)
{
    const Cable cable;
    cable.host().run("ip link add link eth0 name mac0 address 02:00:00:00:00:06 type macvlan mode bridge\n"
                     "ip link set mac0 up");
    Listener listener = Listener::listening(cable);
    Listener ofMacvlan = Listener::listening(cable, "40000", "mac0");
    const base::Bytes toMacvlan = frames::changed(Answer, 5, {0x06});
    cable.send(toMacvlan);
    cable.send(Answer);
    EXPECT_EQ(ofMacvlan.read(), toMacvlan);
    EXPECT_EQ(listener.read(), Answer);
}

TEST(CameraPackets, ComeWholeUpToTheLongestThatALengthCanTell)
{
    const Cable cable;
    cable.allowLongFrames();
    Listener listener = Listener::listening(cable);
    base::Bytes frame = Answer;
    for (const std::size_t tooLong : {65536u, 65549u}) {
        frame.resize(tooLong, 0x63);
        cable.send(frame);
    }
    for (const std::size_t size : {65535u, 4095u, 4094u}) {
        frame.resize(size);
        frame.back() = 0x64;
        cable.send(frame);
        EXPECT_EQ(listener.read(), frame);
    }
}
