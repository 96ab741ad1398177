// SPDX-License-Identifier: Apache-2.0
#include "tests/hear/Frames.h"
#include "tests/hear/Listener.h"

#include <gtest/gtest.h>

using frames::ArpReply;
using frames::Discover;

TEST(Arrivals, AreArpAndWhatDhcpClientsSend)
{
    const Cable cable;
    Listener listener = Listener::listening(cable, "arrivals");
    for (const base::Bytes& frame : {frames::ArpRequest, ArpReply, frames::ArpProbe, Discover}) {
        cable.send(frame);
        EXPECT_EQ(listener.read(), frame);
    }
}

TEST(Arrivals, AreHeardWithATagThatGivesAPriorityOnly)
{
    const Cable cable;
    Listener listener = Listener::listening(cable, "arrivals");
    for (const base::Bytes& frame : {ArpReply, Discover}) {
        cable.send(frames::tagged(frame, 0x6000));
        EXPECT_EQ(listener.read(), frame) << "the kernel has taken the tag out";
    }
}

TEST(Arrivals, AreNothingElse)
{
    const Cable cable;
    cable.host().run("ip link set eth0 promisc on");
    Listener listener = Listener::listening(cable, "arrivals");
    const frames::Named others[] = {
        {"a DHCP server's answer", frames::changed(Discover, 34, {0, 67, 0, 68})},
        {"from the client's port to another", frames::changed(Discover, 36, {0, 69})},
        {"to the server's port from another", frames::changed(Discover, 34, {0, 67})},
        {"a camera's answer", frames::Answer},
        {"TCP", frames::changed(Discover, 23, {6})},
        {"a first fragment", frames::changed(Discover, 20, {0x20, 0x00})},
        {"a last fragment", frames::changed(Discover, 20, {0x00, 0x02})},
        {"no IPv4, but for its header", frames::changed(Discover, 12, {0x88, 0xB5})},
        {"ARP in a VLAN", frames::tagged(frames::ArpRequest, 7)},
        {"DHCP in a VLAN", frames::tagged(Discover, 7)},
        {"ARP between other hosts", frames::changed(ArpReply, 5, {0x06})},
        {"DHCP between other hosts", frames::changed(Discover, 0, {0x02, 0, 0, 0, 0, 0x06})},
    };
    for (const frames::Named& each : others) {
        SCOPED_TRACE(each.what);
        cable.send(each.frame);
        cable.send(ArpReply);
        ASSERT_EQ(listener.read(), ArpReply);
    }
    for (const base::Bytes& own : {frames::ArpRequest, Discover}) {
        cable.sendFromHost(own);
        cable.send(ArpReply);
        ASSERT_EQ(listener.read(), ArpReply) << "the host's own";
    }
}

TEST(Arrivals, OfAVlanBelongToItsAdapter)
{
    const Cable cable;
    if (!cable.addVlan())
        GTEST_SKIP() << "this kernel has no VLANs";
    Listener listener = Listener::listening(cable, "arrivals");
    Listener ofVlan = Listener::listening(cable, "arrivals", "eth0.7");
    cable.send(frames::tagged(Discover, 7));
    cable.send(ArpReply);
    EXPECT_EQ(ofVlan.read(), Discover);
    EXPECT_EQ(listener.read(), ArpReply);
}
