// SPDX-License-Identifier: Apache-2.0
#include "tests/ui/WindowFixture.h"

#include "resources/Fonts.h"
#include "tests/support/WindowActions.h"
#include "widgets/QMessageBoxDlg.h"

#include <QApplication>
#include <QDir>
#include <QFontDatabase>
#include <QGroupBox>
#include <QHelpEvent>
#include <QTest>
#include <QTextDocument>
#include <QTimer>
#include <QToolTip>

#include <algorithm>

// What the libraries under Qt keep until the process ends.
extern "C" [[gnu::visibility("default")]] const char*
__lsan_default_suppressions() // NOLINT(clang-diagnostic-reserved-identifier)
{
    return "leak:libfontconfig\nleak:libdbus-1\n";
}

// What Qt, its platform plug-in and the graphics libraries do among themselves is not judged.
extern "C" [[gnu::visibility("default")]] const char*
__tsan_default_options() // NOLINT(clang-diagnostic-reserved-identifier)
{
    return "ignore_noninstrumented_modules=1";
}

namespace {

/// The windows live as long as the process, as the program's does: their workers are never destroyed.
std::vector<MainWidget*> s_windows; // NOLINT(bugprone-throwing-static-initialization)

/// The fonts that start-up sets.
void installFonts()
{
    static const bool installed = [] {
        const int id = QFontDatabase::addApplicationFont(QCoreApplication::applicationDirPath() +
                                                         QStringLiteral("/../bin/segoeui.ttf"));
        QFont font(QFontDatabase::applicationFontFamilies(id).value(0));
        font.setPointSize(13);
        QApplication::setFont(font);
        InstallFontSubstitutes();
        return true;
    }();
    ASSERT_TRUE(installed);
}

} // namespace

WindowFixture::WindowFixture()
{
    installFonts();
    ping.set("exit 1");
    cmd.set("exit 1");
    sdk.port = &port;
    sdk.description = "<xml/>";
    sdk.isDeviceAccessible = [this](const RZ_CC_DEVICE_INFO* info) {
        return std::find(m_held.begin(), m_held.end(), info) == m_held.end();
    };
    for (const char* name : {"GevCurrentIPConfigurationPersistentIP", "GevCurrentIPConfigurationDHCP"})
        nodes.addBoolean(name);
    nodes.addRegister("DeviceUserID", 16);
    nodes.addCommand("DeviceReset");
}

void WindowFixture::SetUp()
{
#ifdef __SANITIZE_THREAD__
    GTEST_SKIP() << "judged without the thread sanitizer";
#endif
}

void WindowFixture::TearDown()
{
    if (!window)
        return;
    EXPECT_TRUE(eventually([this] { return jobsAreOver(); }));
    window->hide();
}

RZ_CC_DEVICE_INFO* WindowFixture::addCamera(const SdkDouble::Camera& camera)
{
    sdk.listed.push_back(sdk.record(camera));
    return sdk.listed.back();
}

RZ_CC_DEVICE_INFO* WindowFixture::addHeldCamera(const SdkDouble::Camera& camera)
{
    m_held.push_back(addCamera(camera));
    return m_held.back();
}

void WindowFixture::open()
{
    window = s_windows.emplace_back(new MainWidget);
    window->SetExaminer([this] { return std::make_shared<const doctor::Diagnosis>(examine()); });
    window->SetSurveyor([this](auto&&...) { return std::make_shared<const inventory::Inventory>(survey()); });
    ASSERT_TRUE(showActive(*window));
    ASSERT_TRUE(eventually([this] { return jobsAreOver(); }));
}

void WindowFixture::refresh()
{
    const auto enumerations = enumerationCount();
    QTest::keyClick(window->windowHandle(), Qt::Key_F5);
    ASSERT_TRUE(eventually([&] { return enumerationCount() > enumerations && jobsAreOver(); }));
}

std::ptrdiff_t WindowFixture::enumerationCount() const
{
    const auto calls = sdk.calls();
    return std::count(calls.begin(), calls.end(), "EnumDevices(1)");
}

bool WindowFixture::jobsAreOver() const
{
    return button("Refresh")->isEnabled() && !window->IsLooking();
}

QAbstractButton* WindowFixture::button(const char* text) const
{
    const QString wanted = QCoreApplication::translate("MainWidget", text);
    for (auto* candidate : window->findChildren<QAbstractButton*>()) {
        if (candidate->text() == wanted)
            return candidate;
    }
    ADD_FAILURE() << "no button " << text;
    return nullptr;
}

QLineEdit* WindowFixture::field(const char* caption) const
{
    const QString wanted = QCoreApplication::translate("MainWidget", caption);
    for (const auto* label : window->findChildren<QLabel*>()) {
        if (label->text() == wanted && label->buddy())
            return qobject_cast<QLineEdit*>(label->buddy());
    }
    ADD_FAILURE() << "no field " << caption;
    return nullptr;
}

bool WindowFixture::isEnabled(const char* caption) const
{
    const QLineEdit* const edit = field(caption);
    for (const auto* label : window->findChildren<QLabel*>()) {
        if (label->buddy() == edit) {
            EXPECT_EQ(label->isEnabled(), edit->isEnabled()) << caption;
        }
    }
    return edit->isEnabled();
}

bool WindowFixture::isRed(const QLineEdit* field)
{
    return field->palette().color(QPalette::Text) == QColor(Qt::red);
}

QTableWidget* WindowFixture::table() const
{
    return window->findChild<QTableWidget*>();
}

QString WindowFixture::cell(int row, int column) const
{
    const QTableWidgetItem* const item = table()->item(row, column);
    return item ? item->text() : QString();
}

QString WindowFixture::panelTitle() const
{
    return window->findChild<QGroupBox*>()->title();
}

QStringList WindowFixture::panelTexts() const
{
    QStringList texts;
    for (const auto* label : window->findChild<QGroupBox*>()->findChildren<QLabel*>())
        texts << label->text();
    return texts;
}

QString WindowFixture::toolTipOf(QWidget& widget, const QPoint& place)
{
    QToolTip::hideText();
    EXPECT_TRUE(eventually([] { return !QToolTip::isVisible(); }));
    QHelpEvent event(QEvent::ToolTip, place, widget.mapToGlobal(place));
    QCoreApplication::sendEvent(&widget, &event);
    QTextDocument text;
    text.setHtml(QToolTip::text());
    return text.toPlainText();
}

QString WindowFixture::toolTipOfCell(int row, int column) const
{
    return toolTipOf(*table()->viewport(), table()->visualItemRect(table()->item(row, column)).center());
}

void WindowFixture::clickRow(int row) const
{
    QTest::mouseClick(table()->viewport(), Qt::LeftButton, Qt::NoModifier,
                      table()->visualItemRect(table()->item(row, 0)).center());
}

void WindowFixture::click(const char* buttonText) const
{
    QAbstractButton* const clicked = button(buttonText);
    ASSERT_NE(clicked, nullptr);
    QTest::mouseClick(clicked, Qt::LeftButton, Qt::NoModifier, QPoint(8, clicked->height() / 2));
}

void WindowFixture::type(const char* caption, const QString& text) const
{
    QLineEdit* const edit = field(caption);
    ASSERT_NE(edit, nullptr);
    QTest::mouseClick(edit, Qt::LeftButton);
    QTest::keyClick(edit, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(edit, Qt::Key_Delete);
    QTest::keyClicks(edit, text);
    ASSERT_EQ(edit->text(), text);
}

void WindowFixture::onNextModal(const std::function<void(QWidget&)>& act)
{
    auto* const watch = new QTimer(window);
    QObject::connect(watch, &QTimer::timeout, window, [watch, act] {
        QWidget* const modal = QApplication::activeModalWidget();
        if (!modal || !modal->isActiveWindow())
            return;
        watch->deleteLater();
        watch->stop();
        act(*modal);
    });
    watch->start(5);
}

void WindowFixture::confirmNextMessage()
{
    onNextModal([this](QWidget& modal) {
        ASSERT_NE(qobject_cast<QMessageBoxDlg*>(&modal), nullptr);
        QString text;
        for (const auto* label : modal.findChildren<QLabel*>()) {
            if (label->wordWrap())
                text = label->text();
        }
        messages.push_back({modal.windowTitle().trimmed(), text});
        QTest::keyClick(&modal, Qt::Key_Return);
    });
}

void WindowFixture::saveScreenshot(QWidget& window, const QString& name)
{
    const QDir folder(QCoreApplication::applicationDirPath() + QStringLiteral("/../screenshots"));
    ASSERT_TRUE(folder.mkpath(QStringLiteral(".")));
    QString display;
    if (window.devicePixelRatioF() != 1)
        display += QStringLiteral("@%1x").arg(window.devicePixelRatioF());
    if (!qEnvironmentVariableIsEmpty("DISPLAY_DPI"))
        display += QStringLiteral("-%1dpi").arg(qEnvironmentVariable("DISPLAY_DPI"));
    const QString file = folder.filePath(QStringLiteral("ui-%1%2.png").arg(name, display));
    QCoreApplication::processEvents(); // Layouts are brought up to date by events.
    ASSERT_TRUE(window.grab().save(file));
}
