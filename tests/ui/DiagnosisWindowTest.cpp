// SPDX-License-Identifier: Apache-2.0
#include "tests/support/WindowActions.h"
#include "tests/ui/Chinese.h"
#include "tests/ui/WindowFixture.h"
#include "ui/QDiagnosisWindow.h"
#include "ui/QFindingView.h"

#include <QApplication>
#include <QClipboard>
#include <QScrollArea>
#include <QScrollBar>
#include <QSemaphore>
#include <QTest>

#include <gmock/gmock.h>

using testing::Contains;
using testing::HasSubstr;

namespace {

class DiagnosisWindowTest : public WindowFixture
{
protected:
    ~DiagnosisWindowTest() override { go.release(100); }

    void TearDown() override
    {
        WindowFixture::TearDown();
        if (window)
            window->close();
    }

    static doctor::Finding twoCamerasOfOneAddress()
    {
        doctor::Finding finding;
        finding.id = "duplicate-address";
        finding.severity = doctor::Severity::Error;
        finding.adapterName = "eth1";
        finding.camera = base::MacAddress::parse("00:1A:2B:3C:4D:5E");
        finding.text = {
            {"The cameras %1 and %2 have the same address, %3: which of them a program reaches is "
             "chance.",
             {"Left", "<b>Right</b>", "192.0.2.21"}}};
        finding.reason = {{"Both answered with it, %1 on %2 and %3 on %4.",
                           {"00:1A:2B:3C:4D:5E", "eth1", "00:1A:2B:3C:4D:5F", "eth1"}}};
        finding.repair = {"ip-configurator-cli force 00:1A:2B:3C:4D:5E --ip 192.0.2.30 --mask 255.255.255.0",
                          "second"};
        return finding;
    }

    static doctor::Finding heldCamera()
    {
        doctor::Finding finding;
        finding.id = "in-use";
        finding.severity = doctor::Severity::Note;
        finding.text = {{"The camera %1 is in use by some application.", {"Roof"}}};
        finding.reason = {{"An application has control of it, as the camera says; others may read.", {}}};
        return finding;
    }

    void find(const std::vector<doctor::Finding>& findings)
    {
        examine = [findings] {
            doctor::Diagnosis diagnosis;
            diagnosis.findings = findings;
            return diagnosis;
        };
    }

    /// Holds each examination from now on, until the test lets it go on.
    void holdExaminations()
    {
        examine = [this, examine = examine] {
            held.release();
            go.acquire();
            return examine();
        };
    }

    void openWithCamera()
    {
        addCamera({});
        open();
    }

    /// Presses Diagnose.
    void diagnose()
    {
        click("Diagnose");
        ASSERT_TRUE(eventually([this] { return shown() && shown()->isActiveWindow(); }));
    }

    static QDiagnosisWindow* shown()
    {
        for (QWidget* const widget : QApplication::topLevelWidgets()) {
            auto* const found = qobject_cast<QDiagnosisWindow*>(widget);
            if (found && found->isVisible())
                return found;
        }
        return nullptr;
    }

    static QStringList texts()
    {
        QStringList texts;
        for (const auto* label : shown()->findChildren<QLabel*>())
            if (label->isVisible() && !label->text().isEmpty())
                texts << label->text();
        return texts;
    }
    static bool says(const char* text)
    {
        return eventually([&] { return texts().contains(QString::fromUtf8(text)); });
    }

    static QAbstractButton* buttonOf(const QString& text)
    {
        for (auto* candidate : shown()->findChildren<QAbstractButton*>())
            if (candidate->text() == text)
                return candidate;
        return nullptr;
    }
    static void press(const QString& text)
    {
        QAbstractButton* const pressed = buttonOf(text);
        ASSERT_NE(pressed, nullptr) << text.toStdString();
        QTest::mouseClick(pressed, Qt::LeftButton);
    }
    static QString clipboard() { return QGuiApplication::clipboard()->text(); }

    QSemaphore held;
    QSemaphore go;
};

} // namespace

TEST_F(DiagnosisWindowTest, ItShowsEachFindingWithItsReasonAndCommands)
{
    find({twoCamerasOfOneAddress(), heldCamera()});
    openWithCamera();
    diagnose();
    EXPECT_TRUE(says("2 findings, the worst first"));
    for (const char* text :
         {"Error", "eth1  00:1A:2B:3C:4D:5E",
          "The cameras Left and <b>Right</b> have the same address, 192.0.2.21: which of them a program "
          "reaches is chance.",
          "Both answered with it, 00:1A:2B:3C:4D:5E on eth1 and 00:1A:2B:3C:4D:5F on eth1.",
          "ip-configurator-cli force 00:1A:2B:3C:4D:5E --ip 192.0.2.30 --mask 255.255.255.0\nsecond", "Note",
          "The camera Roof is in use by some application."})
        EXPECT_TRUE(texts().contains(text)) << text << '\n' << texts().join('\n').toStdString();
    for (const auto* label : shown()->findChildren<QLabel*>()) {
        if (label->text().contains("<b>")) {
            EXPECT_EQ(label->textFormat(), Qt::PlainText);
        }
    }
}

TEST_F(DiagnosisWindowTest, ItSpeaksChineseAsSoonAsTheProgramDoes)
{
    find({twoCamerasOfOneAddress()});
    openWithCamera();
    diagnose();
    ASSERT_TRUE(says("1 finding"));
    const Chinese language;
    EXPECT_TRUE(says("1 项结果"));
    EXPECT_TRUE(says("错误"));
    EXPECT_TRUE(says("相机 Left 和 <b>Right</b> 使用同一地址 192.0.2.21：程序访问到哪一台全凭偶然。"));
    EXPECT_EQ(shown()->windowTitle(), QString::fromUtf8("诊断结果"));
}

TEST_F(DiagnosisWindowTest, ItCopiesTheCommandsOfOneFindingAndAllAsText)
{
    find({twoCamerasOfOneAddress()});
    openWithCamera();
    diagnose();
    ASSERT_TRUE(says("1 finding"));
    press("Copy");
    EXPECT_EQ(clipboard(),
              "ip-configurator-cli force 00:1A:2B:3C:4D:5E --ip 192.0.2.30 --mask 255.255.255.0\nsecond");
    EXPECT_TRUE(says("Copied"));
    press("Copy all");
    EXPECT_THAT(clipboard().toStdString(), HasSubstr("The cameras Left and <b>Right</b> have the same"));
    EXPECT_THAT(clipboard().toStdString(), HasSubstr("second"));
}

TEST_F(DiagnosisWindowTest, TheMainWindowStaysInUseWhileItLooks)
{
    openWithCamera();
    find({heldCamera()});
    holdExaminations();
    diagnose();
    ASSERT_TRUE(eventually([this] { return held.tryAcquire(); }));
    EXPECT_TRUE(says("Looking ... This takes a few seconds."));
    EXPECT_FALSE(buttonOf("Look again")->isEnabled());
    EXPECT_FALSE(buttonOf("Copy all")->isEnabled());
    EXPECT_FALSE(shown()->isModal());
    ASSERT_TRUE(showActive(*window));
    type("Device User ID:", "typed");
    go.release(100);
    EXPECT_TRUE(says("1 finding"));
    EXPECT_TRUE(buttonOf("Look again")->isEnabled());
}

TEST_F(DiagnosisWindowTest, ItLooksAgainByF5AndByItsButtonAndTheListDoesNot)
{
    find({heldCamera()});
    openWithCamera();
    diagnose();
    ASSERT_TRUE(says("1 finding"));
    const auto searches = enumerationCount();
    find({});
    QTest::keyClick(shown()->windowHandle(), Qt::Key_F5);
    EXPECT_TRUE(says("Nothing wrong was found on this computer's networks."));
    EXPECT_EQ(shown()->findChildren<QFindingView*>().size(), 0);
    find({heldCamera(), twoCamerasOfOneAddress()});
    press("Look again");
    EXPECT_TRUE(says("2 findings, the worst first"));
    EXPECT_EQ(enumerationCount(), searches);
}

TEST_F(DiagnosisWindowTest, ItSaysWhyNothingCouldBeLookedAt)
{
    openWithCamera();
    examine = []() -> doctor::Diagnosis { throw std::runtime_error("no sockets"); };
    diagnose();
    EXPECT_TRUE(says("Nothing could be looked at: no sockets"));
    EXPECT_FALSE(buttonOf("Copy all")->isEnabled());
    EXPECT_TRUE(buttonOf("Look again")->isEnabled());
}

TEST_F(DiagnosisWindowTest, ManyFindingsAreScrolledAndNoneIsCut)
{
    find(std::vector<doctor::Finding>(12, twoCamerasOfOneAddress()));
    openWithCamera();
    diagnose();
    ASSERT_TRUE(says("12 findings, the worst first"));
    auto* const scroll = shown()->findChild<QScrollArea*>();
    EXPECT_TRUE(eventually([&] { return scroll->verticalScrollBar()->maximum() > 0; }));
    shown()->resize(1, 1);
    QCoreApplication::processEvents();
    EXPECT_LE(scroll->widget()->width(), scroll->viewport()->width());
    for (const auto* label : scroll->findChildren<QLabel*>())
        EXPECT_GE(label->height(), label->heightForWidth(label->width())) << label->text().toStdString();
}

TEST_F(DiagnosisWindowTest, ItClosesWithTheMainWindow)
{
    openWithCamera();
    diagnose();
    ASSERT_TRUE(eventually([this] { return !window->IsLooking(); }));
    window->close();
    EXPECT_EQ(shown(), nullptr);
}
