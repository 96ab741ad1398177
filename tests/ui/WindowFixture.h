// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "device/QDevice.h"
#include "doctor/Doctor.h"
#include "inventory/Inventory.h"
#include "tests/save/NodeMapDouble.h"
#include "tests/support/ScriptedProgram.h"
#include "tests/support/SdkDouble.h"
#include "tests/ui/Surveyed.h"
#include "ui/MainWidget.h"

#include <QAbstractButton>
#include <QLabel>
#include <QLineEdit>
#include <QTableWidget>

#include <gtest/gtest.h>

struct PortDouble : GenApi::IPort
{
    GenApi::EAccessMode GetAccessMode() const override { return GenApi::RW; }
    void Read(void* /*buffer*/, int64_t /*address*/, int64_t /*length*/) override {}
    void Write(const void* /*buffer*/, int64_t /*address*/, int64_t /*length*/) override {}
};

/// What a message box said, or what a record of one expects.
struct Message
{
    QString title;
    QString text;
    bool operator==(const Message& other) const { return title == other.title && text == other.text; }
};

/// The main window between a double of the SDK, one of the cameras' node maps and programs "ping" and "cmd"
/// that send nothing: no address answers unless the test says so. It is used as a person would, by what
/// stands on its controls.
class WindowFixture : public testing::Test
{
protected:
    /// An address configuration as records have it.
    enum IpConfig : uint32_t
    {
        Lla = 0,
        StaticIp = 1,
        Dhcp = 2
    };

    WindowFixture();
    /// Skips the test under the thread sanitizer, to which Qt, built without it, looks full of races. Tests
    /// that are made for that sanitizer order the threads themselves, and do not call this.
    void SetUp() override;
    /// Waits for running jobs, which need the doubles and whatever else of the test they have been given.
    void TearDown() override;

    /// A camera that the next refresh finds. One whose address starts with another network than its adapter's
    /// is unreachable.
    RZ_CC_DEVICE_INFO* addCamera(const SdkDouble::Camera& camera);
    /// One that another application holds.
    RZ_CC_DEVICE_INFO* addHeldCamera(const SdkDouble::Camera& camera);

    /// Opens the window and waits for the first list.
    void open();
    /// Presses F5 and waits for the new list.
    void refresh();
    std::ptrdiff_t enumerationCount() const;
    bool jobsAreOver() const;

    /// By the text that stands on it.
    QAbstractButton* button(const char* text) const;
    /// By its caption.
    QLineEdit* field(const char* caption) const;
    QTableWidget* table() const;
    QString cell(int row, int column) const;
    QString panelTitle() const;
    /// The texts of the panel's labels, captions and values in pairs.
    QStringList panelTexts() const;
    /// Of the field; expects the same of its caption.
    bool isEnabled(const char* caption) const;
    static bool isRed(const QLineEdit* field);

    /// The plain text of the tool tip that comes up over the place in the widget.
    static QString toolTipOf(QWidget& widget, const QPoint& place);
    QString toolTipOfCell(int row, int column) const;

    void clickRow(int row) const;
    void click(const char* buttonText) const;
    /// Replaces the field's text by typing.
    void type(const char* caption, const QString& text) const;

    /// Runs once as soon as the next modal window is active: the event loop that waits for it runs inside of
    /// the call that opens it.
    void onNextModal(const std::function<void(QWidget&)>& act);
    /// Reads the next message box and presses "OK"; the message can be looked at afterwards.
    void confirmNextMessage();

    static void saveScreenshot(QWidget& window, const QString& name);

    /// What the doctor finds out, on a worker's thread; at first nothing. None of it comes from this machine.
    std::function<doctor::Diagnosis()> examine = [] { return doctor::Diagnosis(); };

    /// What a survey for a plan finds, on a worker's thread; at first what the double of the SDK lists.
    std::function<inventory::Inventory()> survey = [this] { return surveyed(sdk, sdk.isDeviceAccessible); };

    ScriptedProgram ping{"ping"};
    ScriptedProgram cmd{"cmd"};
    PortDouble port;
    SdkDouble sdk;
    std::vector<std::string> written; ///< To cameras, through their node maps.
    NodeMapDouble nodes{[this](const std::string& what) { written.push_back(what); }};
    MainWidget* window = nullptr;
    std::vector<Message> messages; ///< That were confirmed.

private:
    std::vector<RZ_CC_DEVICE_INFO*> m_held;
};
