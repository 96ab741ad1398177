// SPDX-License-Identifier: Apache-2.0
#include "tests/support/WindowActions.h"
#include "tests/ui/WindowFixture.h"
#include "ui/Editability.h"

#include <QTest>

namespace {

// What is in use of the controls below the table, and the Modify IP button.
// clang-format off
//                                        address mask   gateway radios name   save   modify IP
constexpr Editability Everything =         {true,  true,  true,   true,  true,  true,  true};
constexpr Editability AllButSave =         {true,  true,  true,   true,  true,  false, true};
constexpr Editability AllButTheAddresses = {false, false, false,  true,  true,  true,  true};
constexpr Editability AnotherAddress =     {true,  false, false,  false, false, true,  true};
constexpr Editability TheDialogAlone =     {false, false, false,  false, false, false, true};
constexpr Editability Nothing =            {false, false, false,  false, false, false, false};
// clang-format on

/// A text for each address field that it does not take, and one that it does.
struct FieldTexts
{
    const char* caption;
    const char* invalid;
    const char* valid;
};

constexpr FieldTexts Texts[] = {{"IP Address:", "192.0.2", "192.0.2.1"},
                                {"Subnet Mask:", "255.255.254.0", "255.255.0.0"},
                                {"Default Gateway:", "192.0.2.256", "0.0.0.0"}};

class EditingTest : public WindowFixture
{
protected:
    void expectInUse(const Editability& expected) const
    {
        EXPECT_EQ(isEnabled("IP Address:"), expected.bAddress);
        EXPECT_EQ(isEnabled("Subnet Mask:"), expected.bMask);
        EXPECT_EQ(isEnabled("Default Gateway:"), expected.bGateway);
        for (const char* text : {"Static IP", "DHCP", "LLA"})
            EXPECT_EQ(button(text)->isEnabled(), expected.bRadios) << text;
        EXPECT_EQ(isEnabled("Device User ID:"), expected.bUserName);
        EXPECT_EQ(button("Save")->isEnabled(), expected.bSave);
        EXPECT_EQ(button("Modify IP")->isEnabled(), expected.bModifyIp);
    }

    void expectAddresses(const char* address, const char* mask, const char* gateway) const
    {
        EXPECT_EQ(field("IP Address:")->text(), address);
        EXPECT_EQ(field("Subnet Mask:")->text(), mask);
        EXPECT_EQ(field("Default Gateway:")->text(), gateway);
    }

    const SdkDouble::Camera staticCamera = {.gateway = "192.0.2.254", .ipConfig = StaticIp};
    const SdkDouble::Camera dhcpCamera = {.mac = "00:00:00:00:00:02", .ip = "192.0.2.21", .ipConfig = Dhcp};
    const SdkDouble::Camera llaCamera = {.mac = "00:00:00:00:00:03", .ip = "192.0.2.22", .ipConfig = Lla};
};

} // namespace

TEST_F(EditingTest, AFreeCameraWithAStaticAddressMayBeEditedInEveryRespect)
{
    addCamera(staticCamera);
    open();
    EXPECT_TRUE(button("Static IP")->isChecked());
    expectAddresses("192.0.2.20", "255.255.255.0", "192.0.2.254");
    expectInUse(Everything);
}

TEST_F(EditingTest, AFreeCameraWithoutAStaticAddressMayBeEditedButForTheAddress)
{
    for (const auto& [camera, radio] : {std::pair(dhcpCamera, "DHCP"), std::pair(llaCamera, "LLA")}) {
        addCamera(camera);
        open();
        EXPECT_TRUE(button(radio)->isChecked()) << radio;
        expectInUse(AllButTheAddresses);
        sdk.listed.clear();
        window->hide();
    }
}

TEST_F(EditingTest, AnUnreachableCameraWithAStaticAddressMayBeGivenAnother)
{
    addCamera({.ip = "10.0.0.9", .ipConfig = StaticIp});
    open();
    expectInUse(AnotherAddress);
}

TEST_F(EditingTest, AnUnreachableCameraWithoutAStaticAddressIsOnlyForTheDialog)
{
    addCamera({.ip = "10.0.0.9", .ipConfig = Dhcp});
    open();
    expectInUse(TheDialogAlone);
}

TEST_F(EditingTest, ACameraInUseCannotBeEditedAtAll)
{
    addCamera(staticCamera);
    addHeldCamera({.mac = "FF:00:00:00:00:01", .ip = "192.0.2.30", .ipConfig = StaticIp});
    addHeldCamera({.mac = "FF:00:00:00:00:02", .ip = "192.0.2.31", .ipConfig = Dhcp});
    open();
    for (int row = 0; row < 3; ++row) {
        clickRow(row);
        if (cell(row, 4) != "Free")
            expectInUse(Nothing);
    }
}

TEST_F(EditingTest, ACameraWithoutAStaticAddressComesWithASuggestionThatIsStillToBeCompleted)
{
    addCamera(dhcpCamera);
    open();
    expectAddresses("192.0.2.", "255.255.255.0", "192.0.2.254");
    EXPECT_TRUE(isRed(field("IP Address:")));
    EXPECT_FALSE(isRed(field("Subnet Mask:")));
    EXPECT_FALSE(isRed(field("Default Gateway:")));

    click("Static IP");
    expectInUse(AllButSave);
    QTest::mouseClick(field("IP Address:"), Qt::LeftButton);
    QTest::keyClick(field("IP Address:"), Qt::Key_End);
    QTest::keyClicks(field("IP Address:"), "77");
    EXPECT_FALSE(isRed(field("IP Address:")));
    EXPECT_TRUE(button("Save")->isEnabled());
}

TEST_F(EditingTest, GoingBackToStaticIpBringsTheCamerasOwnAddressesBack)
{
    addCamera(staticCamera);
    open();
    type("IP Address:", "192.0.2.99");
    click("DHCP");
    click("Static IP");
    expectAddresses("192.0.2.20", "255.255.255.0", "192.0.2.254");
    EXPECT_TRUE(button("Save")->isEnabled());
}

TEST_F(EditingTest, ChoosingDhcpOrLlaTakesTheAddressesOutOfUseAndLeavesSaveInUse)
{
    addCamera(staticCamera);
    open();
    for (const char* radio : {"DHCP", "LLA"}) {
        click("Static IP");
        type("IP Address:", "192.0.3.");
        type("Default Gateway:", "192.0.3.1");
        ASSERT_FALSE(button("Save")->isEnabled());
        click(radio);
        expectAddresses("192.0.3.", "255.255.255.0", "192.0.3.1");
        expectInUse(AllButTheAddresses);
    }
}

TEST_F(EditingTest, AClickOnTheSelectedRowJudgesByTheRadioButtonThatWasChosenBefore)
{
    addCamera(staticCamera);
    open();
    click("DHCP");
    clickRow(0);
    EXPECT_TRUE(button("Static IP")->isChecked());
    EXPECT_FALSE(isEnabled("IP Address:")); // still as for DHCP
    clickRow(0);
    EXPECT_TRUE(isEnabled("IP Address:"));
}

TEST_F(EditingTest, AFieldTurnsRedWhileItsTextIsInvalidAndSaveIsOutOfUseMeanwhile)
{
    addCamera(staticCamera);
    open();
    for (const auto& [caption, invalid, valid] : Texts) {
        type(caption, invalid);
        EXPECT_TRUE(isRed(field(caption))) << caption;
        EXPECT_TRUE(field(caption)->styleSheet().contains("color:red")) << caption;
        EXPECT_FALSE(button("Save")->isEnabled()) << caption;
        type(caption, valid);
        EXPECT_FALSE(isRed(field(caption))) << caption;
        EXPECT_EQ(field(caption)->palette().color(QPalette::Text), QColor("#666666")) << caption;
        EXPECT_TRUE(button("Save")->isEnabled()) << caption;
    }
}

TEST_F(EditingTest, SaveIsInUseAgainOnlyWhenAllThreeFieldsAreValid)
{
    addCamera(staticCamera);
    open();
    type("Subnet Mask:", "255.255.255.128");
    type("IP Address:", "192.0.2.");
    type("IP Address:", "192.0.2.30");
    EXPECT_FALSE(button("Save")->isEnabled());
    type("Subnet Mask:", "255.255.255.0");
    EXPECT_TRUE(button("Save")->isEnabled());
}

TEST_F(EditingTest, AtFirstTheAddressCountsAsInvalidAndTheOthersAsValid)
{
    open();
    field("Subnet Mask:")->setText("255.255.255.0");
    field("Default Gateway:")->setText("192.0.2.254");
    EXPECT_FALSE(button("Save")->isEnabled());
    field("IP Address:")->setText("192.0.2.1");
    EXPECT_TRUE(button("Save")->isEnabled());
}

TEST_F(EditingTest, AtFirstAValidAddressAloneBringsSaveIntoUse)
{
    open();
    field("IP Address:")->setText("192.0.2.1");
    EXPECT_TRUE(button("Save")->isEnabled());
}

TEST_F(EditingTest, TwoInvalidFieldsKeepSaveOutOfUseUntilBothAreValid)
{
    addCamera(staticCamera);
    open();
    for (const auto& [first, firstInvalid, firstValid] : Texts) {
        for (const auto& [second, secondInvalid, secondValid] : Texts) {
            if (first == second)
                continue;
            field(first)->setText(firstInvalid);
            field(second)->setText(secondInvalid);
            field(second)->setText(secondValid);
            EXPECT_FALSE(button("Save")->isEnabled()) << first << second;
            field(first)->setText(firstValid);
            EXPECT_TRUE(button("Save")->isEnabled()) << first << second;
        }
    }
}

TEST_F(EditingTest, AValidTextBesideAnInvalidOneLeavesSaveAsItIs)
{
    addCamera(dhcpCamera);
    open();
    ASSERT_TRUE(isRed(field("IP Address:")));
    ASSERT_TRUE(button("Save")->isEnabled()); // The camera's status allows it.
    field("Subnet Mask:")->setText("255.255.0.0");
    field("Default Gateway:")->setText("192.0.2.1");
    EXPECT_TRUE(button("Save")->isEnabled());
}

TEST_F(EditingTest, TheSuggestionIsInTheNetworkOfTheAdapterThatHeardTheCamera)
{
    addCamera({.ip = "10.7.0.9", .mask = "255.255.0.0", .gateway = "10.7.0.1", .ipConfig = Dhcp});
    open();
    expectAddresses("192.0.2.", "255.255.255.0", "192.0.2.254");
}

TEST_F(EditingTest, AStatusThatIsNotKnownLeavesEverythingAsItIs)
{
    addCamera(staticCamera);
    addHeldCamera({.mac = "FF:00:00:00:00:01", .ip = "192.0.2.30", .ipConfig = StaticIp});
    open();
    QDevice device;
    device.m_strStatus = "Asleep";
    for (int row = 0; row < 2; ++row) {
        clickRow(row);
        const bool free = cell(row, 4) == "Free";
        window->SetEnableCtrls(&device);
        expectInUse(free ? Everything : Nothing);
    }
}

TEST_F(EditingTest, AnItemThatIsInNoTableMeansNoCamera)
{
    addCamera(staticCamera);
    open();
    QTableWidgetItem item;
    window->OnItemClicked(&item);
    EXPECT_EQ(panelTitle(), "()");
    EXPECT_TRUE(button("Modify IP")->isEnabled());
}
