// SPDX-License-Identifier: Apache-2.0
#include "widgets/QLineEditEx.h"

#include "tests/support/WindowActions.h"

#include <QApplication>
#include <QBoxLayout>
#include <QTest>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class QLineEditExTest : public testing::Test
{
protected:
    QLineEditExTest()
    {
        auto* const layout = new QVBoxLayout(&window);
        layout->addWidget(&edit);
        layout->addWidget(&other);
        const auto log = [this](const char* what) {
            return [this, what](const QString& text) {
                signalLog.push_back(what + std::string(" ") + text.toStdString());
            };
        };
        QObject::connect(&edit, &QLineEditEx::SigEnterKeyPress, log("enter"));
        QObject::connect(&edit, &QLineEditEx::SigFocusOutEvent, log("focus out"));
        QObject::connect(&edit, &QLineEditEx::SigSave, log("save"));
        QObject::connect(&edit, &QLineEdit::returnPressed, [this] { signalLog.emplace_back("base"); });
    }

    QWidget window;
    QLineEditEx edit;
    QLineEditEx other;
    std::vector<std::string> signalLog;
};

} // namespace

TEST_F(QLineEditExTest, ReturnAndEnterAreToldBeforeTheyHaveTheirEffect)
{
    ASSERT_TRUE(showActive(window));
    edit.setFocus();
    QTest::keyClicks(&edit, "10.0.0.7");
    EXPECT_THAT(signalLog, IsEmpty());
    QTest::keyClick(&edit, Qt::Key_Return);
    QTest::keyClick(&edit, Qt::Key_Backspace);
    QTest::keyClick(&edit, Qt::Key_Enter, Qt::KeypadModifier);
    EXPECT_THAT(signalLog, ElementsAre("enter 10.0.0.7", "base", "enter 10.0.0.", "base"));
}

TEST_F(QLineEditExTest, ReturnReachesTheWindowToo)
{
    class Window : public QWidget
    {
    public:
        int keys = 0;

    protected:
        void keyPressEvent(QKeyEvent* /*event*/) override { ++keys; }
    } parent;
    edit.setParent(&parent);
    QTest::keyClick(&edit, Qt::Key_Return);
    EXPECT_EQ(parent.keys, 1);
    edit.setParent(nullptr);
}

TEST_F(QLineEditExTest, EveryLossOfTheFocusIsToldAlsoOfAnUnchangedText)
{
    ASSERT_TRUE(showActive(window));
    edit.setText("kept");
    for (int round = 0; round < 2; ++round) {
        edit.setFocus();
        QTest::keyClick(&edit, Qt::Key_Tab);
        EXPECT_TRUE(other.hasFocus());
    }
    EXPECT_THAT(signalLog, ElementsAre("focus out kept", "focus out kept"));
}

TEST_F(QLineEditExTest, TheLossOfTheFocusIsToldAfterItsOwnHandling)
{
    ASSERT_TRUE(showActive(window));
    // Which takes the selection away.
    QObject::connect(&edit, &QLineEditEx::SigFocusOutEvent, [&] { EXPECT_FALSE(edit.hasSelectedText()); });
    edit.setText("10.0.0.7");
    edit.setFocus();
    edit.selectAll();
    other.setFocus();
    EXPECT_THAT(signalLog, ElementsAre("focus out 10.0.0.7"));
}

TEST_F(QLineEditExTest, ItsTextKeepsItsColourInADarkPalette)
{
    const QPalette before = QApplication::palette();
    QApplication::setPalette(QPalette(QColor(40, 42, 46), QColor(30, 32, 36)));
    const QLineEditEx fromText(QStringLiteral("192.168.10.20"), nullptr);
    const QLineEditEx empty(nullptr);
    EXPECT_EQ(fromText.palette().color(QPalette::Text), QColor(0x66, 0x66, 0x66));
    EXPECT_EQ(empty.palette().color(QPalette::Text), QColor(0x66, 0x66, 0x66));
    QApplication::setPalette(before);
}
