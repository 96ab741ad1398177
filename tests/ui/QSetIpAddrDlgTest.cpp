// SPDX-License-Identifier: Apache-2.0
#include "ui/QSetIpAddrDlg.h"

#include "device/QDevice.h"
#include "tests/support/ScriptedProgram.h"
#include "tests/support/WindowActions.h"
#include "widgets/QMessageBoxDlg.h"

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QThread>
#include <QTimer>

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace {

class QSetIpAddrDlgTest : public testing::Test
{
protected:
    QSetIpAddrDlgTest()
    {
        cmd.set("echo \"$2\" >> \"$(dirname \"$0\")/pings\"; exit 1"); // no answer
        QObject::connect(&dialog, &QSetIpAddrDlg::SigSetIpDlgOk, &dialog, [this] { ++accepted; });
        device.m_strIpConfigType = "Static IP";
        device.m_strIpAddress = "10.0.0.9";
        device.m_strSubnetMask = "255.0.0.0";
        device.m_strDefaultGateway = "10.0.0.1";
        device.m_nNetExport = QDevice::GetIP("192.168.1.10");
        device.m_vecHostAdapter = {{QDevice::GetIP("192.168.1.10"), QDevice::GetIP("255.255.255.0")}};
    }

    void open()
    {
        dialog.SetCurDevice(device);
        ASSERT_TRUE(showActive(dialog));
    }

    QLineEdit* edit(int index) const { return dialog.findChildren<QLineEdit*>().at(index); }

    QPushButton* button(const QString& text) const
    {
        for (auto* candidate : dialog.findChildren<QPushButton*>()) {
            if (candidate->text() == text)
                return candidate;
        }
        return nullptr;
    }

    QString rangeText() const
    {
        for (const auto* label : dialog.findChildren<QLabel*>()) {
            if (label->text().contains("Valid Range"))
                return label->text();
        }
        return {};
    }

    const QLabel* caption(int index) const
    {
        for (const auto* label : dialog.findChildren<QLabel*>()) {
            if (label->buddy() == edit(index))
                return label;
        }
        return nullptr;
    }

    void type(int index, const char* text) const
    {
        QTest::keyClick(edit(index), Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(edit(index), Qt::Key_Delete);
        QTest::keyClicks(edit(index), text);
    }

    void clickOk() const { QTest::mouseClick(button("OK"), Qt::LeftButton); }

    enum
    {
        Ip,
        Mask,
        Gateway
    };

    ScriptedProgram cmd{"cmd"};
    QDevice device;
    QSetIpAddrDlg dialog{nullptr};
    int accepted = 0;
};

} // namespace

TEST_F(QSetIpAddrDlgTest, ItComesWithTheCamerasAddressesAndTheRangeOfItsAdapter)
{
    open();
    EXPECT_EQ(dialog.windowTitle(), "Modify IP Address");
    EXPECT_EQ(dialog.size(), QSize(300, 370));
    EXPECT_EQ(dialog.minimumWidth(), dialog.maximumWidth());
    EXPECT_EQ(edit(Ip)->text(), "10.0.0.9");
    EXPECT_EQ(edit(Mask)->text(), "255.0.0.0");
    EXPECT_EQ(edit(Gateway)->text(), "10.0.0.1");
    EXPECT_EQ(rangeText(),
              "<p style='margin:10px'>Valid Range:</p><p style='margin:10px'>192.168.1.0~192.168.1.253</p>");
    EXPECT_TRUE(button("OK")->isEnabled());
    EXPECT_EQ(button("OK")->size(), QSize(90, 30));
    EXPECT_EQ(button("Cancel")->size(), QSize(90, 30));
}

TEST_F(QSetIpAddrDlgTest, EachUseBeginsAtTheEndOfTheAddress)
{
    QPushButton opener(QStringLiteral("Open"));
    const QRect place(700, 700, 200, 100);
    opener.setGeometry(place);
    dialog.move(100, 100);
    QObject::connect(&opener, &QPushButton::clicked, &dialog, [this] {
        dialog.SetCurDevice(device);
        dialog.show();
    });
    ASSERT_TRUE(showActive(opener));
    ASSERT_TRUE(eventually([&] { return opener.geometry() == place; }));
    for (int use = 0; use < 2; ++use) {
        // The pointer itself: a window that nobody has clicked for may not take the focus.
        ASSERT_TRUE(movePointer(place.center()) && pressPointer() && releasePointer());
        ASSERT_TRUE(eventually([this] { return edit(Ip)->hasFocus(); })) << use;
        QTest::keyClick(edit(Ip), Qt::Key_Backspace);
        EXPECT_EQ(edit(Ip)->text(), "10.0.0.");
        QTest::keyClick(edit(Ip), Qt::Key_Tab);
        EXPECT_TRUE(edit(Mask)->hasFocus());
        QTest::mouseClick(button("Cancel"), Qt::LeftButton);
        EXPECT_FALSE(dialog.isVisible());
    }
}

TEST_F(QSetIpAddrDlgTest, AnAdapterThatDidNotHearTheCameraLeavesAnUnclosedParagraphInTheRange)
{
    // Also one in the same subnet.
    device.m_vecHostAdapter.prepend({QDevice::GetIP("192.168.1.9"), QDevice::GetIP("255.255.255.0")});
    open();
    EXPECT_EQ(rangeText(), "<p style='margin:10px'>Valid Range:</p><p style='margin:10px'>"
                           "<p style='margin:10px'>192.168.1.0~192.168.1.253</p>");
}

TEST_F(QSetIpAddrDlgTest, OnlyTheAddressOfACameraWithoutAStaticOneCanBeEdited)
{
    for (const char* type : {"Static IP", "DHCP", "LLA"}) {
        device.m_strIpConfigType = type;
        dialog.SetCurDevice(device);
        const bool isStatic = QString(type) == "Static IP";
        const bool expected[] = {true, isStatic, isStatic};
        for (int i = Ip; i <= Gateway; ++i) {
            EXPECT_EQ(edit(i)->isEnabled(), expected[i]) << type;
            EXPECT_EQ(caption(i)->isEnabled(), expected[i]) << type;
        }
    }
}

TEST_F(QSetIpAddrDlgTest, OkIsInUseOnlyWhenAllThreeTextsAreValid)
{
    open();
    type(Ip, "10.0.0.");
    EXPECT_FALSE(button("OK")->isEnabled());
    type(Mask, "255.0.255");
    type(Ip, "10.0.0.5");
    EXPECT_FALSE(button("OK")->isEnabled());
    type(Gateway, "224.0.0.1");
    type(Mask, "255.0.255.0");
    EXPECT_FALSE(button("OK")->isEnabled());
    type(Gateway, "0.1.2.3");
    EXPECT_TRUE(button("OK")->isEnabled());
}

TEST_F(QSetIpAddrDlgTest, EachUseJudgesTheTextsThatItComesWith)
{
    open();
    type(Ip, "10.0.0.");
    QTest::mouseClick(button("Cancel"), Qt::LeftButton);
    EXPECT_EQ(edit(Ip)->text(), "10.0.0.");
    open();
    EXPECT_TRUE(button("OK")->isEnabled());
    edit(Gateway)->setText("224.0.0.1");
    edit(Gateway)->setText("10.0.0.2");
    EXPECT_TRUE(button("OK")->isEnabled());

    device.m_strDefaultGateway = "224.0.0.1";
    open();
    EXPECT_FALSE(button("OK")->isEnabled());
    edit(Ip)->setText("10.0.0.10");
    EXPECT_FALSE(button("OK")->isEnabled());
    edit(Gateway)->setText("10.0.0.1");
    EXPECT_TRUE(button("OK")->isEnabled());
}

TEST_F(QSetIpAddrDlgTest, OkWithoutAChangeDoesNothing)
{
    open();
    clickOk();
    QTest::keyClick(edit(Ip), Qt::Key_Return);
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_EQ(accepted, 0);
    EXPECT_EQ(cmd.file("pings"), "");
}

TEST_F(QSetIpAddrDlgTest, AnotherGatewayIsAcceptedAtOnceWithoutAPing)
{
    open();
    type(Gateway, "10.0.0.2");
    clickOk();
    EXPECT_EQ(accepted, 1);
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_EQ(cmd.file("pings"), "");

    QDevice modified = device;
    modified.m_strUserDefinedName = "untouched";
    modified.m_strIpConfigType = "LLA";
    dialog.GetModifiedDevice(modified);
    EXPECT_EQ(modified.m_strIpAddress, "10.0.0.9");
    EXPECT_EQ(modified.m_strSubnetMask, "255.0.0.0");
    EXPECT_EQ(modified.m_strDefaultGateway, "10.0.0.2");
    EXPECT_EQ(modified.m_strUserDefinedName, "untouched");
    EXPECT_EQ(modified.m_strIpConfigType, "LLA");
}

TEST_F(QSetIpAddrDlgTest, ItIsStillOpenWhenItTellsThatItIsAccepted)
{
    std::vector<bool> openWhenTold;
    std::vector<bool> okWhenTold;
    QObject::connect(&dialog, &QSetIpAddrDlg::SigSetIpDlgOk, [&] {
        openWhenTold.push_back(dialog.isVisible());
        okWhenTold.push_back(button("OK")->isEnabled());
    });
    open();
    type(Mask, "255.255.0.0");
    clickOk();
    EXPECT_EQ(accepted, 1);
    EXPECT_EQ(cmd.file("pings"), ""); // The mask alone needs none.
    open();
    type(Ip, "192.168.1.77");
    clickOk();
    ASSERT_TRUE(eventually([this] { return !dialog.isVisible(); }));
    EXPECT_EQ(openWhenTold, (std::vector{true, true}));
    EXPECT_EQ(okWhenTold, (std::vector{true, true})); // Also after a ping.
}

TEST_F(QSetIpAddrDlgTest, TheSameAddressWrittenInAnotherWayIsAnotherAddress)
{
    open();
    type(Ip, "10.0.0.09");
    clickOk();
    ASSERT_TRUE(eventually([this] { return accepted == 1; }));
    EXPECT_EQ(cmd.file("pings"), "ping 10.0.0.09 -n 1\n");
}

TEST_F(QSetIpAddrDlgTest, ReturnIsForOkAlsoWhileATextIsInvalid)
{
    open();
    type(Gateway, "224.0.0.1");
    QTest::keyClick(edit(Gateway), Qt::Key_Return);
    EXPECT_EQ(accepted, 1);
    EXPECT_FALSE(dialog.isVisible());

    open();
    type(Ip, "192.168.1.");
    QTest::keyClick(edit(Ip), Qt::Key_Enter);
    ASSERT_TRUE(eventually([this] { return accepted == 2; }));
    EXPECT_EQ(cmd.file("pings"), "ping 192.168.1. -n 1\n");
}

TEST_F(QSetIpAddrDlgTest, AnotherAddressIsAcceptedWhenNobodyAnswersAPingToIt)
{
    open();
    type(Ip, "192.168.1.77");
    clickOk();
    EXPECT_FALSE(button("OK")->isEnabled());
    EXPECT_TRUE(dialog.isVisible());
    ASSERT_TRUE(eventually([this] { return accepted == 1; }));
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_EQ(cmd.file("pings"), "ping 192.168.1.77 -n 1\n");
}

TEST_F(QSetIpAddrDlgTest, AnAddressThatAnswersIsRefusedWithAMessageAndTheDialogStays)
{
    cmd.set("echo time=1ms");
    open();
    type(Ip, "192.168.1.77");
    QStringList message;
    Qt::WindowModality modality = Qt::NonModal;
    bool okMeanwhile = true;
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, [&] {
        auto* const box = qobject_cast<QMessageBoxDlg*>(QApplication::activeModalWidget());
        if (!box || !box->isActiveWindow())
            return;
        watch.stop();
        message << box->windowTitle().trimmed();
        modality = box->windowModality();
        okMeanwhile = button("OK")->isEnabled();
        for (const auto* label : box->findChildren<QLabel*>()) {
            if (label->wordWrap())
                message << label->text();
        }
        QTest::keyClick(box, Qt::Key_Return);
    });
    watch.start(5);
    edit(Mask)->setText("255.0.0");
    QTest::keyClick(edit(Ip), Qt::Key_Enter);
    ASSERT_TRUE(eventually([&] { return !message.isEmpty() && button("OK")->isEnabled(); }));
    edit(Ip)->setText("192.168.1.78");
    EXPECT_TRUE(button("OK")->isEnabled()); // As it was left, although the mask is invalid.
    EXPECT_FALSE(okMeanwhile);
    EXPECT_EQ(message, (QStringList{"Message", "The IP address has been used by other devices."}));
    EXPECT_EQ(modality, Qt::WindowModal);
    EXPECT_EQ(dialog.focusWidget(), edit(Ip)); // For the next attempt.
    EXPECT_FALSE(edit(Ip)->isReadOnly());
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_EQ(accepted, 0);
}

TEST_F(QSetIpAddrDlgTest, CancelClosesAndAcceptsNothing)
{
    open();
    type(Gateway, "10.0.0.2");
    QTest::mouseClick(button("Cancel"), Qt::LeftButton);
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_EQ(accepted, 0);
}

TEST_F(QSetIpAddrDlgTest, EscapeDoesNotCloseIt)
{
    open();
    QTest::keyClick(&dialog, Qt::Key_Escape);
    QTest::keyClick(edit(Ip), Qt::Key_Escape);
    EXPECT_TRUE(dialog.isVisible());
    QKeyEvent press(QEvent::KeyPress, Qt::Key_A, Qt::NoModifier);
    QCoreApplication::sendEvent(&dialog, &press);
    EXPECT_TRUE(press.isAccepted()); // No key goes further.
}

TEST_F(QSetIpAddrDlgTest, APingThatIsStillOutWhenTheDialogIsCancelledAcceptsNothing)
{
    const QByteArray go = (cmd.directory() + "/go").toLocal8Bit();
    ASSERT_EQ(mkfifo(go, 0600), 0);
    cmd.set("cd \"$(dirname \"$0\")\"; echo \"$2\" >> pings; read line < go; exit 1");
    open();
    type(Ip, "192.168.1.77");
    clickOk();
    ASSERT_TRUE(eventually([this] { return !cmd.file("pings").isEmpty(); }));
    QTest::keyClick(edit(Ip), Qt::Key_Return); // Nobody starts a second one.
    // Nor can what is asked for change under the ping's feet.
    for (const int index : {Ip, Mask, Gateway})
        QTest::keyClick(edit(index), Qt::Key_Backspace);
    EXPECT_EQ(edit(Ip)->text(), "192.168.1.77");
    EXPECT_EQ(edit(Mask)->text(), "255.0.0.0");
    EXPECT_EQ(edit(Gateway)->text(), "10.0.0.1");
    EXPECT_FALSE(button("OK")->isEnabled());
    QTest::mouseClick(button("Cancel"), Qt::LeftButton);

    // The next use asks anew, and is answered by its own ping alone.
    open();
    EXPECT_TRUE(button("OK")->isEnabled());
    type(Ip, "192.168.1.78");
    cmd.set("echo \"$2\" >> \"$(dirname \"$0\")/pings\"; exit 1");
    clickOk();
    ASSERT_TRUE(eventually([this] { return accepted == 1; }));
    EXPECT_EQ(cmd.file("pings"), "ping 192.168.1.77 -n 1\nping 192.168.1.78 -n 1\n");

    QFile pipe(go);
    ASSERT_TRUE(pipe.open(QIODevice::WriteOnly));
    pipe.write("\n");
    pipe.close();
    ASSERT_TRUE(eventually([this] { return dialog.findChildren<QThread*>().size() == 1; }));
    EXPECT_EQ(accepted, 1);
}

TEST_F(QSetIpAddrDlgTest, AfterReleaseNothingReacts)
{
    open();
    const auto* const content = dialog.findChild<QWidget*>("MainContentMid");
    ASSERT_NE(content->layout(), nullptr);
    dialog.Release();
    EXPECT_TRUE(content->children().isEmpty()); // Neither widgets nor layouts.
    dialog.SetCurDevice(device);
    QDevice modified = device;
    dialog.GetModifiedDevice(modified);
    EXPECT_EQ(modified.m_strIpAddress, device.m_strIpAddress);
    dialog.RefreshWidgetInfo();
    dialog.OnIpAddrChanged("10.0.0.1");
    QTest::keyClick(&dialog, Qt::Key_Return);
    dialog.OnPingThreadEnd();
    EXPECT_EQ(accepted, 0);
    EXPECT_FALSE(dialog.IsChanged());
    EXPECT_FALSE(dialog.IsIPChanged());
}
