// SPDX-License-Identifier: Apache-2.0
#include "tests/support/WindowActions.h"
#include "tests/ui/Chinese.h"
#include "tests/ui/WindowFixture.h"

#include <QApplication>
#include <QGroupBox>
#include <QHeaderView>
#include <QScreen>
#include <QScrollBar>
#include <QTest>

#include <gmock/gmock.h>

#include <optional>

using testing::Each;

namespace {

const char* const Captions[] = {"IP Address:", "Subnet Mask:", "Default Gateway:", "Device User ID:"};

/// What is seen of the window: sizes, colours, the place of the keyboard.
class WindowLookTest : public WindowFixture
{
protected:
    void openWithCameras(int count = 1)
    {
        for (int i = 0; i < count; ++i)
            addCamera(
                {.mac = QString::asprintf("00:00:00:00:00:%02d", i).toStdString(), .ipConfig = StaticIp});
        open();
        QCoreApplication::processEvents();
    }

    /// Labels and buttons that have less room than their text needs, and titles of columns.
    QStringList cutTexts() const
    {
        QStringList cut;
        for (const auto* label : window->findChildren<QLabel*>()) {
            if (label->isVisible() && !label->text().isEmpty() && !label->wordWrap() &&
                label->width() < label->sizeHint().width())
                cut << label->text();
        }
        for (const auto* button : window->findChildren<QAbstractButton*>()) {
            if (button->isVisible() && !button->text().isEmpty() &&
                button->width() < button->sizeHint().width())
                cut << button->text();
        }
        const auto* header = table()->horizontalHeader();
        QFont font(QStringLiteral("FZShuSong-Z01S"));
        font.setPixelSize(13);
        for (int i = 0; i < header->count(); ++i) {
            const QString title = table()->horizontalHeaderItem(i)->text();
            if (QFontMetrics(font).horizontalAdvance(title) + 4 > header->sectionSize(i))
                cut << title;
        }
        return cut;
    }

    static QImage pictureOf(QWidget& widget) { return widget.grab().toImage(); }
};

} // namespace

TEST_F(WindowLookTest, ItIsAFramelessWindowOf890By650Pixels)
{
    open();
    EXPECT_EQ(window->windowTitle(), "IP Configurator");
    EXPECT_EQ(window->size(), QSize(890, 650));
    EXPECT_EQ(window->windowFlags() & ~Qt::WindowType_Mask, Qt::FramelessWindowHint);
}

TEST_F(WindowLookTest, ItsTitleHasButtonsToMinimiseAndToCloseIt)
{
    open();
    QStringList names;
    for (const auto* const button : window->findChildren<QAbstractButton*>()) {
        if (button->isVisible() && button->text().isEmpty() && !button->accessibleName().isEmpty())
            names << button->accessibleName();
    }
    names.sort();
    EXPECT_EQ(names, (QStringList{"Close", "Minimize"}));
}

TEST_F(WindowLookTest, ControlsHaveTheirSizes)
{
    openWithCameras();
    EXPECT_EQ(button("Save")->size(), QSize(90, 30));
    EXPECT_EQ(button("Modify IP")->size(), QSize(120, 26));
    EXPECT_EQ(button("Refresh")->size(), QSize(90, 26));
    for (const char* caption : Captions)
        EXPECT_EQ(field(caption)->height(), 20) << caption;
}

TEST_F(WindowLookTest, TheTableHasItsColours)
{
    openWithCameras(3);
    const QImage rows = pictureOf(*table()->viewport());
    const auto ground = [&](int row) {
        return rows.pixelColor(rows.width() - 3, table()->visualItemRect(table()->item(row, 7)).center().y());
    };
    EXPECT_EQ(ground(0), QColor("#d0e0f9")) << "selected";
    EXPECT_EQ(ground(1), QColor("#f7f7f7"));
    EXPECT_EQ(ground(2), QColor("white"));

    auto& header = *table()->horizontalHeader();
    const QImage titles = pictureOf(header);
    const int right = header.sectionViewportPosition(1) + header.sectionSize(1) - 1;
    EXPECT_EQ(titles.pixelColor(right - 3, 17), QColor("#879aad"));
    EXPECT_EQ(titles.pixelColor(right, 17), QColor("white"));
    EXPECT_EQ(titles.pixelColor(right + 1, 17), QColor("white"));
    EXPECT_EQ(titles.pixelColor(right - 3, 0), QColor("#879aad"));
    EXPECT_EQ(titles.pixelColor(right - 3, 33), QColor("#879aad"));
}

TEST_F(WindowLookTest, ScrollBarsAreTenPixelsThick)
{
    openWithCameras(30);
    window->resize(window->minimumSizeHint());
    ASSERT_TRUE(eventually([this] { return table()->horizontalScrollBar()->isVisible(); }));
    EXPECT_EQ(table()->verticalScrollBar()->width(), 10);
    EXPECT_EQ(table()->horizontalScrollBar()->height(), 10);
}

TEST_F(WindowLookTest, NothingIsCutOffInEitherLanguageAtItsFirstSizeOrItsSmallest)
{
    openWithCameras();
    std::optional<Chinese> language;
    for (const bool chinese : {false, true}) {
        if (chinese)
            language.emplace();
        for (const QSize& size : {QSize(890, 650), QSize(1, 1)}) {
            window->resize(size);
            QCoreApplication::processEvents();
            EXPECT_EQ(cutTexts(), QStringList()) << chinese << ", " << window->width();
        }
    }
}

TEST_F(WindowLookTest, AtItsSmallestItStillShowsThreeCamerasAndTheAddressesOfOne)
{
    openWithCameras(10);
    window->resize(1, 1);
    QCoreApplication::processEvents();
    for (int row = 0; row < 3; ++row)
        EXPECT_TRUE(table()->viewport()->rect().contains(table()->visualItemRect(table()->item(row, 0))))
            << row;
    const auto* panel = window->findChild<QGroupBox*>();
    EXPECT_TRUE(window->rect().contains(QRect(panel->mapTo(window, QPoint()), panel->size())));
    for (const auto* label : panel->findChildren<QLabel*>())
        EXPECT_GE(label->width(), label->fontMetrics().horizontalAdvance(label->text()))
            << label->text().toStdString();
}

TEST_F(WindowLookTest, CaptionsAndFieldsStandInLine)
{
    openWithCameras();
    std::vector<int> captionsX;
    for (const char* caption : {"IP Address:", "Subnet Mask:", "Default Gateway:"}) {
        EXPECT_EQ(field(caption)->x(), field("Device User ID:")->x()) << caption;
        for (const auto* label : window->findChildren<QLabel*>()) {
            if (label->buddy() == field(caption)) {
                captionsX.push_back(label->x());
                EXPECT_LE(std::abs(label->geometry().center().y() - field(caption)->geometry().center().y()),
                          1);
            }
        }
    }
    EXPECT_THAT(captionsX, Each(captionsX.front()));
}

TEST_F(WindowLookTest, AtFirstTheKeyboardIsWithTheTable)
{
    openWithCameras();
    EXPECT_TRUE(table()->hasFocus());
}

TEST_F(WindowLookTest, WhateverHasTheKeyboardLooksDifferentFromBefore)
{
    openWithCameras();
    std::vector<QWidget*> controls = {table()};
    for (const char* text : {"Modify IP", "Refresh", "Static IP", "DHCP", "LLA", "Save"})
        controls.push_back(button(text));
    for (const char* caption : Captions)
        controls.push_back(field(caption));
    for (size_t i = 0; i < controls.size(); ++i) {
        controls[(i + 1) % controls.size()]->setFocus();
        const QImage without = pictureOf(*controls[i]);
        controls[i]->setFocus();
        // A field's text cursor does not count: it comes and goes, and may stand at the edge.
        if (auto* const edit = qobject_cast<QLineEdit*>(controls[i]))
            edit->setReadOnly(true);
        EXPECT_NE(pictureOf(*controls[i]), without) << i;
    }
}

TEST_F(WindowLookTest, ATextOfSeveralLinesLooksLikeOneLine)
{
    openWithCameras();
    sdk.listed.clear();
    addCamera({.model = "three\nshort\tlines", .serial = "1\r2", .userName = "a\nb"});
    refresh();
    const QImage several = pictureOf(*window);
    sdk.listed.clear();
    addCamera({.model = "three short lines", .serial = "1 2", .userName = "a b"});
    refresh();
    EXPECT_EQ(several, pictureOf(*window));
}

TEST_F(WindowLookTest, AMessageComesInTheMiddleOfTheScreenAndShowsItsTextsAsTheyAre)
{
    open();
    onNextModal([](QWidget& box) {
        EXPECT_EQ(box.windowModality(), Qt::WindowModal);
        const QSize screen = QGuiApplication::primaryScreen()->size();
        EXPECT_EQ(box.pos(), QPoint((screen.width() - 400) / 2, (screen.height() - 200) / 2));
        EXPECT_EQ(box.windowTitle().trimmed(), "<b>Title</b>");
        QStringList texts;
        for (const auto* label : box.findChildren<QLabel*>()) {
            if (label->text().isEmpty())
                continue;
            EXPECT_EQ(label->textFormat(), Qt::PlainText) << label->text().toStdString();
            texts << label->text().trimmed();
        }
        EXPECT_TRUE(texts.contains("<i>text</i>"));
        box.close();
    });
    window->OnShowMsg("<b>Title</b>", "<i>text</i>");
}
