// SPDX-License-Identifier: Apache-2.0
#include "tests/support/WindowActions.h"
#include "tests/ui/Chinese.h"
#include "tests/ui/WindowFixture.h"
#include "ui/QDiagnosisWindow.h"
#include "ui/QSetIpAddrDlg.h"
#include "widgets/QPushButtonExColor.h"

#include <QApplication>
#include <QSemaphore>
#include <QTest>

namespace {

/// Pictures of the windows' states, for people to look at.
class ScreenshotTest : public WindowFixture
{
protected:
    void addCameras()
    {
        addCamera({.mac = "00:1A:2B:00:00:01",
                   .ip = "192.0.2.20",
                   .gateway = "192.0.2.254",
                   .model = "RZ-1300GM",
                   .serial = "01A2093471",
                   .userName = "Left gate",
                   .ipConfig = StaticIp});
        addCamera({.mac = "00:1A:2B:00:00:02",
                   .ip = "192.0.2.31",
                   .model = "RZ-2000GC",
                   .serial = "01A2093502",
                   .userName = "Right gate",
                   .ipConfig = Dhcp});
        addHeldCamera({.mac = "00:1A:2B:00:00:03",
                       .ip = "192.0.2.32",
                       .model = "RZ-5000GM",
                       .serial = "01B1120088",
                       .userName = "Roof",
                       .ipConfig = StaticIp});
        addCamera({.mac = "00:1A:2B:00:00:04",
                   .ip = "192.168.100.100",
                   .mask = "255.255.255.128",
                   .gateway = "192.168.100.126",
                   .model = "RZ-5000GM",
                   .serial = "01B1120090",
                   .userName = "Spare",
                   .ipConfig = StaticIp});
        addCamera({.mac = "00:1A:2B:00:00:05",
                   .ip = "169.254.3.8",
                   .model = "A model with too long a name",
                   .serial = "0123456789ABCDE",
                   .userName = "\u76F8\u673A\u76F8\u673A",
                   .ipConfig = Lla});
    }

    void takeAll(const QString& language)
    {
        const auto save = [&](const char* state) { saveScreenshot(*window, language + '-' + state); };
        open();
        save("1-no-camera");
        addCameras();
        refresh();
        save("2-free-static");
        type("IP Address:", "192.0.2.");
        save("3-invalid-address");
        clickRow(1);
        save("4-free-dhcp");
        clickRow(2);
        save("5-in-use");
        clickRow(3);
        save("6-unreachable");
        onNextModal([&](QWidget& dialog) {
            saveScreenshot(dialog, language + "-7-dialog");
            dialog.close();
        });
        click("Modify IP");
        ASSERT_TRUE(showActive(*window)); // The dialog has had the keyboard.
        clickRow(4);
        save("8-unreachable-lla");

        clickRow(0);
        sdk.forceIp = [](auto...) { return RZ_ERROR_REFUSED; };
        onNextModal([&](QWidget& box) {
            saveScreenshot(box, language + "-9-message");
            box.close();
        });
        click("Save");
        save("10-saving");
        ASSERT_TRUE(eventually([this] { return jobsAreOver(); }));
        ASSERT_TRUE(showActive(*window)); // The message has had the keyboard.

        button("Refresh")->setFocus();
        save("11-button-focus");
        button("Save")->setFocus();
        save("12-save-focus");
        for (int i = static_cast<int>(sdk.listed.size()); i < 256; ++i)
            addCamera(
                {.mac = QString::asprintf("00:1A:2B:00:01:%02X", i).toStdString(), .ipConfig = StaticIp});
        refresh();
        save("13-many");
        window->showMaximized();
        ASSERT_TRUE(eventually([this] { return window->width() > 1000; }));
        save("14-maximised");

        QSetIpAddrDlg dialog(nullptr);
        QDevice device;
        device.m_strIpConfigType = QObject::tr("DHCP");
        device.m_strIpAddress = "192.168.100.100";
        device.m_strSubnetMask = "255.255.255.0";
        device.m_strDefaultGateway = "192.168.100.254";
        device.m_nNetExport = QDevice::GetIP("192.168.100.10");
        device.m_vecHostAdapter.fill({QDevice::GetIP("10.1.1.1"), QDevice::GetIP("255.0.0.0")}, 12);
        device.m_vecHostAdapter.append({device.m_nNetExport, QDevice::GetIP("255.255.255.0")});
        dialog.SetCurDevice(device);
        ASSERT_TRUE(showActive(dialog));
        saveScreenshot(dialog, language + "-15-dialog-dhcp");
    }

    /// One of each kind, in whatever language they are told.
    static doctor::Diagnosis manyFindings()
    {
        doctor::Finding error;
        error.severity = doctor::Severity::Error;
        error.adapterName = "enp3s0";
        error.camera = base::MacAddress::parse("00:1A:2B:00:00:04");
        error.text = {
            {"The camera %1 has the address %2, which lies outside the subnet of the network adapter "
             "%3, so programs cannot reach it.",
             {"Spare", "192.168.100.100", "enp3s0"}}};
        error.reason = {{"The camera was heard on %1, which has %2; it says of itself: %3.",
                         {"enp3s0", "192.0.2.5/24", "192.168.100.100/25"}}};
        error.repair = {"ip-configurator-cli force 00:1A:2B:00:00:04 --ip 192.0.2.33 --mask 255.255.255.0"};
        doctor::Finding warning;
        warning.severity = doctor::Severity::Warning;
        warning.adapterName = "enp4s0";
        warning.text = {{"The network adapter %1 has no link: its cable is out or broken, or what is at the "
                         "cable's other end is switched off.",
                         {"enp4s0"}},
                        {"Check the plugs at both ends, the cable, and the power of the camera or switch at "
                         "its other end.",
                         {}}};
        warning.reason = {{"It is switched on, and the kernel says that it has no carrier.", {}}};
        doctor::Finding note;
        note.camera = base::MacAddress::parse("00:1A:2B:00:00:03");
        note.text = {{"The camera %1 is in use by an application at %2.", {"Roof", "192.0.2.77:4711"}}};
        note.reason = {{"An application has control of it, as the camera says; others may read.", {}}};
        return {{}, {error, warning, note}};
    }

    void takeDiagnosis(const QString& language)
    {
        QSemaphore go;
        const auto examineLater = [&go](doctor::Diagnosis diagnosis) {
            return [&go, diagnosis] {
                go.acquire();
                return diagnosis;
            };
        };
        examine = [] { return manyFindings(); };
        open();
        saveScreenshot(*window, language + "-16-no-camera-why");
        addCameras();
        addCamera({.mac = "00:1A:2B:00:00:06", .ip = "192.0.2.31", .userName = "Copy of right"});
        refresh();
        saveScreenshot(*window, language + "-17-conflict");

        examine = examineLater(manyFindings());
        click("Diagnose");
        auto* diagnosis = static_cast<QDiagnosisWindow*>(nullptr);
        for (QWidget* const widget : QApplication::topLevelWidgets())
            if (auto* const found = qobject_cast<QDiagnosisWindow*>(widget); found && found->isVisible())
                diagnosis = found;
        ASSERT_NE(diagnosis, nullptr);
        ASSERT_TRUE(showActive(*diagnosis));
        saveScreenshot(*diagnosis, language + "-18-diagnosis-looking");
        go.release();
        ASSERT_TRUE(eventually([diagnosis] { return !diagnosis->IsLooking(); }));
        saveScreenshot(*diagnosis, language + "-19-diagnosis");
        const auto lookAgain = [&](const char* state, const std::function<doctor::Diagnosis()>& find) {
            QSemaphore begun;
            examine = [&] {
                begun.release();
                return find();
            };
            ASSERT_TRUE(showActive(*diagnosis));
            QTest::mouseClick(diagnosis->findChild<QPushButtonExColor*>(), Qt::LeftButton);
            ASSERT_TRUE(eventually([&] { return begun.available() > 0 && !diagnosis->IsLooking(); }));
            saveScreenshot(*diagnosis, language + state);
        };
        lookAgain("-20-diagnosis-nothing", [] { return doctor::Diagnosis(); });
        lookAgain("-21-diagnosis-failed",
                  []() -> doctor::Diagnosis { throw std::runtime_error("the network adapters"); });
        diagnosis->close();
    }
};

} // namespace

TEST_F(ScreenshotTest, EveryStateInEnglish)
{
    takeAll("en");
}

TEST_F(ScreenshotTest, EveryStateInChinese)
{
    const Chinese language;
    takeAll("zh");
}

TEST_F(ScreenshotTest, EveryStateOfADiagnosisInEnglish)
{
    takeDiagnosis("en");
}

TEST_F(ScreenshotTest, EveryStateOfADiagnosisInChinese)
{
    const Chinese language;
    takeDiagnosis("zh");
}
