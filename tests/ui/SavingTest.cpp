// SPDX-License-Identifier: Apache-2.0
#include "tests/support/WindowActions.h"
#include "tests/ui/WindowFixture.h"
#include "ui/QSetIpAddrDlg.h"

#include <QGuiApplication>
#include <QScreen>
#include <QSemaphore>
#include <QSignalSpy>
#include <QTest>

#include <gmock/gmock.h>

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

namespace {

class SavingTest : public WindowFixture
{
protected:
    void openWith(const SdkDouble::Camera& camera)
    {
        addCamera(camera);
        open();
    }

    /// Holds saves where they force the address, until released.
    void holdForcing()
    {
        const auto force = sdk.forceIp;
        sdk.forceIp = [this, force](auto... arguments) {
            forcing.release();
            go.acquire();
            return force(arguments...);
        };
    }

    bool saveIsForcing()
    {
        return eventually([this] { return forcing.tryAcquire(); });
    }

    void finishSaves(int count = 1)
    {
        go.release(count);
        ASSERT_TRUE(eventually([this] { return jobsAreOver(); }));
    }

    std::vector<std::string> forced() const
    {
        std::vector<std::string> found;
        for (const std::string& call : sdk.calls()) {
            if (call.rfind("ForceIpEx", 0) == 0)
                found.push_back(call);
        }
        return found;
    }

    void expectButtons(bool enabled) const
    {
        for (const char* text : {"Save", "Modify IP", "Refresh"})
            EXPECT_EQ(button(text)->isEnabled(), enabled) << text;
    }

    /// Opens the Modify IP dialog and does something there as soon as it is active.
    void inDialog(const std::function<void(QSetIpAddrDlg&)>& act)
    {
        onNextModal([act](QWidget& modal) {
            auto* const dialog = qobject_cast<QSetIpAddrDlg*>(&modal);
            ASSERT_NE(dialog, nullptr);
            act(*dialog);
        });
        click("Modify IP");
    }

    static void typeAddressAndPressReturn(QSetIpAddrDlg& dialog, const char* address)
    {
        auto* const edit = dialog.findChild<QLineEdit*>();
        QTest::keyClick(edit, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(edit, address);
        QTest::keyClick(edit, Qt::Key_Return);
    }

    /// Saves another kind of address after a static one was typed, and closes the message about it.
    void expectChoiceIsSaved(const char* kind, const std::vector<std::string>& doneInOrder)
    {
        openWith(staticCamera);
        type("IP Address:", "192.0.2.77");
        type("Subnet Mask:", "255.255.0.0");
        type("Default Gateway:", "0.0.0.0");
        click(kind);
        onNextModal([this](QWidget& message) {
            written.emplace_back("closed");
            message.close();
        });
        click("Save");
        ASSERT_TRUE(eventually([this] { return jobsAreOver(); }));
        std::vector<std::string> done;
        std::copy_if(written.begin(), written.end(), std::back_inserter(done), [&](const std::string& one) {
            return std::count(doneInOrder.begin(), doneInOrder.end(), one) > 0;
        });
        EXPECT_EQ(done, doneInOrder);
        // What was typed is for a static address alone.
        EXPECT_THAT(forced(),
                    ElementsAre("ForceIpEx(00:1A:2B:3C:4D:5E, 192.0.2.20, 255.255.255.0, 192.0.2.254)"));
    }

    const SdkDouble::Camera staticCamera = {.gateway = "192.0.2.254", .ipConfig = StaticIp};
    QSemaphore forcing;
    QSemaphore go;
};

} // namespace

TEST_F(SavingTest, SaveForcesWhatIsInTheFieldsAndTheTableShowsIt)
{
    openWith(staticCamera);
    type("IP Address:", "192.0.2.77");
    type("Subnet Mask:", "255.255.0.0");
    type("Default Gateway:", "0.0.0.0");
    holdForcing();
    click("Save");
    expectButtons(false);
    ASSERT_TRUE(saveIsForcing());
    expectButtons(false);
    finishSaves();
    EXPECT_THAT(forced(), ElementsAre("ForceIpEx(00:1A:2B:3C:4D:5E, 192.0.2.77, 255.255.0.0, 0.0.0.0)"));
    EXPECT_TRUE(eventually([this] { return cell(0, 6) == "192.0.2.77"; }));
    EXPECT_EQ(cell(0, 7), "255.255.0.0");
    EXPECT_THAT(messages, IsEmpty());
    expectButtons(true);
}

TEST_F(SavingTest, DhcpIsWrittenToTheCameraWhichIsResetWhenThatHasBeenRead)
{
    expectChoiceIsSaved("DHCP", {"GevCurrentIPConfigurationPersistentIP = 0",
                                 "GevCurrentIPConfigurationDHCP = 1", "closed", "DeviceReset()"});
}

TEST_F(SavingTest, LlaIsWrittenToTheCameraWhichIsResetWhenThatHasBeenRead)
{
    expectChoiceIsSaved("LLA", {"GevCurrentIPConfigurationPersistentIP = 0",
                                "GevCurrentIPConfigurationDHCP = 0", "closed", "DeviceReset()"});
}

TEST_F(SavingTest, ACameraIsGivenAStaticAddressWithWhatStandsInTheFields)
{
    openWith({.ipConfig = Dhcp});
    click("Static IP");
    type("IP Address:", "192.0.2.77");
    confirmNextMessage();
    click("Save");
    ASSERT_TRUE(eventually([this] { return jobsAreOver() && !messages.empty(); }));
    EXPECT_THAT(forced(),
                ElementsAre("ForceIpEx(00:1A:2B:3C:4D:5E, 192.0.2.77, 255.255.255.0, 192.0.2.254)"));
    EXPECT_THAT(written, Contains("GevCurrentIPConfigurationPersistentIP = 1"));
    EXPECT_THAT(messages,
                ElementsAre(Message{"Information", "Modified. The device will reboot automatically."}));
}

TEST_F(SavingTest, ANameOfSixteenCharactersIsSavedAsItsFirstFifteen)
{
    openWith(staticCamera);
    type("Device User ID:", "ABCDEFGHIJKLMNOP");
    click("Save");
    ASSERT_TRUE(eventually([this] { return !written.empty() && jobsAreOver(); }));
    EXPECT_THAT(written, Contains("DeviceUserID = 41 42 43 44 45 46 47 48 49 4a 4b 4c 4d 4e 4f 00"));
    EXPECT_THAT(messages, IsEmpty());
}

TEST_F(SavingTest, AFailureIsShownInAMessageBoxAndEverythingIsInUseAgain)
{
    openWith(staticCamera);
    sdk.forceIp = [](auto...) { return RZ_ERROR_ACCESS_DENIED; };
    confirmNextMessage();
    click("Save");
    ASSERT_TRUE(eventually([this] { return !messages.empty() && jobsAreOver(); }));
    EXPECT_THAT(messages, ElementsAre(Message{"Error", "Failed to modify."}));
    expectButtons(true);

    type("IP Address:", "192.0.2.77");
    confirmNextMessage();
    click("Save");
    ASSERT_TRUE(eventually([this] { return messages.size() == 2 && jobsAreOver(); }));
    EXPECT_EQ(messages.back(),
              (Message{"Error", "Failed to modify the IP address.The camera may be in use at present."}));
}

TEST_F(SavingTest, TheAddressOfAnotherListedCameraIsRefused)
{
    addCamera({.mac = "FF:00:00:00:00:02", .ip = "192.0.2.21"});
    openWith(staticCamera);
    clickRow(table()->rowCount() - 1);
    const int row = cell(0, 3) == "00:1A:2B:3C:4D:5E" ? 0 : 1;
    clickRow(row);
    type("IP Address:", "192.0.2.21");
    confirmNextMessage();
    click("Save");
    ASSERT_TRUE(eventually([this] { return !messages.empty() && jobsAreOver(); }));
    EXPECT_THAT(messages,
                ElementsAre(Message{"Information", "The IP address has been used by other devices."}));
    EXPECT_THAT(forced(), IsEmpty());
}

TEST_F(SavingTest, ReturnAndEnterInAnAddressFieldSave)
{
    openWith(staticCamera);
    sdk.forceIp = [](auto...) { return RZ_ERROR_REFUSED; };
    size_t saves = 0;
    for (const char* caption : {"IP Address:", "Subnet Mask:", "Default Gateway:"}) {
        for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter}) {
            ++saves;
            confirmNextMessage();
            ASSERT_TRUE(showActive(*window)); // The message before has had the keyboard.
            QTest::mouseClick(field(caption), Qt::LeftButton);
            QTest::keyClick(field(caption), key);
            ASSERT_TRUE(eventually([&] { return messages.size() == saves && jobsAreOver(); })) << caption;
        }
    }
    EXPECT_EQ(forced().size(), saves);
}

TEST_F(SavingTest, ReturnInARedAddressFieldSavesThatTextAllTheSame)
{
    openWith(staticCamera);
    type("IP Address:", "192.0.2.300");
    ASSERT_FALSE(button("Save")->isEnabled());
    QTest::keyClick(field("IP Address:"), Qt::Key_Return);
    EXPECT_FALSE(button("Refresh")->isEnabled());
    ASSERT_TRUE(eventually([this] { return jobsAreOver(); }));
    EXPECT_THAT(forced(),
                ElementsAre("ForceIpEx(00:1A:2B:3C:4D:5E, 192.0.3.44, 255.255.255.0, 192.0.2.254)"));
}

TEST_F(SavingTest, ReturnWhileASaveIsRunningDoesNothing)
{
    openWith(staticCamera);
    holdForcing();
    click("Save");
    ASSERT_TRUE(saveIsForcing());
    field("IP Address:")->setFocus();
    QTest::keyClick(field("IP Address:"), Qt::Key_Return);
    finishSaves(2);
    EXPECT_EQ(forced().size(), 1);
}

TEST_F(SavingTest, ReturnInTheUserIdFieldDoesNothing)
{
    openWith(staticCamera);
    QTest::mouseClick(field("Device User ID:"), Qt::LeftButton);
    QTest::keyClick(field("Device User ID:"), Qt::Key_Return);
    expectButtons(true);
    EXPECT_THAT(forced(), IsEmpty());
}

TEST_F(SavingTest, EscapeLeavesTheWindowOpen)
{
    openWith(staticCamera);
    for (QWidget* focused : {static_cast<QWidget*>(window), static_cast<QWidget*>(table()),
                             static_cast<QWidget*>(field("IP Address:"))}) {
        QTest::keyClick(focused, Qt::Key_Escape);
        EXPECT_TRUE(window->isVisible());
    }
}

TEST_F(SavingTest, F5RefreshesUnlessRefreshIsOutOfUse)
{
    openWith(staticCamera);
    refresh();
    const auto enumerations = enumerationCount();
    holdForcing();
    click("Save");
    ASSERT_TRUE(saveIsForcing());
    QTest::keyClick(window->windowHandle(), Qt::Key_F5);
    QCoreApplication::processEvents();
    EXPECT_EQ(enumerationCount(), enumerations);
    finishSaves();
}

TEST_F(SavingTest, SelectingCamerasDuringASaveLeavesTheThreeButtonsOutOfUse)
{
    addCamera({.mac = "FF:00:00:00:00:02", .ip = "192.0.2.21", .ipConfig = StaticIp});
    openWith(staticCamera);
    holdForcing();
    click("Save");
    ASSERT_TRUE(saveIsForcing());
    clickRow(1);
    clickRow(0);
    expectButtons(false);
    finishSaves();
    expectButtons(true);
}

TEST_F(SavingTest, AtItsEndASaveBringsTheButtonsBackWhateverCameraIsSelectedThen)
{
    addHeldCamera({.mac = "FF:00:00:00:00:02", .ip = "192.0.2.21", .ipConfig = StaticIp});
    openWith(staticCamera);
    sdk.forceIp = [this](auto...) {
        forcing.release();
        go.acquire();
        return RZ_ERROR_REFUSED;
    };
    clickRow(cell(0, 4) == "Free" ? 0 : 1);
    click("Save");
    ASSERT_TRUE(saveIsForcing());
    clickRow(cell(0, 4) == "Free" ? 1 : 0);
    confirmNextMessage();
    finishSaves();
    EXPECT_TRUE(button("Save")->isEnabled());
    EXPECT_TRUE(button("Modify IP")->isEnabled());
}

TEST_F(SavingTest, EveryKeyEndsAtTheWindow)
{
    openWith(staticCamera);
    for (const Qt::Key key : {Qt::Key_A, Qt::Key_Escape, Qt::Key_F1, Qt::Key_Return}) {
        QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier);
        QCoreApplication::sendEvent(window, &press);
        EXPECT_TRUE(press.isAccepted()) << key;
    }
}

TEST_F(SavingTest, TheDialogOpensInTheMiddleOfTheScreenWithTheCamerasAddress)
{
    openWith({.ip = "10.0.0.9", .mask = "255.0.0.0", .gateway = "10.0.0.1", .ipConfig = StaticIp});
    QStringList texts;
    inDialog([&](QSetIpAddrDlg& dialog) {
        for (const auto* edit : dialog.findChildren<QLineEdit*>())
            texts << edit->text();
        const QSize screen = QGuiApplication::primaryScreen()->size();
        EXPECT_EQ(dialog.pos(),
                  QPoint((screen.width() - dialog.width()) / 2, (screen.height() - dialog.height()) / 2));
        QTest::keyClick(&dialog, Qt::Key_Escape);
        EXPECT_TRUE(dialog.isVisible());
        dialog.close();
    });
    EXPECT_EQ(texts, (QStringList{"10.0.0.9", "255.0.0.0", "10.0.0.1"}));
    EXPECT_THAT(forced(), IsEmpty());
}

TEST_F(SavingTest, WhatTheDialogAcceptsIsForcedOntoTheCamera)
{
    openWith({.ip = "10.0.0.9", .mask = "255.255.255.0", .gateway = "0.0.0.0", .ipConfig = StaticIp});
    holdForcing();
    inDialog([](QSetIpAddrDlg& dialog) { typeAddressAndPressReturn(dialog, "192.0.2.88"); });
    ASSERT_TRUE(saveIsForcing());
    expectButtons(false);
    finishSaves();
    EXPECT_THAT(forced(), ElementsAre("ForceIpEx(00:1A:2B:3C:4D:5E, 192.0.2.88, 255.255.255.0, 0.0.0.0)"));
    EXPECT_TRUE(eventually([this] { return cell(0, 4) == "Free"; }));
}

TEST_F(SavingTest, ReturnDuringAForcedAddressEndsThatSaveAndBeginsAnother)
{
#ifdef __SANITIZE_THREAD__
    GTEST_SKIP() << "thread sanitizer loses track of a thread that is cancelled in a system call";
#endif
    openWith(staticCamera);
    holdForcing();
    inDialog([](QSetIpAddrDlg& dialog) { typeAddressAndPressReturn(dialog, "192.0.2.88"); });
    ASSERT_TRUE(saveIsForcing());
    // The dialog has had the keyboard, and gives it back when the window manager finds the time. A second
    // Return is for nothing: the save that the first one has begun is no forced address.
    field("IP Address:")->setFocus();
    const QSignalSpy entered(field("IP Address:"), SIGNAL(SigEnterKeyPress(QString)));
    ASSERT_TRUE(eventually([&] { return !entered.isEmpty() || (pressKey("Return") && !entered.isEmpty()); }));
    finishSaves(2);
    EXPECT_TRUE(eventually([this] { return button("Save")->isEnabled(); }));
    EXPECT_EQ(forced().size(), 2U);
    EXPECT_EQ(sdk.livingHandles(), 0);
}

TEST_F(SavingTest, ACameraThatVanishedMeanwhileIsNotForced)
{
    openWith(staticCamera);
    sdk.createHandle = [](const RZ_CC_DEVICE_INFO*) { return RZ_ERROR_PARAMETER; };
    click("Save");
    ASSERT_TRUE(eventually([this] { return jobsAreOver(); }));
    EXPECT_THAT(forced(), IsEmpty());
    expectButtons(true);
}
