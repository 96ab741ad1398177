// SPDX-License-Identifier: Apache-2.0
#include "widgets/QMessageBoxDlg.h"

#include "tests/support/WindowActions.h"
#include "tests/widgets/NamingTranslator.h"
#include "tests/widgets/WindowProbe.h"
#include "widgets/QImageButton.h"
#include "widgets/QPushButtonEx.h"

#include <QApplication>
#include <QLabel>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

namespace {

const QRect Content(1, 30, 398, 169); ///< What the frame leaves.

QPushButtonEx* buttonNamed(const QWidget& box, const QString& text)
{
    for (QPushButtonEx* const button : box.findChildren<QPushButtonEx*>()) {
        if (button->text() == text)
            return button;
    }
    return nullptr;
}

QLabel* messageOf(const QWidget& box)
{
    return box.findChild<QWidget*>("ContentMid")->findChild<QLabel*>();
}

/// What a label's text takes up, in the label.
QRect shownArea(const QLabel& label)
{
    const int flags = Qt::AlignCenter | (label.wordWrap() ? Qt::TextWordWrap : 0);
    return label.fontMetrics().boundingRect(label.contentsRect(), flags, label.text());
}

/// Runs the box as a question, and does this to it as soon as it is active.
int answer(QMessageBoxDlg& box, const std::function<void()>& action)
{
    QTimer::singleShot(0, &box, [&] {
        EXPECT_TRUE(showActive(box));
        action();
    });
    return box.exec(false);
}

} // namespace

TEST(QMessageBoxDlgTest, IsOfAFixedSizeWithAThinBottomAndABlankBeforeItsTitle)
{
    const QMessageBoxDlg box(nullptr, "Error", "Text", false);
    EXPECT_EQ(box.minimumSize(), QSize(400, 200));
    EXPECT_EQ(box.maximumSize(), QSize(400, 200));
    EXPECT_EQ(box.windowTitle(), " Error");
    EXPECT_EQ(box.GetBottomWidget()->objectName(), "bottommidnon");
}

TEST(QMessageBoxDlgTest, ANoticeHasOneButtonInTheMiddle)
{
    QMessageBoxDlg box(nullptr, "Information", "Text", false);
    box.grab(); // Lays out what is not shown.
    EXPECT_EQ(box.findChildren<QPushButtonEx*>().size(), 1);
    const QRect ok = placeOf(*buttonNamed(box, "OK"));
    EXPECT_EQ(ok.size(), QSize(82, 27));
    EXPECT_NEAR(ok.center().x(), 200, 1);
    EXPECT_TRUE(buttonNamed(box, "OK")->isDefault());
    EXPECT_GT(ok.top(), placeOf(*messageOf(box)).bottom());
}

TEST(QMessageBoxDlgTest, AQuestionHasTwoButtonsSideBySide)
{
    QMessageBoxDlg box(nullptr, "Information", "Text", true);
    box.grab();
    const QRect ok = placeOf(*buttonNamed(box, "OK"));
    const QRect cancel = placeOf(*buttonNamed(box, "Cancel"));
    EXPECT_EQ(cancel.size(), QSize(82, 27));
    EXPECT_EQ(cancel.top(), ok.top());
    EXPECT_GT(cancel.left(), ok.right());
    EXPECT_NEAR(ok.left() + cancel.right(), 400, 2);
    EXPECT_FALSE(buttonNamed(box, "Cancel")->isDefault());
}

TEST(QMessageBoxDlgTest, AShortMessageStandsInTheMiddle)
{
    QMessageBoxDlg box(nullptr, "Error", "Text", false);
    const QLabel* const message = messageOf(box);
    EXPECT_EQ(message->text(), "Text");
    EXPECT_EQ(message->alignment(), Qt::AlignHCenter | Qt::AlignVCenter);
    EXPECT_EQ(message->sizePolicy().horizontalPolicy(), QSizePolicy::Expanding);
    box.grab();
    EXPECT_NEAR(placeOf(*message).center().x(), 200, 1);
}

TEST(QMessageBoxDlgTest, ALongMessageWrapsInsideTheWindow)
{
    const QFont original = QApplication::font();
    for (const auto& [points, sentences] : {std::pair{10, 2}, {10, 5}, {10, 10}, {13, 5}, {13, 10}}) {
        QApplication::setFont(QFont(original.family(), points));
        const QString text =
            QStringLiteral("The camera does not answer at its new address. ").repeated(sentences);
        QMessageBoxDlg box(nullptr, "Error", text, true);
        box.grab();
        EXPECT_EQ(box.size(), QSize(400, 200));
        const QLabel* const message = messageOf(box);
        EXPECT_EQ(message->text(), text);
        EXPECT_TRUE(Content.contains(placeOf(*message)));
        EXPECT_GE(shownArea(*message).height(), 2 * message->fontMetrics().height());
        EXPECT_TRUE(message->contentsRect().contains(shownArea(*message))) << points << ", " << sentences;
    }
    QApplication::setFont(original);
}

TEST(QMessageBoxDlgTest, NoMessageIsTooLongForTheWindowsFrameAndButtons)
{
    const QString sentence = QStringLiteral("The camera does not answer at its new address. ");
    for (const QString& text : {QString(3000, 'W'), sentence.repeated(100), QString(300, '\n')}) {
        QMessageBoxDlg box(nullptr, "Error", text, true);
        box.grab();
        EXPECT_TRUE(Content.contains(placeOf(*buttonNamed(box, "Cancel"))));
        const QLabel* const message = messageOf(box);
        EXPECT_TRUE(Content.contains(placeOf(*message)));
        EXPECT_EQ(placeOf(*box.findChild<QWidget*>("ContentRight")).right(), 399);
        // It begins as the text does, and shows that it goes on.
        EXPECT_TRUE(message->contentsRect().contains(shownArea(*message)));
        EXPECT_TRUE(message->text().startsWith(text.at(0)));
        EXPECT_TRUE(message->text().endsWith(QChar(0x2026)));
    }
}

TEST(QMessageBoxDlgTest, AWordThatIsTooLongForALineIsBroken)
{
    const QString text = "No file  http://" + QString(100, 'W') + "\nat the camera";
    QMessageBoxDlg box(nullptr, "Error", text, true);
    const QLabel* const message = messageOf(box);
    box.grab();
    EXPECT_TRUE(message->contentsRect().contains(shownArea(*message)));
    EXPECT_GE(shownArea(*message).height(), 4 * message->fontMetrics().height());
    EXPECT_EQ(QString(message->text()).remove(QChar(0x200b)), text);
    EXPECT_TRUE(message->text().startsWith("No file  "));
    EXPECT_TRUE(message->text().endsWith("\nat the camera"));
}

TEST(QMessageBoxDlgTest, MarkupIsShownAsItIs)
{
    QMessageBoxDlg box(nullptr, "Error", "<a href='http://camera'>cam</a>", false);
    EXPECT_EQ(messageOf(box)->textFormat(), Qt::PlainText);
}

TEST(QMessageBoxDlgTest, ItsButtonsAnswer)
{
    QMessageBoxDlg box(nullptr, "Information", "Text", true);
    EXPECT_EQ(answer(box, [&] { QTest::mouseClick(buttonNamed(box, "OK"), Qt::LeftButton); }),
              QDialog::Accepted);
    EXPECT_EQ(answer(box, [&] { QTest::mouseClick(buttonNamed(box, "Cancel"), Qt::LeftButton); }),
              QDialog::Rejected);
    EXPECT_EQ(answer(box, [&] { QTest::mouseClick(box.GetCloseBtn(), Qt::LeftButton); }), QDialog::Rejected);
}

TEST(QMessageBoxDlgTest, ANoticeIsClosedByItsOkOrItsCloseButtonAndByNothingElse)
{
    QMessageBoxDlg box(nullptr, "Information", "Text", false);
    EXPECT_EQ(answer(box, [&] { QTest::mouseClick(buttonNamed(box, "OK"), Qt::LeftButton); }),
              QDialog::Accepted);
    EXPECT_EQ(answer(box,
                     [&] {
                         QTest::keyClick(&box, Qt::Key_Escape);
                         QTest::mouseClick(messageOf(box), Qt::LeftButton);
                         EXPECT_TRUE(box.isVisible());
                         QTest::mouseClick(box.GetCloseBtn(), Qt::LeftButton);
                     }),
              QDialog::Rejected);
}

TEST(QMessageBoxDlgTest, AQuestionShowsWhichButtonReturnIsFor)
{
    QMessageBoxDlg box(nullptr, "Information", "Text", true);
    QPushButtonEx* const ok = buttonNamed(box, "OK");
    QPushButtonEx* const cancel = buttonNamed(box, "Cancel");
    EXPECT_EQ(answer(box,
                     [&] {
                         const QImage okFocused = ok->grab().toImage();
                         const QImage cancelPlain = cancel->grab().toImage();
                         QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
                         EXPECT_NE(ok->grab().toImage(), okFocused);
                         EXPECT_NE(cancel->grab().toImage(), cancelPlain);
                         QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
                     }),
              QDialog::Rejected);
}

TEST(QMessageBoxDlgTest, ReturnIsOkAndEscapeIsNothing)
{
    QMessageBoxDlg box(nullptr, "Information", "Text", true);
    EXPECT_EQ(answer(box,
                     [&] {
                         QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
                         EXPECT_TRUE(box.isVisible());
                         QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
                     }),
              QDialog::Accepted);
}

TEST(QMessageBoxDlgTest, IsModalForItsWindowWhenItIsRunSo)
{
    QWidget parent;
    QMessageBoxDlg box(&parent, "Information", "Text", false);
    EXPECT_EQ(answer(box,
                     [&] {
                         EXPECT_EQ(box.windowModality(), Qt::WindowModal);
                         box.OnOkBtnClicked();
                     }),
              QDialog::Accepted);
}

TEST(QMessageBoxDlgTest, ItsButtonsAreTranslated)
{
    const NamingTranslator translator;
    const QMessageBoxDlg box(nullptr, "Information", "Text", true);
    EXPECT_NE(buttonNamed(box, "QMessageBoxDlg: OK"), nullptr);
    EXPECT_NE(buttonNamed(box, "QMessageBoxDlg: Cancel"), nullptr);
}
