// SPDX-License-Identifier: Apache-2.0
#include "tests/support/WindowActions.h"
#include "tests/ui/WindowFixture.h"
#include "ui/QSetIpAddrDlg.h"

#include <QApplication>
#include <QTest>

namespace {

/// Pictures of the window's states, for people to look at.
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
                   .ip = "10.7.7.9",
                   .model = "RZ-5000GM",
                   .serial = "01B1120090",
                   .userName = "Spare",
                   .ipConfig = StaticIp});
        addCamera({.mac = "00:1A:2B:00:00:05",
                   .ip = "169.254.3.8",
                   .model = "RZ-1300GM",
                   .serial = "01A2093480",
                   .userName = "",
                   .ipConfig = Lla});
    }
};

} // namespace

TEST_F(ScreenshotTest, EveryStateOfTheWindow)
{
    open();
    saveScreenshot(*window, "1-no-camera");
    addCameras();
    refresh();
    saveScreenshot(*window, "2-free-static");
    type("IP Address:", "192.0.2.");
    saveScreenshot(*window, "3-invalid-address");
    clickRow(1);
    saveScreenshot(*window, "4-free-dhcp");
    clickRow(2);
    saveScreenshot(*window, "5-in-use");
    clickRow(3);
    saveScreenshot(*window, "6-unreachable");
    clickRow(4);
    saveScreenshot(*window, "7-unreachable-lla");
    clickRow(0);
    window->showMaximized();
    ASSERT_TRUE(eventually([this] { return window->width() > 1000; }));
    saveScreenshot(*window, "8-maximised");
}
