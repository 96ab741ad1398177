// SPDX-License-Identifier: Apache-2.0
#include "inventory/Inventory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace base::literals;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

namespace inventory {

static void PrintTo(const Conflict& conflict, std::ostream* out)
{
    *out << static_cast<int>(conflict.with) << ' ' << conflict.mac;
}

namespace {

constexpr base::MacAddress mac(std::uint8_t number)
{
    return {{2, 0, 0, 0, 0, number}};
}

constexpr unsigned Line = 4;
constexpr unsigned Bench = 7;

Camera camera(std::uint8_t number, base::Ipv4 address, unsigned adapter = Line)
{
    Camera result;
    result.mac = mac(number);
    result.ip.address = address;
    result.adapterIndex = adapter;
    return result;
}

Inventory site(std::vector<Camera> cameras)
{
    Adapter line;
    line.name = "line0";
    line.index = Line;
    line.mac = mac(101);
    line.addresses = {{"192.168.10.1"_ip, 24}};
    Adapter bench = line;
    bench.name = "bench0";
    bench.index = Bench;
    bench.mac = mac(102);
    bench.addresses = {{"10.20.0.1"_ip, 16}};
    Inventory result;
    result.adapters = {line, bench};
    result.cameras = std::move(cameras);
    return result;
}

Arrival speech(std::uint8_t number, base::Ipv4 address, unsigned adapter = Line,
               Arrival::Kind kind = Arrival::Kind::Speech)
{
    return {kind, adapter, mac(number), address};
}

const Conflict WithThisComputer{Conflict::With::ThisComputer, {}};

Conflict withCamera(std::uint8_t number)
{
    return {Conflict::With::Camera, mac(number)};
}

Conflict withMachine(std::uint8_t number)
{
    return {Conflict::With::Machine, mac(number)};
}

} // namespace

TEST(Conflicts, CamerasOfOneAddressHaveEachOther)
{
    Inventory all = site({camera(1, "192.168.10.21"_ip), camera(2, "192.168.10.22"_ip),
                          camera(3, "192.168.10.21"_ip), camera(4, "192.168.10.21"_ip, Bench)});
    findConflicts(all);
    EXPECT_THAT(all.cameras[0].conflicts, UnorderedElementsAre(withCamera(3), withCamera(4)));
    EXPECT_THAT(all.cameras[1].conflicts, IsEmpty());
    EXPECT_THAT(all.cameras[2].conflicts, UnorderedElementsAre(withCamera(1), withCamera(4)));
}

TEST(Conflicts, ACameraThatTwoAdaptersHearHasNoneWithItself)
{
    Inventory all = site({camera(1, "192.168.10.21"_ip), camera(1, "192.168.10.21"_ip, Bench)});
    findConflicts(all);
    EXPECT_THAT(all.cameras[0].conflicts, IsEmpty());
}

TEST(Conflicts, CamerasWithoutAnAddressHaveNone)
{
    Inventory all = site({camera(1, {}), camera(2, {})});
    findConflicts(all);
    EXPECT_THAT(all.cameras[0].conflicts, IsEmpty());
}

TEST(Conflicts, ACameraMayHaveAnAddressOfThisComputer)
{
    Inventory all = site({camera(1, "10.20.0.1"_ip)});
    findConflicts(all);
    EXPECT_THAT(all.cameras[0].conflicts, UnorderedElementsAre(WithThisComputer));
}

TEST(Conflicts, AMachineThatSaysByArpThatItHasTheAddressIsOneAndOnlyOnce)
{
    Inventory all = site({camera(1, "192.168.10.21"_ip)});
    all.arrivals = {speech(9, "192.168.10.21"_ip), speech(9, "192.168.10.21"_ip),
                    speech(8, "192.168.10.21"_ip, Line, Arrival::Kind::Announcement)};
    all.neighbours = {{Line, "192.168.10.21"_ip, mac(9), true}};
    findConflicts(all);
    EXPECT_THAT(all.cameras[0].conflicts, UnorderedElementsAre(withMachine(9), withMachine(8)));
}

TEST(Conflicts, AMachineThatTheKernelBelievesInIsOne)
{
    Inventory all = site({camera(1, "192.168.10.21"_ip)});
    all.neighbours = {{Line, "192.168.10.21"_ip, mac(9), true}};
    findConflicts(all);
    EXPECT_THAT(all.cameras[0].conflicts, UnorderedElementsAre(withMachine(9)));
}

TEST(Conflicts, ToAMachineThatMayBeGoneGoesWhatTheCameraDoesNotAnswer)
{
    Inventory all = site({camera(1, "192.168.10.21"_ip), camera(2, "192.168.10.22"_ip)});
    all.neighbours = {{Line, "192.168.10.21"_ip, mac(9), false}, {Line, "192.168.10.22"_ip, mac(9), false}};
    all.cameras[0].registers = Registers::Silent;
    all.cameras[1].registers = Registers::Told;
    findConflicts(all);
    EXPECT_THAT(all.cameras[0].conflicts, UnorderedElementsAre(withMachine(9)));
    EXPECT_THAT(all.cameras[1].conflicts, IsEmpty());
}

TEST(Conflicts, WhatSaysNothingOfTheAddressOnThatAdapterIsNone)
{
    const std::pair<const char*, Inventory> others[] = {
        {"the camera itself",
         [] {
             Inventory all = site({camera(1, "192.168.10.21"_ip)});
             all.arrivals = {speech(1, "192.168.10.21"_ip)};
             all.neighbours = {{Line, "192.168.10.21"_ip, mac(1), true}};
             return all;
         }()},
        {"one with another address",
         [] {
             Inventory all = site({camera(1, "192.168.10.21"_ip)});
             all.arrivals = {speech(9, "192.168.10.22"_ip)};
             return all;
         }()},
        {"one on another network",
         [] {
             Inventory all = site({camera(1, "192.168.10.21"_ip)});
             all.arrivals = {speech(9, "192.168.10.21"_ip, Bench)};
             all.neighbours = {{Bench, "192.168.10.21"_ip, mac(9), true}};
             return all;
         }()},
        {"one that only asks for it",
         [] {
             Inventory all = site({camera(1, "192.168.10.21"_ip)});
             all.arrivals = {speech(9, "192.168.10.21"_ip, Line, Arrival::Kind::Probe),
                             speech(8, "192.168.10.21"_ip, Line, Arrival::Kind::DhcpRequest)};
             return all;
         }()},
        {"an adapter of this computer that it hears on another one",
         [] {
             Inventory all = site({camera(1, "10.20.0.7"_ip)});
             all.arrivals = {speech(102, "10.20.0.7"_ip)};
             return all;
         }()},
    };
    for (auto [name, all] : others) {
        findConflicts(all);
        EXPECT_THAT(all.cameras[0].conflicts, IsEmpty()) << name;
    }
}

TEST(Inventory, ACameraIsTheReachableSightingOfIt)
{
    Inventory all = site({camera(1, "192.168.10.21"_ip, Bench), camera(1, "192.168.10.21"_ip, Line)});
    all.cameras[1].status = Status::Free;
    EXPECT_EQ(all.cameraWith(mac(1)), &all.cameras[1]);
    all.cameras[1].status = Status::Unreachable;
    EXPECT_EQ(all.cameraWith(mac(1)), &all.cameras[0]) << "the first one, when none is";
    EXPECT_EQ(all.cameraWith(mac(2)), nullptr);
    EXPECT_EQ(all.adapterWith(Bench)->name, "bench0");
    EXPECT_EQ(all.adapterWith(99), nullptr);
}

} // namespace inventory
