// SPDX-License-Identifier: Apache-2.0
#include "tests/genapi/Descriptions.h"
#include "tests/genapi/MemoryPort.h"
#include "tests/save/DebugLines.h"
#include "tests/save/SaveFixture.h"
#include "tests/support/Zips.h"

#include <gmock/gmock.h>

using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace {

constexpr int64_t IpConfiguration = 0x14;
constexpr int64_t UserName = 0xE8;
constexpr int64_t Reset = 0x100;

std::string mode(const std::string& name, const std::string& bit)
{
    return "<Boolean Name=\"" + name + "\">" + element("pValue", name + "Bit") + element("OnValue", "1") +
           element("OffValue", "0") + "</Boolean>\n" +
           registerNode("MaskedIntReg", name + "Bit", "0x14", "4",
                        element("Bit", bit) + element("Sign", "Unsigned") +
                            element("Endianess", "BigEndian"));
}

std::string userName(const std::string& accessMode = "RW")
{
    return registerNode("StringReg", "DeviceUserID", "0xE8", "16", "", accessMode);
}

/// What a camera with persistent addresses says of itself; the standard counts bits from the highest.
std::string modes()
{
    return mode("GevCurrentIPConfigurationPersistentIP", "31") + mode("GevCurrentIPConfigurationDHCP", "30");
}

std::string reset()
{
    return "<Command Name=\"DeviceReset\">" + element("pValue", "ResetRegister") +
           element("CommandValue", "1") + "</Command>\n" +
           registerNode("IntReg", "ResetRegister", "0x100", "4",
                        element("Sign", "Unsigned") + element("Endianess", "BigEndian"));
}

/// Whole saves, with the real node map, on a camera that is bytes and a description.
class DescribedCameraTest : public SaveFixture
{
protected:
    DescribedCameraTest()
    {
        sdk.port = &port;
        port.put(IpConfiguration, {0, 0, 0, 6}); // DHCP and link-local
        port.put(UserName, oldName);
    }

    /// To a static address and another name.
    void saveBoth(const std::string& descriptionFile)
    {
        sdk.description = descriptionFile;
        const QDevice cur = found();
        QDevice modified = cur;
        modified.m_strIpConfigType = "Static IP";
        modified.m_strUserDefinedName = "new";
        save(cur, modified);
    }

    std::vector<uint8_t> nameInCamera() const { return port.bytes(UserName, 16); }

    MemoryPort port;
    DebugLines debug;

    const std::string rebootMessage = "ShowMsg(Information|Modified. The device will reboot automatically.)";
    const std::vector<uint8_t> newName = {'n', 'e', 'w', 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0};
    const std::vector<uint8_t> oldName = {'o', 'l', 'd', 'e', 'r', ' ', 'n', 'a', 'm', 'e', 0, 0, 0, 0, 0, 0};
};

} // namespace

TEST_F(DescribedCameraTest, HoldsTheNewModeAndTheWholeNewNameAndIsReset)
{
    saveBoth(description(modes() + userName() + reset()));
    EXPECT_THAT(events(), ElementsAre(rebootMessage, "Refresh(0)", "End(0)"));
    EXPECT_EQ(port.bytes(IpConfiguration, 4), (std::vector<uint8_t>{0, 0, 0, 7}));
    EXPECT_EQ(nameInCamera(), newName);
    EXPECT_EQ(port.bytes(Reset, 4), (std::vector<uint8_t>{0, 0, 0, 1}));
}

TEST_F(DescribedCameraTest, MayComeWithAZippedDescription)
{
    saveBoth(zipOf({{"camera.xml", description(modes() + userName() + reset())}}));
    EXPECT_THAT(events(), ElementsAre(rebootMessage, "Refresh(0)", "End(0)"));
    EXPECT_EQ(nameInCamera(), newName);
    EXPECT_EQ(port.bytes(Reset, 4), (std::vector<uint8_t>{0, 0, 0, 1}));
}

TEST_F(DescribedCameraTest, ANameThatIsNoRegisterIsToldAsCode0)
{
    saveBoth(description(modes() + "<String Name=\"DeviceUserID\"><Value>text</Value></String>" + reset()));
    EXPECT_THAT(events(), ElementsAre("ShowMsg(Error|Set UserID Error: code 0x0)", rebootMessage,
                                      "Refresh(0)", "End(0)"));
}

TEST_F(DescribedCameraTest, AReadOnlyNameIsToldWithTheSourceFileButNotWhereItWasBuilt)
{
    saveBoth(description(modes() + userName("RO") + reset()));
    EXPECT_EQ(nameInCamera(), oldName);
    const auto told = events();
    ASSERT_THAT(told, ElementsAre(StartsWith("ShowMsg(Error|Set UserID Error: what:"), rebootMessage,
                                  "Refresh(0)", "End(0)"));
    EXPECT_THAT(told.front(), AllOf(HasSubstr("DeviceUserID"), Not(HasSubstr("/")), EndsWith(".cpp)")));
}

TEST_F(DescribedCameraTest, WithoutModesKeepsItsTypeAndTakesTheName)
{
    saveBoth(description(userName() + reset()));
    EXPECT_THAT(events(), ElementsAre("ShowMsg(Information|Failed to change the IP configuration type.)",
                                      "Refresh(0)", "End(0)"));
    EXPECT_EQ(nameInCamera(), newName);
    EXPECT_EQ(port.bytes(Reset, 4), (std::vector<uint8_t>{0, 0, 0, 0}));
}

TEST_F(DescribedCameraTest, ThatStopsAnsweringIsToldForEachFeatureButTheMode)
{
    port.failFrom(0);
    saveBoth(description(modes() + userName() + reset()));
    EXPECT_THAT(events(), ElementsAre("ShowMsg(Information|Failed to change the IP configuration type.)",
                                      AllOf(StartsWith("ShowMsg(Error|Set UserID Error: what:"),
                                            HasSubstr("the cable is out")),
                                      "Refresh(0)", "End(0)"));
    EXPECT_EQ(nameInCamera(), oldName);
}

TEST_F(DescribedCameraTest, WithANonsensicalDescriptionIsOnlyLookedForAnew)
{
    for (const std::string& nonsense :
         {std::string(), std::string("PK\x03\x04"), std::string("<a><b></a>")}) {
        forgetEvents();
        debug.forget();
        saveBoth(nonsense);
        EXPECT_THAT(events(), ElementsAre("Refresh(1)", "End(0)"));
        EXPECT_THAT(debug.lines(), ElementsAre("catch", "!LoadXMLFile"));
    }
    EXPECT_THAT(port.accesses, Not(Contains(StartsWith("W"))));
}

TEST_F(DescribedCameraTest, WhosePortHasAnotherNameIsOnlyLookedForAnew)
{
    std::string other = description(modes() + userName() + reset());
    for (auto at = other.find("\"Device\""); at != std::string::npos; at = other.find("\"Device\""))
        other.replace(at, 8, "\"Other\"");
    saveBoth(other);
    EXPECT_THAT(events(), ElementsAre("Refresh(1)", "End(0)"));
    EXPECT_THAT(debug.lines(), ElementsAre("catch", "!LoadXMLFile"));
}
