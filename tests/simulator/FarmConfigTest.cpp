// SPDX-License-Identifier: Apache-2.0
#include "simulator/config/ReadFarm.h"
#include "tests/simulator/ConfigErrorOf.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using namespace simulator;
using namespace base::literals;
using base::IpSettings;
using testing::HasSubstr;

/// A farm of one camera with these further members.
std::string oneCamera(const std::string& members)
{
    return R"({"cameras": [{"mac": "00:1A:2B:00:00:01", "address": "192.168.1.20")" +
           (members.empty() ? "" : ", " + members) + "}]}";
}

TEST(FarmConfig, NeedsNoMoreThanAMacAndAnAddress)
{
    const FarmConfig farm = readFarm(oneCamera(""));
    ASSERT_EQ(farm.cameras.size(), 1u);
    const CameraConfig& camera = farm.cameras[0];
    EXPECT_EQ(camera.mac, (base::MacAddress{{0x00, 0x1A, 0x2B, 0x00, 0x00, 0x01}}));
    EXPECT_EQ(camera.ip, (IpSettings{"192.168.1.20"_ip, "255.255.255.0"_ip, {}}));
    EXPECT_EQ(camera.ipMethod, CameraConfig::IpMethod::Dhcp);
    EXPECT_EQ(camera.persistent, IpSettings{});
    EXPECT_EQ(camera.serial, "FC000001");
    EXPECT_EQ(camera.answerBy, CameraConfig::AnswerBy::Unicast);
    EXPECT_FALSE(camera.heldBy);
    EXPECT_TRUE(camera.tellsHolder);
    EXPECT_EQ(camera.linkSpeed, 1000u);
    EXPECT_TRUE(camera.hasHeartbeatOff);
}

TEST(FarmConfig, TakesACameraWithoutAHeartbeatToSwitchOff)
{
    EXPECT_FALSE(readFarm(oneCamera(R"("hasHeartbeatOff": false)")).cameras.at(0).hasHeartbeatOff);
}

TEST(FarmConfig, TakesALinkSpeedOf0ForACameraThatDoesNotSayIt)
{
    EXPECT_FALSE(readFarm(oneCamera(R"("linkSpeed": 0)")).cameras.at(0).linkSpeed);
}

TEST(FarmConfig, ReadsEveryMember)
{
    const FarmConfig farm = readFarm(R"({"seed": 7, "cameras": [{
        "mac": "00-1a-2b-00-00-01", "address": "10.0.0.5", "mask": "255.0.0.0", "gateway": "10.0.0.1",
        "manufacturer": "M", "model": "O", "version": "V", "info": "I", "serial": "S1", "userName": "U",
        "ipConfiguration": "lla", "persistent": {"address": "10.0.0.9", "mask": "255.255.0.0", "gateway": "10.0.0.2"},
        "answerDelay": 950, "rebootTime": 20, "answer": "arp", "forceIpAcknowledge": "new",
        "heldBy": "10.0.0.77", "heldPrivilege": "control", "loss": 0.25, "forgedAnswers": 9,
        "heartbeatTimeout": 5000, "dhcpTimeout": 700, "probeInterval": 30, "resetRegister": "0xF0000614",
        "userNameAccess": "readOnly", "rebootsWithoutAck": true, "writeMemory": false,
        "readMemoryOmitsAddress": true, "arpLifetime": 700, "forceIpOffTime": 800, "pendingAckOn": true, "acknowledgeExtra": 64,
        "tellsHolder": false, "linkSpeed": 100, "heldPort": 50010, "heartbeatOff": true,
        "stream": "10.0.0.78:50020", "streams": 3,
        "interface": 1,
        "interfaces": 3, "interfaceMacs": ["00:1A:2B:00:00:11", "00:1A:2B:00:00:01", "00:1A:2B:00:00:13"],
        "faults": [{"command": "READREG", "action": "drop"}, {"command": "PING", "action": "drop", "times": 3},
                   {"command": "ANY", "action": "pending", "time": 900, "after": 4, "every": 5},
                   {"command": "CHANGE", "action": "hold"}],
        "plugged": false,
        "noise": ["truncated", "wrongId"]}]})");
    const CameraConfig& camera = farm.cameras.at(0);
    EXPECT_EQ(farm.seed, 7u);
    EXPECT_EQ(camera.ip, (IpSettings{"10.0.0.5"_ip, "255.0.0.0"_ip, "10.0.0.1"_ip}));
    EXPECT_EQ(camera.manufacturer + camera.model + camera.version + camera.info + camera.serial +
                  camera.userName,
              "MOVIS1U");
    EXPECT_EQ(camera.ipMethod, CameraConfig::IpMethod::LinkLocal);
    EXPECT_EQ(camera.persistent, (IpSettings{"10.0.0.9"_ip, "255.255.0.0"_ip, "10.0.0.2"_ip}));
    EXPECT_EQ(camera.answerDelay.count(), 950);
    EXPECT_EQ(camera.rebootTime.count(), 20);
    EXPECT_EQ(camera.answerBy, CameraConfig::AnswerBy::Arp);
    EXPECT_EQ(camera.forceIpAcknowledge, CameraConfig::ForceIpAcknowledge::FromNewAddress);
    ASSERT_TRUE(camera.heldBy);
    EXPECT_EQ(camera.heldBy->address, "10.0.0.77"_ip);
    EXPECT_EQ(camera.heldBy->privilege, 2u);
    EXPECT_EQ(camera.heldBy->port, 50010u);
    EXPECT_TRUE(camera.heldBy->heartbeatOff);
    EXPECT_EQ(camera.heldBy->stream, (Endpoint{"10.0.0.78"_ip, 50020}));
    EXPECT_EQ(camera.streams, 3u);
    EXPECT_EQ(camera.loss, 0.25);
    EXPECT_EQ(camera.forgedAnswers, 9u);
    EXPECT_EQ(camera.heartbeatTimeout.count(), 5000);
    EXPECT_EQ(camera.dhcpTimeout.count(), 700);
    EXPECT_EQ(camera.probeInterval.count(), 30);
    EXPECT_EQ(camera.resetRegister, 0xF0000614u);
    EXPECT_EQ(camera.userNameAccess, CameraConfig::UserNameAccess::ReadOnly);
    EXPECT_TRUE(camera.rebootsWithoutAcknowledge);
    EXPECT_FALSE(camera.writesMemory);
    EXPECT_TRUE(camera.readMemoryOmitsAddress);
    EXPECT_EQ(camera.interface, 1u);
    ASSERT_EQ(camera.interfaceCount(), 3u);
    EXPECT_EQ(camera.interfaceMacs[2].toText(), "00:1A:2B:00:00:13");
    EXPECT_TRUE(camera.pendingAckOn);
    EXPECT_EQ(camera.acknowledgeExtra, 64u);
    EXPECT_FALSE(camera.tellsHolder);
    EXPECT_EQ(camera.linkSpeed, 100u);
    EXPECT_EQ(camera.arpLifetime.count(), 700);
    EXPECT_EQ(camera.forceIpOffTime.count(), 800);
    EXPECT_FALSE(camera.isPlugged);
    ASSERT_EQ(camera.faults.size(), 4u);
    EXPECT_FALSE(camera.faults[3].request);
    EXPECT_TRUE(camera.faults[3].isOfChange);
    EXPECT_EQ(camera.faults[3].action, FaultAction::Hold);
    EXPECT_FALSE(camera.faults[2].isOfChange);
    EXPECT_FALSE(camera.faults[2].request);
    EXPECT_EQ(camera.faults[2].action, FaultAction::Pending);
    EXPECT_EQ(camera.faults[2].time.count(), 900);
    EXPECT_EQ(camera.faults[2].after, 4u);
    EXPECT_EQ(camera.faults[2].every, 5u);
    EXPECT_EQ(camera.faults[0].request, Request::ReadRegister);
    EXPECT_EQ(camera.faults[0].action, FaultAction::Drop);
    EXPECT_FALSE(camera.faults[0].times);
    EXPECT_EQ(camera.faults[1].request, Request::Ping);
    EXPECT_EQ(camera.faults[1].times, 3u);
    EXPECT_EQ(camera.noise, (std::vector{NoiseKind::Truncated, NoiseKind::WrongId}));
}

TEST(FarmConfig, CountsUpTheCamerasThatOneEntryStandsFor)
{
    const FarmConfig farm = readFarm(R"({"cameras": [{"mac": "00:1A:2B:00:00:FF", "address": "10.0.0.254",
        "serial": "A098", "ipConfiguration": "persistent", "repeat": 3,
        "interfaces": 2, "interfaceMacs": ["00:1A:2B:00:00:FF", "00:1A:2B:00:01:FF"]}]})");
    ASSERT_EQ(farm.cameras.size(), 3u);
    EXPECT_EQ(farm.cameras[2].mac.toText(), "00:1A:2B:00:01:01");
    EXPECT_EQ(farm.cameras[2].interfaceMacs[1].toText(), "00:1A:2B:00:02:01");
    EXPECT_EQ(farm.cameras[2].ip.address, "10.0.1.0"_ip);
    EXPECT_EQ(farm.cameras[2].persistent, farm.cameras[2].ip);
    EXPECT_EQ(farm.cameras[1].serial, "A099");
    EXPECT_EQ(farm.cameras[2].serial, "A100");
}

TEST(FarmConfig, CountsUpStoredAddressesTooAndLeavesOutWhatIsNotThere)
{
    const FarmConfig farm = readFarm(R"({"cameras": [
        {"mac": "00:1A:2B:00:00:01", "ipConfiguration": "persistent", "persistent": {"address": "10.0.0.9"},
         "repeat": 2},
        {"mac": "00:1A:2B:00:00:11", "repeat": 2}]})");
    EXPECT_EQ(farm.cameras[1].persistent, (IpSettings{"10.0.0.10"_ip, "255.255.255.0"_ip, {}}));
    EXPECT_EQ(farm.cameras[1].ip.address, base::Ipv4());
    EXPECT_EQ(farm.cameras[3].ip.address, base::Ipv4());
    EXPECT_EQ(farm.cameras[3].persistent.address, base::Ipv4());
}

TEST(FarmConfig, TakesAUserNameAsBytes)
{
    const auto nameOf = [](const std::string& bytes) {
        return readFarm(oneCamera(R"("userNameBytes": ")" + bytes + '"')).cameras.at(0).userName;
    };
    EXPECT_EQ(nameOf("E9 74 e9"), "\xE9t\xE9");
    EXPECT_EQ(nameOf("01 7F 80 FF 01 7F 80 FF 01 7F 80 FF 01 7F 80 FF"),
              "\x01\x7F\x80\xFF\x01\x7F\x80\xFF\x01\x7F\x80\xFF\x01\x7F\x80\xFF");
    for (const char* const wrong :
         {"", " ", "E", "E9 7", "E974", "E9  74", "E9 74 ", " E9", "E9 00", "-1", "+1", "0x", "E9,74", "G1",
          "01 02 03 04 05 06 07 08 09 0A 0B 0C 0D 0E 0F 10 11"})
        EXPECT_THAT(errorOf(oneCamera(R"("userNameBytes": ")" + std::string(wrong) + '"')),
                    HasSubstr(R"("userNameBytes" must be 1 to 16 bytes such as "E9 74 E9")"))
            << wrong;
}

TEST(FarmConfig, SaysWhichCameraAndMemberIsWrongAndWhatIsAllowed)
{
    const struct
    {
        const char* members;
        const char* error;
    } table[] = {
        {R"("adress": "10.0.0.1")", R"("adress" is unknown; known here are mac, address, mask)"},
        {R"("mask": "255.0.255.0")", R"("mask" must be a subnet mask)"},
        {R"("gateway": "10.0.0")", R"("gateway" must be an IPv4 address)"},
        {R"("gateway": 10)", R"("gateway" must be an IPv4 address)"},
        {R"("model": 5)", R"("model" must be a text of at most 32 bytes)"},
        {R"("userName": "12345678901234567")", R"("userName" must be a text of at most 16 bytes)"},
        {R"("ipConfiguration": "static")", R"("ipConfiguration" must be one of "persistent", "dhcp", "lla")"},
        {R"("persistent": "10.0.0.1")", "persistent: must be an object in braces"},
        {R"("persistent": {"ip": "10.0.0.1"})",
         R"(persistent: "ip" is unknown; known here are address, mask)"},
        {R"("repeat": 0)", R"("repeat" must be a whole number from 1 to 256)"},
        {R"("answerDelay": -1)", R"("answerDelay" must be a whole number from 0 to 60000)"},
        {R"("answerDelay": 1.5)", R"("answerDelay" must be a whole number)"},
        {R"("forceIpOffTime": 60001)", R"("forceIpOffTime" must be a whole number from 0 to 60000)"},
        {R"("arpLifetime": "long")", R"("arpLifetime" must be a whole number from 0 to)"},
        {R"("answer": "multicast")", R"("answer" must be one of "unicast", "arp", "broadcast")"},
        {R"("forceIpAcknowledge": "no")", R"(must be one of "old", "new", "broadcast", "never")"},
        {R"("heldPrivilege": "control")", R"("heldPrivilege" needs "heldBy")"},
        {R"("heldPort": 5000)", R"("heldPort" needs "heldBy")"},
        {R"("heldBy": "10.0.0.1", "heldPort": 0)", R"("heldPort" must be a whole number from 1 to 65535)"},
        {R"("heldBy": "10.0.0.1", "heldPort": 65536)", R"("heldPort" must be a whole number from 1)"},
        {R"("heldBy": "10.0.0.1:5000")", R"("heldBy" must be an IPv4 address)"},
        {R"("heartbeatOff": false)", R"("heartbeatOff" needs "heldBy")"},
        {R"("heldBy": "10.0.0.1", "heartbeatOff": 1)", R"("heartbeatOff" must be true or false)"},
        {R"("heldBy": "10.0.0.1", "heartbeatOff": true, "hasHeartbeatOff": false)",
         R"("heartbeatOff" cannot be true for a camera whose "hasHeartbeatOff" is false)"},
        {R"("streams": 9)", R"("streams" must be a whole number from 0 to 8)"},
        {R"("stream": "10.0.0.1:5000")", R"("stream" needs "heldBy")"},
        {R"("heldBy": "10.0.0.1", "stream": "10.0.0.1")", R"("stream" must be an address and a port)"},
        {R"("heldBy": "10.0.0.1", "stream": "10.0.0.1:0")", R"("stream" must be an address and a port)"},
        {R"("heldBy": "10.0.0.1", "stream": "10.0.0.1:65536")", R"("stream" must be an address)"},
        {R"("heldBy": "10.0.0.1", "stream": 5)", R"("stream" must be a text)"},
        {R"("heldBy": "10.0.0.1", "stream": "10.0.0.1:5000", "streams": 0)",
         R"("stream" cannot go with a camera of no "streams")"},
        {R"("interface": 4)", R"("interface" must be a whole number from 0 to 3)"},
        {R"("interfaces": 5)", R"("interfaces" must be a whole number from 1 to 4)"},
        {R"("interface": 1, "interfaces": 1)", R"("interfaces" must be more than "interface")"},
        {R"("interface": 1)", R"("interfaceMacs" is missing)"},
        {R"("interfaces": 2)", R"("interfaceMacs" is missing)"},
        {R"("interfaceMacs": "001A2B000001")", R"("interfaceMacs" must be a list in brackets)"},
        {R"("interfaceMacs": ["001A2B000002"])", R"("interfaceMacs" must have "mac" in the place)"},
        {R"("interface": 1, "interfaceMacs": ["001A2B000001"])", R"("interfaceMacs" must list 2 MAC)"},
        {R"("interface": 1, "interfaceMacs": ["001A2B000001", "001A2B000001"])",
         "must list each MAC address once"},
        {R"("interface": 1, "interfaceMacs": ["none", "001A2B000001"])",
         "must be the MAC address of a single"},
        {R"("tellsHolder": "no")", R"("tellsHolder" must be true or false)"},
        {R"("hasHeartbeatOff": 0)", R"("hasHeartbeatOff" must be true or false)"},
        {R"("linkSpeed": 400001)", R"("linkSpeed" must be a whole number from 0 to 400000)"},
        {R"("linkSpeed": -1)", R"("linkSpeed" must be a whole number)"},
        {R"("linkSpeed": null)", R"("linkSpeed" must be a whole number)"},
        {R"("hasPendingAck": 1)", R"("hasPendingAck" must be true or false)"},
        {R"("hasPendingAck": false, "pendingAckOn": true)", R"("pendingAckOn" cannot be true for a camera)"},
        {R"("acknowledgeExtra": 65)", R"("acknowledgeExtra" must be a whole number from 0 to 64)"},
        {R"("userNameBytes": 16)", R"("userNameBytes" must be 1 to 16 bytes)"},
        {R"("userNameBytes": "41", "userName": "A")", R"("userNameBytes" cannot go with "userName")"},
        {R"("userNameBytes": "41", "userNameAccess": "none")", R"("userNameAccess" cannot be "none")"},
        {R"("loss": 2)", R"("loss" must be a number from 0 to 1)"},
        {R"("noise": "random")", R"("noise" must be a list in brackets)"},
        {R"("noise": ["loud"])", R"("noise" must be one of "truncated", "oversized", "foreign")"},
        {R"("faults": [{"command": "READREG"}])", R"(faults: "action" is missing)"},
        {R"("faults": [{"action": "drop"}])", R"(faults: "command" is missing)"},
        {R"("faults": [{"command": "ARP", "action": "busy"}])", "can only be met with drop and vanish"},
        {R"("faults": [{"command": "ANY", "action": "delay"}])", "delay and pending need a time"},
        {R"("hasPersistentIp": 1)", R"("hasPersistentIp" must be true or false)"},
        {R"("hasPersistentIp": false, "ipConfiguration": "persistent")", "with a persistent address"},
        {R"("userNameAccess": "none", "userName": "x")",
         R"(cannot be "none" for a camera with a "userName")"},
        {R"("resetRegister": "0x0938")", R"("resetRegister" must be the address of a maker's register)"},
        {R"("resetRegister": "65536")", R"("resetRegister" must be the address)"},
        {R"("resetRegister": "0x10001")", R"("resetRegister" must be the address)"},
        {R"("heartbeatTimeout": 0)", R"("heartbeatTimeout" must be a whole number from 1)"},
        {R"("faults": [{"command": "READ", "action": "drop"}])", R"("command" must be one of "DISCOVERY")"},
        {R"("faults": [{"command": "PING", "action": "reset"}])", "can only be met with drop and vanish"},
        {R"("plugged": 0)", R"("plugged" must be true or false)"},
        {R"("faults": [{"command": "ARP", "action": "drop", "times": 0}])",
         R"("times" must be a whole number)"},
    };
    for (const auto& each : table) {
        const std::string error = errorOf(oneCamera(each.members));
        EXPECT_THAT(error, HasSubstr("cameras[0] (00:1A:2B:00:00:01)"));
        EXPECT_THAT(error, HasSubstr(each.error));
    }
}

TEST(FarmConfig, RefusesAFileThatListsNoUsableCameras)
{
    EXPECT_THAT(errorOf("{"), HasSubstr("not valid JSON"));
    EXPECT_THAT(errorOf("[]"), HasSubstr("must be an object"));
    EXPECT_THAT(errorOf("{}"), HasSubstr("at least one camera"));
    EXPECT_THAT(errorOf(R"({"cameras": []})"), HasSubstr("at least one camera"));
    EXPECT_THAT(errorOf(R"({"cameras": {}})"), HasSubstr("must be a list"));
    EXPECT_THAT(errorOf(R"({"camera": []})"), HasSubstr("\"camera\" is unknown"));
    EXPECT_THAT(errorOf(R"({"cameras": [7]})"), HasSubstr("cameras[0]: must be an object"));
    EXPECT_THAT(errorOf(R"({"cameras": [{"address": "10.0.0.1"}]})"), HasSubstr("\"mac\" is missing"));
    EXPECT_THAT(errorOf(R"({"cameras": [{"mac": "01:00:5E:00:00:01"}]})"), HasSubstr("\"mac\" must be"));
}

TEST(FarmConfig, RefusesANumberBeyondAllThatCanBeReadLikeAnyOther)
{
    EXPECT_THAT(errorOf(oneCamera(R"("loss": 1e999)")), HasSubstr("not valid JSON"));
    EXPECT_THAT(errorOf(oneCamera(R"("loss": -1e999)")), HasSubstr("not valid JSON"));
}

TEST(FarmConfig, RefusesToCountUpBeyondWhatIsAllowed)
{
    const auto errorOfTwo = [](const std::string& members) {
        return errorOf(R"({"cameras": [{"repeat": 2, )" + members + "}]}");
    };
    EXPECT_THAT(errorOfTwo(R"("mac": "00:FF:FF:FF:FF:FF")"),
                HasSubstr(R"("repeat" counts a MAC address up to 01:00:00:00:00:00, which is a group's)"));
    EXPECT_THAT(
        errorOfTwo(
            R"("mac": "00:1A:2B:00:00:01", "interfaces": 2, "interfaceMacs": ["001A2B000001", "FEFFFFFFFFFF"])"),
        HasSubstr("up to FF:00:00:00:00:00"));
    EXPECT_THAT(errorOfTwo(R"("mac": "00:1A:2B:00:00:01", "serial": "A234567999999999")"),
                HasSubstr("counts the serial up to A2345671000000000, which is too long"));
}

TEST(FarmConfig, RefusesADescriptionThatIsNoFile)
{
    for (const char* const name : {"", ".", "/", "/dev/zero"})
        EXPECT_THAT(errorOf(oneCamera(R"("description": ")" + std::string(name) + '"')),
                    HasSubstr(R"(00:00:01): "description" cannot be read: )"))
            << name;
}

TEST(FarmConfig, RefusesTheSameMacTwice)
{
    EXPECT_THAT(errorOf(R"({"cameras": [{"mac": "001A2B000001", "address": "10.0.0.1", "repeat": 5},
                                        {"mac": "001A2B000005", "address": "10.0.0.9"}]})"),
                HasSubstr("cameras[1] (00:1A:2B:00:00:05): \"mac\" is another camera's already"));
}

TEST(FarmConfig, RefusesMoreCamerasThanAFarmHas)
{
    const std::string many = R"({"mac": "001A2B000000", "address": "10.0.0.0", "repeat": 256})";
    EXPECT_EQ(readFarm("{\"cameras\": [" + many + "]}").cameras.size(), 256u);
    EXPECT_THAT(errorOf("{\"cameras\": [" + many + R"(, {"mac": "001A2C000000", "address": "10.1.0.0"}]})"),
                HasSubstr("lists 257 cameras; one farm has at most 256"));
}

} // namespace
