// SPDX-License-Identifier: Apache-2.0
#include "simulator/camera/RegisterMap.h"

#include "tests/simulator/Hex.h"

#include <gtest/gtest.h>

namespace {

using base::Bytes;
using namespace base::literals;
using gvcp::Status;
using simulator::CameraConfig;
using simulator::RegisterMap;

CameraConfig config()
{
    CameraConfig camera;
    camera.mac = {{0x00, 0x1A, 0x2B, 0x00, 0x00, 0x01}};
    camera.ip = {"192.168.1.20"_ip, "255.255.255.0"_ip, "192.168.1.1"_ip};
    camera.userName = "0123456789ABCDEF";
    return camera;
}

TEST(RegisterMap, ReadsAcrossRegistersButNotIntoAHole)
{
    const RegisterMap map(config());
    Bytes bytes(248);
    EXPECT_EQ(map.read(0, bytes), Status::Success);
    EXPECT_EQ(bytes, map.discoveryBlock());
    bytes.resize(252);
    EXPECT_EQ(map.read(0, bytes), Status::InvalidAddress);
    bytes.resize(4);
    EXPECT_EQ(map.read(0x0948, bytes), Status::InvalidAddress);
    EXPECT_EQ(map.read(2, bytes), Status::BadAlignment);
}

TEST(RegisterMap, AWriteThatFailsChangesNothing)
{
    RegisterMap map(config());
    // The last word of the user name, then what is none.
    EXPECT_EQ(map.write(0xF4, hex("00000000 00000000")), Status::InvalidAddress);
    EXPECT_EQ(map.stored().userName, "0123456789ABCDEF");
    // The IP configuration is writable, what follows it is not.
    EXPECT_EQ(map.write(0x14, hex("00000001 00000000")), Status::WriteProtect);
    EXPECT_EQ(map.word(0x14), 6u);
    EXPECT_EQ(map.write(0xE8, hex("41424300")), Status::Success);
    EXPECT_EQ(map.stored().userName, "ABC");
}

TEST(RegisterMap, HasTheIpConfigurationThatItsMethodCallsFor)
{
    CameraConfig camera = config();
    EXPECT_EQ(RegisterMap(camera).word(0x14), 6u);
    camera.ipMethod = CameraConfig::IpMethod::Persistent;
    EXPECT_EQ(RegisterMap(camera).word(0x14), 5u);
    camera.ipMethod = CameraConfig::IpMethod::LinkLocal;
    EXPECT_EQ(RegisterMap(camera).word(0x14), 4u);
}

TEST(RegisterMap, FillsATextFieldToItsLastByteWithoutTouchingTheNext)
{
    CameraConfig camera = config();
    camera.serial = "SERIALSERIALSERI";
    const RegisterMap map(camera);
    Bytes bytes(32);
    ASSERT_EQ(map.read(0xD8, bytes), Status::Success);
    EXPECT_EQ(std::string(bytes.begin(), bytes.end()), "SERIALSERIALSERI0123456789ABCDEF");
}

} // namespace
