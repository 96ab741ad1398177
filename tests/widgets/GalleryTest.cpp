// SPDX-License-Identifier: Apache-2.0
#include "resources/Fonts.h"
#include "tests/support/WindowActions.h"
#include "tests/widgets/ScriptedUname.h"
#include "tests/widgets/WindowProbe.h"
#include "widgets/QCheckBoxEx.h"
#include "widgets/QImageButton.h"
#include "widgets/QLineEditEx.h"
#include "widgets/QMainWindowEx.h"
#include "widgets/QMessageBoxDlg.h"
#include "widgets/QPushButtonEx.h"
#include "widgets/QPushButtonExColor.h"
#include "widgets/QRadioButtonEx.h"
#include "widgets/QScrollAreaEx.h"
#include "widgets/QStaticLabel.h"

#include <QApplication>
#include <QBoxLayout>
#include <QDir>
#include <QFontDatabase>
#include <QLabel>
#include <QPainter>
#include <QScreen>
#include <QScrollBar>

#include <gtest/gtest.h>

// Draws everything that the kit can look like into pictures for people to look at (GALLERY, a folder),
// dressed as the program dresses itself; and proves that states which mean different things do not look the
// same.

namespace {

struct State
{
    const char* name;
    std::function<void(QAbstractButton&)> enter;
};

const std::vector<State> ButtonStates = {
    {"normal", [](QAbstractButton&) {}},
    {"hover", [](QAbstractButton& button) { hover(button, button.rect().center()); }},
    {"pressed",
     [](QAbstractButton& button) {
         hover(button, button.rect().center());
         button.setDown(true);
     }},
    {"disabled", [](QAbstractButton& button) { button.setEnabled(false); }},
};

const std::vector<State> CheckStates = {
    {"off", [](QAbstractButton&) {}},
    {"off-hover", [](QAbstractButton& button) { hover(button, button.rect().center()); }},
    {"off-disabled", [](QAbstractButton& button) { button.setEnabled(false); }},
    {"on", [](QAbstractButton& button) { button.setChecked(true); }},
    {"on-hover",
     [](QAbstractButton& button) {
         button.setChecked(true);
         hover(button, button.rect().center());
     }},
    {"on-disabled",
     [](QAbstractButton& button) {
         button.setChecked(true);
         button.setEnabled(false);
     }},
};

class GalleryTest : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(QDir().mkpath(GALLERY));
        const int font = QFontDatabase::addApplicationFont(FONT_FILE);
        ASSERT_NE(font, -1);
        QFont applicationFont(QFontDatabase::applicationFontFamilies(font).constFirst());
        applicationFont.setPointSize(13);
        QApplication::setFont(applicationFont);
        InstallFontSubstitutes();
    }

    static void save(const QImage& picture, const QString& name)
    {
        const QString scale = QGuiApplication::primaryScreen()->devicePixelRatio() > 1 ? "@2x" : "";
        EXPECT_TRUE(picture.save(QDir(GALLERY).filePath(name + scale + ".png")));
    }

    /// Draws a new button for each state on a ground of this colour, in one row.
    static void saveStates(const QString& name, const std::vector<State>& states, const QColor& ground,
                           const std::function<QAbstractButton*()>& create)
    {
        std::vector<QImage> seen;
        std::vector<std::string> names;
        for (const auto& [stateName, enter] : states) {
            QWidget window;
            QPalette palette;
            palette.setColor(QPalette::Window, ground);
            window.setPalette(palette);
            auto* const layout = new QHBoxLayout(&window);
            QAbstractButton* const button = create();
            layout->addWidget(button);
            window.grab(); // Lays out what is not shown.
            enter(*button);
            QImage picture = window.grab().toImage();
            picture.setDevicePixelRatio(1); // What follows counts pixels.
            for (size_t other = 0; other < seen.size(); ++other)
                EXPECT_NE(picture, seen[other]) << stateName << " looks like " << names[other];
            seen.push_back(picture);
            names.emplace_back(stateName);
        }
        QImage row(seen[0].width() * static_cast<int>(seen.size()), seen[0].height(), seen[0].format());
        QPainter painter(&row);
        for (size_t index = 0; index < seen.size(); ++index)
            painter.drawImage(static_cast<int>(index) * seen[0].width(), 0, seen[index]);
        painter.end();
        save(row, name);
    }

    static const QColor White;
    static const QColor DialogGrey;
    static const QColor TitleBlue;
};

const QColor GalleryTest::White = Qt::white;
const QColor GalleryTest::DialogGrey = QColor(244, 244, 244);
const QColor GalleryTest::TitleBlue = QColor(62, 134, 227);

struct Frame
{
    const char* system;
    ScriptedUname (*uname)();
};

void PrintTo(const Frame& frame, std::ostream* stream)
{
    *stream << frame.system;
}

class FrameGalleryTest : public GalleryTest, public testing::WithParamInterface<Frame>
{
protected:
    QString named(const QString& what) const { return what + '-' + GetParam().system; }

    ScriptedUname m_uname = GetParam().uname();
};

INSTANTIATE_TEST_SUITE_P(Systems, FrameGalleryTest,
                         testing::Values(Frame{"ubuntu", &ScriptedUname::ubuntu},
                                         Frame{"other", &ScriptedUname::other}),
                         [](const testing::TestParamInfo<Frame>& row) {
                             return std::string(row.param.system);
                         });

QVBoxLayout* someContent()
{
    auto* const layout = new QVBoxLayout;
    layout->addWidget(new QStaticLabel(QStringLiteral("IP Address:")));
    layout->addWidget(new QLineEditEx(nullptr));
    layout->addWidget(new QRadioButtonEx(QStringLiteral("Static IP")));
    layout->addWidget(new QPushButtonExColor(QStringLiteral("Save")));
    return layout;
}

} // namespace

TEST_F(GalleryTest, PushButtons)
{
    for (const auto& [name, ground] : {std::pair{"push-button-dialog", DialogGrey}, {"push-button", White}}) {
        saveStates(name, ButtonStates, ground, [] {
            auto* const button = new QPushButtonEx(QStringLiteral("Cancel"));
            button->setFixedSize(90, 30);
            return button;
        });
    }
    saveStates("push-button-coloured", ButtonStates, White, [] {
        auto* const button = new QPushButtonExColor(QStringLiteral("Save"));
        button->setFixedSize(90, 30);
        return button;
    });
}

TEST_F(GalleryTest, TitleButtons)
{
    for (const char* const picture : {"title_close", "min", "recovery"}) {
        saveStates(QStringLiteral("title-button-") + picture, ButtonStates, TitleBlue, [picture] {
            const QString path = QStringLiteral(":/Dorn/Resources/dialog/%1%2.png").arg(picture);
            auto* const button = new QImageButton(false);
            button->setFixedSize(30, 30);
            button->SetBtnImage(path.arg(QString()), path.arg("_hov"), path.arg("_sel"), path.arg("_dis"));
            return button;
        });
    }
}

TEST_F(GalleryTest, ATitleButtonIsShownInAllOfItsPixels)
{
    const int ratio = static_cast<int>(QGuiApplication::primaryScreen()->devicePixelRatio());
    for (const char* const picture : {"title_close", "min", "recovery"}) {
        const QString path = QStringLiteral(":/Dorn/Resources/dialog/%1%2.png").arg(picture);
        QImageButton button(false);
        button.setFixedSize(30, 30);
        button.SetBtnImage(path.arg(QString()), {}, {}, {});
        // Of the edge, which style sheets stretch, the sign has nothing.
        const QRect middle(QPoint(5, 5) * ratio, QSize(20, 20) * ratio);
        QImage drawn(path.arg(ratio > 1 ? "@2x" : ""));
        drawn = drawn.copy(QRect(QPoint(5, 5), middle.size()));
        drawn.setDevicePixelRatio(1); // What follows counts pixels.
        QImage expected(middle.size(), QImage::Format_RGB32);
        expected.fill(TitleBlue);
        QPainter(&expected).drawImage(0, 0, drawn);
        QImage seen(QSize(30, 30) * ratio, QImage::Format_RGB32);
        seen.setDevicePixelRatio(ratio);
        seen.fill(TitleBlue);
        button.render(&seen, QPoint(), QRegion(), QWidget::DrawChildren);
        seen.setDevicePixelRatio(1);
        EXPECT_EQ(seen.copy(middle), expected) << picture;
    }
}

TEST_F(GalleryTest, ColourButtons)
{
    saveStates("colour-button", ButtonStates, White, [] {
        auto* const button = new QImageButton("#3e86e3", "#4c9ce8", "#2979c5", true);
        button->SetBtnImage("#3e86e3", "#4c9ce8", "#2979c5", "#cccccc");
        button->setText("Live");
        return button;
    });
}

TEST_F(GalleryTest, CheckBoxes)
{
    saveStates("check-box", CheckStates, White, [] { return new QCheckBoxEx(QStringLiteral("Option")); });
}

TEST_F(GalleryTest, RadioButtons)
{
    saveStates("radio-button", CheckStates, White, [] {
        auto* const button = new QRadioButtonEx(QStringLiteral("Static IP"));
        button->setAutoExclusive(false);
        return button;
    });
}

TEST_F(GalleryTest, LineEdits)
{
    QWidget window;
    QPalette palette;
    palette.setColor(QPalette::Window, White);
    window.setPalette(palette);
    auto* const layout = new QVBoxLayout(&window);
    std::vector<QLineEditEx*> edits;
    for (const char* const text : {"normal", "hover and focus", "disabled"}) {
        edits.push_back(new QLineEditEx(&window));
        edits.back()->setText(text);
        edits.back()->setFixedHeight(20);
        layout->addWidget(edits.back());
    }
    layout->addWidget(new QLineEditEx(QStringLiteral("of no fixed height, made from a text")));
    window.resize(300, 10);
    ASSERT_TRUE(showActive(window));
    edits[1]->setFocus();
    hover(*edits[1], edits[1]->rect().center());
    edits[2]->setEnabled(false);
    save(window.grab().toImage(), "line-edit");
    for (const auto& [one, other] : {std::pair{0, 1}, {0, 2}, {1, 2}}) {
        for (QLineEditEx* const edit : edits)
            edit->setText(QString());
        EXPECT_NE(edits[static_cast<size_t>(one)]->grab().toImage(),
                  edits[static_cast<size_t>(other)]->grab().toImage());
    }
}

TEST_F(GalleryTest, ScrollArea)
{
    QScrollAreaEx area;
    auto* const content = new QLabel(QStringLiteral("Content"));
    content->setFixedSize(500, 500);
    area.setWidget(content);
    area.resize(240, 160);
    area.verticalScrollBar()->setValue(100);
    save(area.grab().toImage(), "scroll-area");
}

TEST_P(FrameGalleryTest, Dialogs)
{
    for (const int style : {0, 1, 2}) {
        QDialogEx dialog(style, nullptr);
        QString title = QStringLiteral("Dialog with bottom style %1").arg(style);
        dialog.SetTitleText(title);
        dialog.SetLayoutEx(someContent());
        dialog.resize(360, 260);
        ASSERT_TRUE(showActive(dialog));
        save(dialog.grab().toImage(), named(QStringLiteral("dialog-%1-active").arg(style)));
        dialog.SetDeactivateDilog();
        save(dialog.grab().toImage(), named(QStringLiteral("dialog-%1-inactive").arg(style)));
    }
}

TEST_P(FrameGalleryTest, MainWindows)
{
    for (const bool showMinButton : {true, false}) {
        QMainWindowEx window(nullptr, showMinButton);
        QString title = QStringLiteral("IP Configurator");
        window.SetTitleText(title);
        window.SetLayoutEx(someContent());
        window.resize(480, 320);
        save(window.grab().toImage(), named(showMinButton ? "main-window" : "main-window-without-minimise"));
    }
}

TEST_P(FrameGalleryTest, MessageBoxes)
{
    const QString longText = QStringLiteral(
        "Writing DeviceUserID failed: the camera at 192.168.100.200 has not acknowledged the write of 16 "
        "bytes at 0xe8 in four attempts of 500 ms each. Is it still connected, and does a firewall let "
        "UDP port 3956 through?");
    const std::vector<std::tuple<QString, QString, bool>> boxes = {
        {"message-one-button", "Modified. The device will reboot automatically.", false},
        {"message-two-buttons", "Set the address although another device answers there?", true},
        {"message-long", longText, false},
        {"message-chinese", QString::fromUtf8("IP地址已被其他设备使用。"), false},
        {"message-long-word", QString(100, 'W'), false},
    };
    for (const auto& [name, text, showCancel] : boxes) {
        QMessageBoxDlg box(nullptr, "Information", text, showCancel);
        ASSERT_TRUE(showActive(box));
        save(box.grab().toImage(), named(name));
    }
}
