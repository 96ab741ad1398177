// SPDX-License-Identifier: Apache-2.0
#include "tests/support/WindowActions.h"
#include "tests/ui/WindowFixture.h"
#include "ui/Placement.h"
#include "ui/QDetailPanel.h"
#include "ui/QSetIpAddrDlg.h"
#include "widgets/QMessageBoxDlg.h"

#include <QApplication>
#include <QDesktopWidget>
#include <QFontDatabase>
#include <QHeaderView>
#include <QHelpEvent>
#include <QPainter>
#include <QProcess>
#include <QPushButton>
#include <QScreen>
#include <QSizeGrip>
#include <QToolTip>
#include <QWindow>

namespace {

/// What desktops differ in: their colours, fonts, resolutions and screens.
class DesktopTest : public WindowFixture
{
protected:
    void TearDown() override
    {
        WindowFixture::TearDown();
        QToolTip::hideText();
        QApplication::setPalette(m_palette);
        QApplication::setFont(m_font);
    }

    void openWithCameras()
    {
        addCamera({.ip = "192.0.2.20", .gateway = "192.0.2.254", .model = "RZ-1300GM", .ipConfig = StaticIp});
        addHeldCamera({.mac = "00:1A:2B:00:00:03", .ip = "192.0.2.32", .ipConfig = StaticIp});
        addCamera({.mac = "00:1A:2B:00:00:05", .ip = "169.254.3.8", .ipConfig = Lla});
        open();
        QCoreApplication::processEvents();
    }

    static void useDarkPalette()
    {
        QPalette palette(QColor(40, 42, 46), QColor(30, 32, 36));
        for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText,
                                QPalette::ToolTipText, QPalette::BrightText}) {
            palette.setColor(role, QColor(238, 238, 238));
            palette.setColor(QPalette::Disabled, role, QColor(120, 120, 120));
        }
        palette.setColor(QPalette::Base, QColor(20, 22, 24));
        palette.setColor(QPalette::AlternateBase, QColor(50, 52, 54));
        palette.setColor(QPalette::ToolTipBase, QColor(10, 10, 10));
        QApplication::setPalette(palette);
    }

    /// The window as it looks now, without the grip to size it by, which is the desktop's.
    static QImage pictureOf(QWidget& window)
    {
        QCoreApplication::processEvents();
        QImage picture = window.grab().toImage();
        QPainter painter(&picture);
        for (const auto* const grip : window.findChildren<QSizeGrip*>())
            painter.fillRect(QRect(grip->mapTo(&window, QPoint()), grip->size()), Qt::white);
        return picture;
    }

    static bool isToolTip(const QWidget* widget)
    {
        return widget->inherits("QTipLabel") && widget->isVisible();
    }

private:
    const QPalette m_palette = QApplication::palette();
    const QFont m_font = QApplication::font();
};

/// Sees where windows are when they open, before the window manager has its say: some have none stand on two
/// screens.
class OpeningPlaces : public QObject
{
public:
    OpeningPlaces() { QCoreApplication::instance()->installEventFilter(this); }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        const auto* const dialog = qobject_cast<QDialog*>(watched);
        if (dialog && event->type() == QEvent::Show)
            seen.push_back(dialog->geometry());
        return false;
    }

    QVector<QRect> seen;
};

/// Where the first pixel of the wanted kind is from the left, in the window.
int firstX(const QWidget& window, const QRect& area, const std::function<bool(const QColor&)>& isWanted)
{
    const QImage picture = const_cast<QWidget&>(window).grab(area).toImage();
    const qreal ratio = picture.devicePixelRatio();
    for (int x = 0; x < picture.width(); ++x) {
        for (int y = 0; y < picture.height(); ++y) {
            if (isWanted(picture.pixelColor(x, y)))
                return area.x() + static_cast<int>(x / ratio);
        }
    }
    return -1;
}

} // namespace

TEST_F(DesktopTest, ItsWindowsLookTheSameInADarkPalette)
{
    openWithCameras();
    QMessageBoxDlg box(window, "Information", "Modified. The device will reboot automatically.", true);
    ASSERT_TRUE(showActive(box));
    QSetIpAddrDlg dialog(window);
    dialog.SetCurDevice(QDevice());
    ASSERT_TRUE(showActive(dialog));
    ASSERT_TRUE(eventually([&] { return dialog.focusWidget() != nullptr; }));
    dialog.focusWidget()->clearFocus(); // Its cursor comes and goes.
    const auto pictures = [&] {
        return std::vector<QImage>{pictureOf(*window), pictureOf(box), pictureOf(dialog)};
    };
    const std::vector<QImage> bright = pictures();
    useDarkPalette();
    const std::vector<QImage> dark = pictures();
    for (size_t i = 0; i < bright.size(); ++i)
        EXPECT_EQ(dark[i], bright[i]) << i;
}

TEST_F(DesktopTest, ATypedTextIsSeenInADarkPalette)
{
    useDarkPalette();
    openWithCameras();
    type("Device User ID:", "Left");
    table()->setFocus();
    const QImage picture = pictureOf(*field("Device User ID:"));
    QApplication::setPalette(QPalette(Qt::white));
    EXPECT_EQ(pictureOf(*field("Device User ID:")), picture);
}

TEST_F(DesktopTest, OnlyATextThatIsCutHasAToolTip)
{
    addCamera({.model = "A model with too long a name",
               .serial = "1234",
               .userName = "Left",
               .ipConfig = StaticIp});
    addCamera(
        {.mac = "00:1A:2B:00:00:02", .ip = "192.0.2.21", .model = "RZ-1300GM", .serial = "0123456789ABCDE"});
    open();
    EXPECT_EQ(toolTipOfCell(0, 0), "A model with too long a name");
    EXPECT_EQ(toolTipOfCell(1, 2), "0123456789ABCDE");
    for (int column = 0; column < 8; ++column) {
        EXPECT_EQ(toolTipOfCell(1, column == 2 ? 0 : column), "") << column;
        if (column != 0) {
            EXPECT_EQ(toolTipOfCell(0, column), "") << column;
        }
    }
    table()->setColumnWidth(0, 400);
    EXPECT_EQ(toolTipOfCell(0, 0), "");
    table()->setColumnWidth(6, 40);
    EXPECT_EQ(toolTipOfCell(0, 6), table()->item(0, 6)->text());
}

TEST_F(DesktopTest, AToolTipShowsTheTextOfACameraAsItIs)
{
    const char* const texts[] = {"<b>WW</b><img src='/etc/motd'>", "100 % of A&B && C, %1 and %2"};
    for (const char* const text : texts) {
        sdk.listed.clear();
        addCamera({.model = text, .ipConfig = StaticIp});
        window ? refresh() : open();
        EXPECT_EQ(toolTipOfCell(0, 0), text);
    }
}

TEST_F(DesktopTest, AToolTipHasTheTextsSizeAndIsReadInADarkPalette)
{
    QApplication::setFont(QFont(QApplication::font().family(), 30));
    useDarkPalette();
    addCamera({.model = QString(31, 'M').toStdString(), .ipConfig = StaticIp});
    open();
    window->resize(window->minimumSizeHint());
    QCoreApplication::processEvents();
    QWidget* value = nullptr;
    for (auto* const label : window->findChild<QDetailPanel*>()->findChildren<QLabel*>()) {
        if (label->text().startsWith("MMM"))
            value = label;
    }
    ASSERT_NE(value, nullptr);
    for (const bool inTable : {true, false}) {
        EXPECT_EQ(inTable ? toolTipOfCell(0, 0) : toolTipOf(*value, value->rect().center()),
                  QString(31, 'M'));
        const QWidgetList windows = QApplication::topLevelWidgets();
        const auto tip = std::find_if(windows.begin(), windows.end(), &DesktopTest::isToolTip);
        ASSERT_NE(tip, windows.end());
        EXPECT_EQ((*tip)->fontInfo().pixelSize(), 13) << inTable;
        const QImage picture = (*tip)->grab().toImage();
        EXPECT_EQ(picture.pixelColor(3, 3), QColor(Qt::white)) << inTable;
        int darkest = 255;
        for (int x = 3; x < picture.width() - 3; ++x)
            darkest = std::min(darkest, picture.pixelColor(x, picture.height() / 2).lightness());
        EXPECT_LT(darkest, 100) << inTable;
    }
}

TEST_F(DesktopTest, RowsAre37PixelsHighInALargeFontToo)
{
    QApplication::setFont(QFont(QApplication::font().family(), 40));
    openWithCameras();
    for (int row = 0; row < table()->rowCount(); ++row)
        EXPECT_EQ(table()->rowHeight(row), 37);
    EXPECT_EQ(table()->horizontalHeader()->height(), 34);
}

TEST_F(DesktopTest, ABoxesTitleFitsIntoItsStripInALargeFontToo)
{
    for (const int points : {13, 40}) {
        QApplication::setFont(QFont(QApplication::font().family(), points));
        const QMessageBoxDlg box(nullptr, "Information", "Modified.", false);
        for (const auto* const label : box.findChildren<QLabel*>()) {
            if (label->text() == " Information") {
                EXPECT_LE(label->fontMetrics().height(), 30) << points;
            }
        }
    }
}

TEST_F(DesktopTest, TextsInTheTableToolsAndFieldsBeginAtOneLine)
{
    openWithCameras();
    table()->clearSelection();
    const auto isInk = [](const QColor& color) { return color.lightness() < 200; };
    const auto left = [&](const QWidget& widget, const QRect& rect) {
        return firstX(*window, QRect(widget.mapTo(window, rect.topLeft()), rect.size()), isInk);
    };
    const QRect firstCell = table()->visualItemRect(table()->item(0, 0)).adjusted(0, 6, 0, -6);
    const int text = left(*table()->viewport(), firstCell);
    EXPECT_NEAR(left(*button("Modify IP"), button("Modify IP")->rect()), text, 1);
    EXPECT_NEAR(left(*button("Static IP"), button("Static IP")->rect()), text, 1);
    EXPECT_NEAR(left(*button("DHCP"), button("DHCP")->rect()), text, 1);
}

TEST_F(DesktopTest, CancelIsDrawnAsLargeAsOk)
{
    QSetIpAddrDlg dialog(nullptr);
    dialog.SetCurDevice(QDevice());
    ASSERT_TRUE(showActive(dialog));
    for (const auto* const button : dialog.findChildren<QPushButton*>()) {
        if (button->text().isEmpty())
            continue;
        const auto isDrawn = [](const QColor& color) { return color != QColor(Qt::white); };
        const QRect place(button->mapTo(&dialog, QPoint()), button->size());
        EXPECT_EQ(firstX(dialog, place, isDrawn), place.x()) << button->text().toStdString();
        const QImage picture = dialog.grab(place).toImage();
        const QPoint end(picture.width() - 1, picture.height() - 1);
        EXPECT_NE(picture.pixelColor(end.x(), end.y() / 2), QColor(Qt::white))
            << button->text().toStdString();
        EXPECT_NE(picture.pixelColor(end.x() / 2, end.y()), QColor(Qt::white))
            << button->text().toStdString();
        EXPECT_NE(picture.pixelColor(end.x() / 2, 0), QColor(Qt::white)) << button->text().toStdString();
    }
}

TEST_F(DesktopTest, AStatusPictureIsShownInAllOfItsPixels)
{
    openWithCameras();
    const qreal ratio = window->devicePixelRatioF();
    QImage drawn(ratio > 1 ? ":/Dorn/Resources/notreach@2x.png" : ":/Dorn/Resources/notreach.png");
    drawn.setDevicePixelRatio(1); // What follows counts pixels.
    if (ratio != 1 && ratio != 2)
        GTEST_SKIP() << "no picture is for a scale of " << ratio;
    const QRect cell = table()->visualItemRect(table()->item(2, 4));
    const QImage picture = table()->viewport()->grab(cell).toImage();
    QImage expected(drawn.size(), QImage::Format_RGB32);
    expected.fill(Qt::white);
    QPainter(&expected).drawImage(0, 0, drawn);
    int found = 0;
    for (int x = 0; x + drawn.width() < picture.width(); ++x) {
        for (int y = 0; y + drawn.height() < picture.height(); ++y)
            found +=
                picture.copy(x, y, drawn.width(), drawn.height()).convertToFormat(QImage::Format_RGB32) ==
                expected;
    }
    EXPECT_EQ(found, 1);
}

TEST_F(DesktopTest, DialogAndBoxesOpenInTheMiddleOfTheDesktopWhichAllScreensAre)
{
    const int screens = std::max(1, qEnvironmentVariableIntValue("DISPLAY_SCREENS"));
    ASSERT_EQ(QGuiApplication::screens().size(), screens);
    openWithCameras();
    window->move(0, 0); // On the first screen.
    const QSize desktop = QApplication::desktop()->size();
    ASSERT_EQ(desktop.width(), screens * QGuiApplication::primaryScreen()->size().width());
    const OpeningPlaces places;
    const auto close = [](QWidget& opened) { opened.close(); };
    onNextModal(close);
    window->OnShowMsg("Information", "Modified.");
    onNextModal(close);
    click("Modify IP");
    EXPECT_EQ(places.seen.size(), 2);
    for (const QRect& place : places.seen)
        EXPECT_EQ(place.topLeft(),
                  QPoint((desktop.width() - place.width()) / 2, (desktop.height() - place.height()) / 2));
}

TEST_F(DesktopTest, HalvesWhatAWindowLeavesOfTheDesktop)
{
    const QSize desktop = QApplication::desktop()->size();
    const QSize sizes[] = {{890, 650}, {891, 651}, desktop, desktop + QSize(3, 7)};
    for (const QSize& size : sizes) {
        QWidget opened;
        opened.resize(size);
        MoveToDesktopCentre(opened);
        EXPECT_EQ(opened.x(), (desktop.width() - size.width()) / 2);
        EXPECT_EQ(opened.y(), (desktop.height() - size.height()) / 2);
    }
    QWidget wide;
    wide.resize(desktop + QSize(3, 7));
    MoveToDesktopCentre(wide);
    EXPECT_EQ(wide.pos(), QPoint(-1, -3));
}

TEST_F(DesktopTest, CountsWhatAPanelCoversAsDesktop)
{
    const QDesktopWidget& desktop = *QApplication::desktop();
    QWidget panel;
    panel.setAttribute(Qt::WA_X11NetWmWindowTypeDock);
    panel.setGeometry(0, 0, 200, desktop.height());
    panel.show();
    ASSERT_EQ(QProcess::execute("xprop", {"-id", QString::number(panel.winId()), "-f", "_NET_WM_STRUT", "32c",
                                          "-set", "_NET_WM_STRUT", "200, 0, 0, 0"}),
              0);
    const QScreen& screen = *QApplication::primaryScreen();
    ASSERT_TRUE(eventually([&screen] { return screen.availableGeometry() != screen.geometry(); }));

    QWidget opened;
    opened.resize(890, 650);
    MoveToDesktopCentre(opened);
    EXPECT_EQ(opened.pos(), QPoint((desktop.width() - 890) / 2, (desktop.height() - 650) / 2));
}

TEST_F(DesktopTest, TheDialogIsTheWindowsForTheWindowManager)
{
    openWithCameras();
    onNextModal([this](QWidget& dialog) {
        EXPECT_EQ(dialog.windowHandle()->transientParent(), window->windowHandle());
        EXPECT_EQ(dialog.windowFlags() & ~Qt::WindowType_Mask, Qt::FramelessWindowHint);
        dialog.close();
    });
    click("Modify IP");
}

TEST_F(DesktopTest, NothingIsLeftInTheFieldsWhenTheLastCameraIsGone)
{
    openWithCameras();
    ASSERT_EQ(field("IP Address:")->text(), "192.0.2.20");
    sdk.listed.clear();
    refresh();
    for (const char* caption : {"IP Address:", "Subnet Mask:", "Default Gateway:", "Device User ID:"}) {
        EXPECT_EQ(field(caption)->text(), "") << caption;
        EXPECT_FALSE(isEnabled(caption)) << caption;
    }
    EXPECT_FALSE(button("Save")->isEnabled());
}
