// SPDX-License-Identifier: Apache-2.0
#include "tests/ui/PlanFixture.h"

#include "tests/support/WindowActions.h"

#include <QApplication>
#include <QFile>
#include <QFileDialog>
#include <QTest>

#include <algorithm>

PlanFixture::~PlanFixture()
{
    go.release(1000);
}

void PlanFixture::TearDown()
{
    go.release(1000);
    WindowFixture::TearDown();
    if (window)
        window->close();
}

void PlanFixture::addLeftAndRight()
{
    addCamera({.mac = "00:1A:2B:00:00:01",
               .ip = "192.0.2.21",
               .model = "RZ-1300GM",
               .serial = "01A2093471",
               .userName = "left",
               .ipConfig = StaticIp});
    addCamera({.mac = "00:1A:2B:00:00:02",
               .ip = "192.0.2.31",
               .model = "RZ-2000GC",
               .serial = "01A2093502",
               .userName = "right",
               .ipConfig = StaticIp});
}

QString PlanFixture::leftAndRight()
{
    return QStringLiteral(R"(version: 1
defaults: {mode: static, mask: 255.255.255.0, gateway: none}
cameras:
  left: # Above the belt.
    match: {mac: "00:1A:2B:00:00:01"}
    address: 192.0.2.21
  right:
    match: {serial: "01A2093502"}
    address: 192.0.2.22
)");
}

QString PlanFixture::write(const QString& text, const QString& name) const
{
    QFile file(folder.filePath(name));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(text.toUtf8());
    return file.fileName();
}

QString PlanFixture::contentOf(const QString& file)
{
    QFile content(file);
    EXPECT_TRUE(content.open(QIODevice::ReadOnly)) << file.toStdString();
    return QString::fromUtf8(content.readAll());
}

void PlanFixture::openPlanWindow()
{
    click("Plan");
    ASSERT_TRUE(eventually([] { return shown() && shown()->isActiveWindow(); }));
}

void PlanFixture::chooseNextFile(const QString& file)
{
    onNextModal([file](QWidget& modal) {
        ASSERT_NE(qobject_cast<QFileDialog*>(&modal), nullptr);
        auto* const name = modal.findChild<QLineEdit*>();
        name->clear();
        QTest::keyClicks(name, file);
        QTest::keyClick(name, Qt::Key_Return);
    });
}

void PlanFixture::openFile(const QString& file)
{
    chooseNextFile(file);
    pressAndWait("Open...");
}

QString PlanFixture::openPlanOf(const QString& text)
{
    QString file = write(text);
    openPlanWindow();
    if (shown())
        openFile(file);
    return file;
}

QPlanWindow* PlanFixture::shown()
{
    for (QWidget* const widget : QApplication::topLevelWidgets()) {
        auto* const found = qobject_cast<QPlanWindow*>(widget);
        if (found && found->isVisible())
            return found;
    }
    return nullptr;
}

bool PlanFixture::isIdle()
{
    return !shown() || !shown()->IsWorking();
}

QTableWidget* PlanFixture::places()
{
    return shown()->findChild<QTableWidget*>();
}

QString PlanFixture::cell(int row, Column column)
{
    const QTableWidgetItem* const item = places()->item(row, column);
    return item ? item->text() : QString();
}

void PlanFixture::selectPlace(int row)
{
    QTest::mouseClick(places()->viewport(), Qt::LeftButton, Qt::NoModifier,
                      places()->visualItemRect(places()->item(row, 0)).center());
}

QStringList PlanFixture::texts()
{
    QStringList texts;
    for (const auto* label : shown()->findChildren<QLabel*>())
        if (label->isVisible() && !label->text().isEmpty())
            texts << label->text();
    return texts;
}

bool PlanFixture::says(const QString& part)
{
    const bool said = eventually([&] { return texts().join('\n').contains(part); });
    EXPECT_TRUE(said) << part.toStdString() << " is not in\n" << texts().join('\n').toStdString();
    return said;
}

QAbstractButton* PlanFixture::buttonOf(const char* text)
{
    const QString wanted = QCoreApplication::translate("QPlanWindow", text);
    for (auto* candidate : shown()->findChildren<QAbstractButton*>())
        if (candidate->text() == wanted)
            return candidate;
    ADD_FAILURE() << "no button " << text;
    return nullptr;
}

void PlanFixture::press(const char* buttonText)
{
    QTest::mouseClick(buttonOf(buttonText), Qt::LeftButton);
}

void PlanFixture::pressAndWait(const char* buttonText)
{
    press(buttonText);
    ASSERT_TRUE(eventually([] { return isIdle(); }));
}

std::ptrdiff_t PlanFixture::changeCount() const
{
    const auto calls = sdk.calls();
    return std::count_if(calls.begin(), calls.end(),
                         [](const std::string& call) { return call.starts_with("BeginChange"); });
}

void PlanFixture::holdChanges()
{
    sdk.stepUnderWay = RZ_STEP_FORCED;
    sdk.change = [this, change = sdk.change](const RZ_CC_CHANGE& wanted) {
        held.release();
        return go.tryAcquire() ? change(wanted) : std::nullopt;
    };
}
