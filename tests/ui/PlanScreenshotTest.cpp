// SPDX-License-Identifier: Apache-2.0
#include "tests/support/WindowActions.h"
#include "tests/ui/Chinese.h"
#include "tests/ui/PlanFixture.h"

#include <QTest>

namespace {

/// Pictures of a plan's states, for people to look at.
class PlanScreenshotTest : public PlanFixture
{
protected:
    void addLine()
    {
        addLeftAndRight();
        addCamera({.mac = "00:1A:2B:00:00:03",
                   .ip = "192.0.2.105",
                   .model = "RZ-5000GM",
                   .serial = "01B1120088",
                   .userName = "",
                   .ipConfig = Dhcp});
        addCamera({.mac = "00:1A:2B:00:00:04",
                   .ip = "169.254.3.8",
                   .model = "RZ-5000GM",
                   .serial = "01B1120090",
                   .userName = "Spare",
                   .ipConfig = Lla});
    }

    static QString line()
    {
        return leftAndRight() + R"(  roof:
    match: {serial: "01B1120088"}
    address: 192.0.2.23
    gateway: 192.0.2.1
  gate: {match: {mac: "00:1A:2B:00:00:04"}, mode: dhcp}
)";
    }

    void take(const QString& language)
    {
        const auto save = [&](const char* state) { saveScreenshot(*shown(), language + "-plan-" + state); };
        addLine();
        open();
        openPlanWindow();
        save("1-no-file");
        openFile(write(line()));
        selectPlace(2);
        save("2-to-do");
        saveScreenshot(*window, language + "-plan-0-button");

        holdChanges();
        press("Apply");
        ASSERT_TRUE(eventually([this] { return held.tryAcquire(); }));
        go.release(1);
        ASSERT_TRUE(eventually([this] { return held.tryAcquire(); }));
        ASSERT_TRUE(eventually([] { return !cell(1, State).isEmpty(); }));
        save("3-applying");
        press("Stop");
        save("4-stopping");
        go.release(1000);
        ASSERT_TRUE(eventually([] { return isIdle(); }));
        save("5-applied");

        write(line().replace("01A2093502", "01A2090000"));
        pressAndWait("Look again");
        selectPlace(1);
        save("6-missing");
        onNextModal([&](QWidget& question) {
            saveScreenshot(question, language + "-plan-7-replace");
            question.close();
        });
        press("Replace...");

        write(line().replace("gateway: 192.0.2.1", "gatway: 192.0.2.1"));
        pressAndWait("Look again");
        save("8-wrong-file");

        sdk.isDeviceAccessible = [](const RZ_CC_DEVICE_INFO*) { return false; };
        write(line().replace("192.0.2.21", "192.0.2.51"));
        pressAndWait("Look again");
        save("9-in-the-way");

        sdk.isDeviceAccessible = [](const RZ_CC_DEVICE_INFO*) { return true; };
        pressAndWait("Look again");
        sdk.change = [](const RZ_CC_CHANGE&) {
            return std::optional(
                SdkDouble::ChangeEnd{RZ_ERROR_NO_ANSWER, "did not answer writing 0x0000064C"});
        };
        pressAndWait("Apply");
        selectPlace(0);
        save("10-failed");

        QString text = "version: 1\ndefaults: {mode: static, mask: 255.255.255.0, gateway: none}\ncameras:\n";
        for (int i = 0; i < 50; ++i) {
            const QString mac = QString::asprintf("00:1A:2B:00:01:%02X", i);
            addCamera({.mac = mac.toStdString(), .ip = "192.0.2." + std::to_string(120 + i)});
            text += QString("  line %1: {match: {mac: \"%2\"}, address: 192.0.2.%3}\n")
                        .arg(i)
                        .arg(mac)
                        .arg(180 + i);
        }
        write(text);
        pressAndWait("Look again");
        save("11-many");
        shown()->resize(1, 1);
        QCoreApplication::processEvents();
        save("12-smallest");
        ASSERT_TRUE(shown()->close());
    }
};

} // namespace

TEST_F(PlanScreenshotTest, EveryStateInEnglish)
{
    take("en");
}

TEST_F(PlanScreenshotTest, EveryStateInChinese)
{
    const Chinese language;
    take("zh");
}
