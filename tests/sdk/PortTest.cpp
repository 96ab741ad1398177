// SPDX-License-Identifier: Apache-2.0
#include "sdk/Port.h"

#include "gvcp/Registers.h"
#include "sdk/description/DescriptionCompletion.h"
#include "tests/sdk/FakeCamera.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <pthread.h>
#include <thread>

using namespace sdk;
using gvcp::IpConfig::Dhcp;
using gvcp::IpConfig::LinkLocal;
using gvcp::IpConfig::Persistent;
using testing::Contains;
using testing::HasSubstr;
using testing::Not;
namespace reg = gvcp::reg;

namespace {

class PortTest : public testing::Test
{
protected:
    PortTest()
    {
        camera.words[reg::CurrentIpConfig] = 0xC000'0000 | Dhcp | LinkLocal;
        camera.storeAddress({"10.0.0.9"_ip, "255.0.0.0"_ip, {}});
        camera.setBytes(reg::UserDefinedName.address, std::string(16, '\0'));
        session = std::make_shared<Session>(camera.connect(), FakeCamera::Ip, FakeCamera::Mac);
        port = std::make_unique<Port>(session, forced);
    }

    void write(std::int64_t address, const std::string& bytes)
    {
        port->Write(bytes.data(), address, static_cast<std::int64_t>(bytes.size()));
    }

    std::string errorOf(const std::function<void()>& call)
    {
        try {
            call();
        } catch (const GenICam::RuntimeException& error) {
            return error.what();
        }
        return "none";
    }

    /// Ends the heartbeat, so that the test may look at the camera.
    FakeCamera& quietCamera()
    {
        session->close();
        return camera;
    }

    base::Ipv4 storedIp() { return quietCamera().storedAddress().address; }

    FakeCamera camera;
    ForcedAddresses forced;
    std::shared_ptr<Session> session;
    std::unique_ptr<Port> port;
};

} // namespace

TEST_F(PortTest, ReadsAndWritesTheCamerasMemory)
{
    write(reg::UserDefinedName.address, "Left camera");
    std::string name(4, ' ');
    port->Read(name.data(), reg::UserDefinedName.address + 5, 4);
    EXPECT_EQ(name, "came");
    EXPECT_EQ(quietCamera().bytes(reg::UserDefinedName.address, 12), std::string("Left camera\0", 12));
}

TEST_F(PortTest, IsReadableAndWritableWhileTheCameraIsOpen)
{
    EXPECT_EQ(port->GetAccessMode(), GenApi::RW);
    session->close();
    EXPECT_EQ(port->GetAccessMode(), GenApi::NA);
}

TEST_F(PortTest, NamesAddressAndCauseOfAFailure)
{
    std::uint32_t value = 0;
    EXPECT_EQ(errorOf([&] { port->Read(&value, 0xC0000000, 4); }),
              "reading 0xC0000000: 192.168.1.20 answers invalid address (0x8003)");
    EXPECT_THAT(errorOf([&] { port->Write(&value, 0xC0000000, 4); }), HasSubstr("writing 0xC0000000: "));
    EXPECT_EQ(errorOf([&] { port->Read(&value, 0x1'0000'0000, 4); }),
              "a camera has no 4 bytes at 0x100000000");
    session->close();
    EXPECT_EQ(errorOf([&] { port->Read(&value, 0xE8, 4); }),
              "reading 0x000000E8: the camera is not open any more");
}

TEST_F(PortTest, RefusesBuffersLengthsAndAddressesThatCannotBe)
{
    std::uint32_t value = 0;
    EXPECT_THROW(port->Read(nullptr, 0, 4), GenICam::InvalidArgumentException);
    EXPECT_THROW(port->Write(nullptr, 0, 4), GenICam::InvalidArgumentException);
    EXPECT_THROW(port->Read(&value, 0, 0), GenICam::InvalidArgumentException);
    EXPECT_THROW(port->Read(&value, 0, -4), GenICam::InvalidArgumentException);
    EXPECT_THROW(port->Write(&value, -4, 4), GenICam::InvalidArgumentException);
}

TEST_F(PortTest, StoresTheForcedAddressBeforeTheCameraIsToldToStartWithIt)
{
    forced.keep(FakeCamera::Mac, {"192.168.1.20"_ip, "255.255.255.0"_ip, "192.168.1.254"_ip}, {});
    write(reg::CurrentIpConfig, std::string("\xC0\0\0\x07", 4));
    const auto log = quietCamera().log();
    const auto at = [&log](const char* command) { return std::find(log.begin(), log.end(), command); };
    ASSERT_NE(at("WRITEREG 00000014=C0000007"), log.end());
    EXPECT_LT(at("WRITEREG 0000064C=C0A80114"), at("WRITEREG 00000014=C0000007"));
    EXPECT_LT(at("WRITEREG 0000065C=FFFFFF00"), at("WRITEREG 00000014=C0000007"));
    EXPECT_LT(at("WRITEREG 0000066C=C0A801FE"), at("WRITEREG 00000014=C0000007"));
}

TEST_F(PortTest, SeesThatTheCameraShallStartWithAStoredAddressHoweverThatIsWritten)
{
    struct Row
    {
        std::int64_t address;
        std::string bytes;
    };
    const Row rows[] = {
        {0x17, "\x05"},
        {0x16, std::string("\0\x05", 2)},
        {0x10, std::string("\0\0\0\7\xC0\0\0\5", 8)},
    };
    camera.words[reg::SupportedIpConfig] = 7;
    for (const Row& row : rows) {
        camera.words[reg::CurrentIpConfig] = Dhcp | LinkLocal;
        camera.words[reg::PersistentIp] = 0;
        forced.keep(FakeCamera::Mac, {"192.168.1.20"_ip, "255.255.255.0"_ip, {}}, {});
        write(row.address, row.bytes);
        std::uint32_t stored = 0;
        port->Read(&stored, reg::PersistentIp, 4);
        EXPECT_EQ(stored, 0x1401A8C0u) << row.address;
    }
}

TEST_F(PortTest, StoresNothingWhenTheCameraStartsWithItsStoredAddressAlready)
{
    camera.words[reg::CurrentIpConfig] = Persistent | LinkLocal;
    forced.keep(FakeCamera::Mac, {"192.168.1.20"_ip, "255.255.255.0"_ip, {}}, {});
    write(reg::CurrentIpConfig, std::string("\0\0\0\5", 4));
    EXPECT_EQ(storedIp(), "10.0.0.9"_ip);
}

TEST_F(PortTest, StoresNothingWhenTheCameraIsToldToStartOtherwise)
{
    forced.keep(FakeCamera::Mac, {"192.168.1.20"_ip, "255.255.255.0"_ip, {}}, {});
    write(reg::CurrentIpConfig, std::string("\0\0\0\6", 4));
    write(0x16, std::string("\1", 1)); // The bit's place in another byte.
    write(reg::UserDefinedName.address, "\1\1\1\1");
    EXPECT_EQ(storedIp(), "10.0.0.9"_ip);
}

TEST_F(PortTest, StoresNothingForACameraThatNothingWasForcedOnto)
{
    forced.keep({{0x02, 0, 0, 0, 0, 9}}, {"192.168.1.20"_ip, "255.255.255.0"_ip, {}}, {});
    write(reg::CurrentIpConfig, std::string("\0\0\0\5", 4));
    EXPECT_EQ(storedIp(), "10.0.0.9"_ip);
    EXPECT_EQ(camera.words[reg::CurrentIpConfig], 5u);
}

TEST_F(PortTest, LeavesTheCamerasConfigurationAloneWhenItsAddressCannotBeStored)
{
    camera.writeProtected = reg::PersistentSubnetMask;
    forced.keep(FakeCamera::Mac, {"192.168.1.20"_ip, "255.255.255.0"_ip, {}}, {});
    EXPECT_THAT(errorOf([this] { write(reg::CurrentIpConfig, std::string("\0\0\0\5", 4)); }),
                HasSubstr("0x0000065C"));
    EXPECT_EQ(quietCamera().words[reg::CurrentIpConfig], 0xC000'0000 | Dhcp | LinkLocal);
}

TEST_F(PortTest, WritesNothingToAnotherCameraThatAnswersAtTheAddress)
{
    camera.words[0x10000] = 0;
    camera.onCommand = [this](const gvcp::CommandPacket& command) {
        if (base::readU32(command.payload, 0) == reg::MacHigh)
            camera.becomeAnother();
        return false;
    };
    const std::string why =
        "at its address 192.168.1.20 the camera 02:00:00:00:00:02 answers and not 02:00:00:00:00:01";
    EXPECT_THAT(errorOf([this] { write(reg::UserDefinedName.address, "\1\1\1\1"); }), HasSubstr(why));
    EXPECT_THAT(errorOf([this] { write(0x10000, std::string("\0\0\0\1", 4)); }), HasSubstr(why));
    EXPECT_EQ(port->GetAccessMode(), GenApi::NA) << "the session is over";
    EXPECT_EQ(camera.bytes(reg::UserDefinedName.address, 4), std::string(4, '\0'));
    EXPECT_EQ(camera.words[0x10000], 0u);
}

TEST_F(PortTest, StoresTheForcedAddressOfTheNetworkInterfaceThatItTalksTo)
{
    session->close();
    camera.words[reg::MacLow] = 0xFF;
    camera.words[reg::InterfaceCount] = 2;
    camera.words[0x0680] = 0x0200;
    camera.words[0x0684] = 0x00000001;
    camera.words[0x068C] = Dhcp | LinkLocal;
    camera.storeAddress({}, 0x06CC);
    session = std::make_shared<Session>(camera.connect(), FakeCamera::Ip, FakeCamera::Mac);
    port = std::make_unique<Port>(session, forced);
    const base::IpSettings wanted{"192.168.1.20"_ip, "255.255.255.0"_ip, "192.168.1.254"_ip};
    forced.keep(FakeCamera::Mac, wanted, {});

    write(0x0014, std::string("\0\0\0\5", 4));
    write(0x068C, std::string("\0\0\0\5", 4));
    EXPECT_EQ(storedIp(), "10.0.0.9"_ip) << "that is the first interface's";
    EXPECT_EQ(camera.storedAddress(0x06CC), wanted);
}

TEST_F(PortTest, RestartsTheCamerasAddressWhenItsOwnRegisterIsWritten)
{
    write(static_cast<std::int64_t>(IpRestartAddress), std::string("\0\0\0\1", 4));
    EXPECT_THAT(camera.log(), Contains("FORCEIP 0.0.0.0"));
    EXPECT_EQ(camera.words[reg::ControlChannelPrivilege], 0u);
    EXPECT_EQ(port->GetAccessMode(), GenApi::NA);
}

TEST_F(PortTest, TakesACameraThatVanishesUponAWriteToAMakersRegisterForOneThatResets)
{
    camera.words[0x10000] = 0;
    camera.onCommand = [isGone = false](const gvcp::CommandPacket& command) mutable {
        isGone = isGone || base::readU32(command.payload, 0) == 0x10000;
        return isGone;
    };
    EXPECT_NO_THROW(write(0x10000, std::string("\0\0\0\1", 4)));
    EXPECT_THAT(errorOf([this] { write(reg::UserDefinedName.address, "name"); }),
                HasSubstr("does not answer"))
        << "a register of the standard's resets nothing";
}

TEST_F(PortTest, TakesACameraThatComesBackWithoutKnowingUsForOneThatHasReset)
{
    camera.words[0x10000] = 0;
    camera.onCommand = [this, received = 0](const gvcp::CommandPacket& command) mutable {
        if (base::readU32(command.payload, 0) != 0x10000)
            return false;
        camera.words[reg::ControlChannelPrivilege] = 0;
        if (++received > 3)
            camera.answer(command, gvcp::Status::AccessDenied);
        return true;
    };
    EXPECT_NO_THROW(write(0x10000, std::string("\0\0\0\1", 4)));
}

TEST_F(PortTest, DoesNotTakeACameraThatOnlyIgnoresAWriteForOneThatResets)
{
    camera.words[0x10000] = 0;
    camera.onCommand = [](const gvcp::CommandPacket& command) {
        return base::readU32(command.payload, 0) == 0x10000;
    };
    EXPECT_THAT(errorOf([this] { write(0x10000, std::string("\0\0\0\1", 4)); }),
                HasSubstr("does not answer"));
}

TEST_F(PortTest, PassesOnThatACameraDeniesAWriteToAMakersRegister)
{
    camera.words[0x10000] = 0;
    camera.onCommand = [this](const gvcp::CommandPacket& command) {
        if (base::readU32(command.payload, 0) != 0x10000)
            return false;
        camera.words[reg::ControlChannelPrivilege] = 0;
        camera.answer(command, gvcp::Status::AccessDenied);
        return true;
    };
    EXPECT_THAT(errorOf([this] { write(0x10000, std::string("\0\0\0\1", 4)); }), HasSubstr("access denied"));
}

TEST_F(PortTest, FinishesAnAccessWhoseThreadIsCancelledMeanwhile)
{
    std::thread thread([this] {
        pthread_cancel(pthread_self());
        write(reg::UserDefinedName.address, "Left camera");
        pthread_testcancel();
        ADD_FAILURE() << "the thread should be gone by now";
    });
    thread.join();
    write(reg::UserDefinedName.address + 12, "!!!!");
    EXPECT_EQ(quietCamera().bytes(reg::UserDefinedName.address, 11), "Left camera");
}
