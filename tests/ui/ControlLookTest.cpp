// SPDX-License-Identifier: Apache-2.0
#include "tests/support/WindowActions.h"
#include "tests/ui/WindowFixture.h"

#include <QApplication>
#include <QGroupBox>
#include <QHeaderView>
#include <QPainter>
#include <QScrollBar>
#include <QTest>

#include <gtest/gtest.h>

namespace {

/// A text that is one solid area of its colour.
const QString Blocks = QString(5, QChar(0x2588));

/// What is seen of single controls, judged by their pixels and by the fonts that they have in the end.
class ControlLookTest : public WindowFixture
{
protected:
    void openWithCameras(int count = 3)
    {
        for (int i = 0; i < count; ++i)
            addCamera({.mac = QString::asprintf("00:00:00:00:00:%02d", i).toStdString(),
                       .userName = Blocks.toStdString(),
                       .ipConfig = StaticIp});
        open();
        QCoreApplication::processEvents();
    }

    static QImage pictureOf(QWidget& widget) { return widget.grab().toImage(); }

    /// The smallest rectangle around all that is of exactly this colour.
    static QRect extent(const QImage& picture, const QColor& color)
    {
        QRect found;
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x) {
                if (picture.pixelColor(x, y) == color)
                    found |= QRect(x, y, 1, 1);
            }
        }
        return found;
    }

    /// What Blocks take up in a font of so many pixels.
    static QSize blocksOf(int pixels)
    {
        QFont font(QStringLiteral("FZShuSong-Z01S"));
        font.setPixelSize(pixels);
        QImage picture(200, 50, QImage::Format_RGB32);
        picture.fill(Qt::white);
        QPainter painter(&picture);
        painter.setFont(font);
        painter.drawText(picture.rect(), Qt::AlignLeft | Qt::AlignVCenter, Blocks);
        painter.end();
        return extent(picture, Qt::black).size();
    }

    static void expectFont(const QWidget& widget, int pixels)
    {
        EXPECT_EQ(widget.font().pixelSize(), pixels);
        EXPECT_EQ(widget.font().family(), "FZShuSong-Z01S");
    }

    static QColor textColor(const QWidget& widget)
    {
        return widget.palette().color(QPalette::Active, widget.foregroundRole());
    }

    QImage cellPicture(int row, int column) const
    {
        return pictureOf(*table()->viewport())
            .copy(table()->visualItemRect(table()->item(row, column)).adjusted(0, 3, 0, -3));
    }
};

} // namespace

TEST_F(ControlLookTest, FieldsHaveTheirFontAlsoAfterATextThatWasInvalid)
{
    openWithCameras();
    type("IP Address:", "192.0.2.");
    type("IP Address:", "192.0.2.9");
    for (const char* const caption : {"IP Address:", "Subnet Mask:", "Default Gateway:", "Device User ID:"}) {
        expectFont(*field(caption), 13);
        EXPECT_EQ(field(caption)->palette().color(QPalette::Active, QPalette::Text), QColor("#666666"));
    }
    const QImage name = pictureOf(*field("Device User ID:"));
    EXPECT_EQ(extent(name, QColor("#666666")).width(), blocksOf(13).width());
}

TEST_F(ControlLookTest, CaptionsRadioButtonsAndTheDetailsHaveTheirFontsAndColours)
{
    openWithCameras();
    for (const auto* const label : window->findChildren<QLabel*>()) {
        if (label->buddy()) {
            expectFont(*label, 13);
            EXPECT_EQ(textColor(*label), QColor("#666666"));
        }
    }
    for (const char* const text : {"Static IP", "DHCP", "LLA"}) {
        expectFont(*button(text), 13);
        EXPECT_EQ(textColor(*button(text)), QColor("#666666")) << text;
    }
    auto* const panel = window->findChild<QGroupBox*>();
    for (const auto* const label : panel->findChildren<QLabel*>()) {
        expectFont(*label, 13);
        EXPECT_TRUE(textColor(*label) == QColor("#666666") || textColor(*label) == QColor("#333333"));
    }
    expectFont(*panel, 13);
    panel->setTitle(Blocks);
    EXPECT_EQ(extent(pictureOf(*panel).copy(0, 0, panel->width(), 18), QColor("#333333")).width(),
              blocksOf(13).width());
}

TEST_F(ControlLookTest, TheTextsOfTheTableHaveTheirFontAndColours)
{
    openWithCameras();
    expectFont(*table(), 13);
    const QColor plain("#666666");
    const QColor selected("#2C88E5");
    for (QWidget* const focused : {static_cast<QWidget*>(table()), static_cast<QWidget*>(button("Save"))}) {
        focused->setFocus();
        EXPECT_EQ(extent(cellPicture(1, 1), plain).size(), blocksOf(13));
        EXPECT_EQ(extent(cellPicture(0, 1), selected).width(), blocksOf(13).width());
        EXPECT_TRUE(extent(cellPicture(0, 1), plain).isEmpty());
        EXPECT_FALSE(extent(cellPicture(0, 1), QColor("#d0e0f9")).isEmpty());
    }

    for (int column = 0; column < 8; ++column)
        table()->horizontalHeaderItem(column)->setText(Blocks);
    auto& header = *table()->horizontalHeader();
    const QImage titles = pictureOf(*header.viewport());
    // Without the white lines between the sections.
    const QRect title(header.sectionViewportPosition(3) + 1, 1, header.sectionSize(3) - 3, 32);
    EXPECT_EQ(extent(titles.copy(title), Qt::white).size(), blocksOf(13));
}

TEST_F(ControlLookTest, TheToolButtonsHaveAPictureAndAColourForEachState)
{
    openWithCameras();
    struct State
    {
        const char* picture;
        QColor text;
        std::function<void(QAbstractButton&)> enter;
    };
    const State states[] = {
        {"", QColor("#666666"), [](auto&) {}},
        {"_hov", QColor("#2C88E5"), [](auto& tool) { hover(tool, tool.rect().center()); }},
        {"_sel", QColor("#2C88E5"), [](auto& tool) { tool.setDown(true); }},
        {"_dis", QColor("#EDEDED"), [](auto& tool) { tool.setEnabled(false); }},
    };
    for (const auto& [text, name] : {std::pair("Modify IP", "forceip"), {"Refresh", "refresh"}}) {
        QAbstractButton& tool = *button(text);
        tool.setText(Blocks);
        for (const State& state : states) {
            state.enter(tool);
            const QImage seen = pictureOf(tool).convertToFormat(QImage::Format_RGB32);
            const QPixmap picture(QStringLiteral(":/Dorn/Resources/btn/%1%2.png").arg(name, state.picture));
            ASSERT_FALSE(picture.isNull());
            const QRect place(0, (tool.height() - picture.height()) / 2, picture.width(), picture.height());
            QImage expected(picture.size(), QImage::Format_RGB32);
            expected.fill(Qt::white);
            QPainter(&expected).drawPixmap(0, 0, picture);
            EXPECT_TRUE(seen.copy(place) == expected) << name << state.picture;
            EXPECT_EQ(
                extent(seen.copy(place.right() + 1, 0, tool.width(), tool.height()), state.text).width(),
                blocksOf(13).width())
                << name << state.picture;
            EXPECT_EQ(seen.pixelColor(tool.width() - 1, 0), QColor(Qt::white)) << "no border";
        }
        tool.setDown(false);
        tool.setEnabled(true);
        tool.setText(QLatin1String(text)); // By which it is found.
    }
}

TEST_F(ControlLookTest, TheScrollBarsShowTheirPictures)
{
    openWithCameras(40);
    window->resize(window->minimumSizeHint());
    ASSERT_TRUE(eventually([this] { return table()->horizontalScrollBar()->isVisible(); }));
    for (const auto& [bar, name] : {std::pair(table()->verticalScrollBar(), "scrollbar"),
                                    {table()->horizontalScrollBar(), "scrollbar2"}}) {
        const auto middleOf = [&](const char* state) {
            const QImage picture(QStringLiteral(":/Dorn/Resources/scrollbar/%1%2.png").arg(name, state));
            return picture.pixelColor(picture.rect().center());
        };
        const auto end = [bar = bar](bool last) {
            const QImage seen = pictureOf(*bar);
            const QPoint at = last ? bar->rect().bottomRight() : bar->rect().topLeft();
            const QPoint inward = last ? QPoint(-5, -5) : QPoint(5, 5);
            return seen.pixelColor(at + inward);
        };
        bar->setValue(bar->maximum());
        EXPECT_EQ(end(true), middleOf("_sel")) << name;
        EXPECT_EQ(end(false), middleOf("")) << name;
        hover(*bar, bar->rect().bottomRight() - QPoint(5, 5));
        EXPECT_EQ(end(true), middleOf("_hov")) << name;
    }
}
