// SPDX-License-Identifier: Apache-2.0
#include "tests/support/InstalledTranslator.h"
#include "tests/support/WindowActions.h"
#include "tests/ui/WindowFixture.h"
#include "ui/QSetIpAddrDlg.h"

#include <QAccessible>
#include <QApplication>
#include <QGroupBox>
#include <QScrollBar>
#include <QTest>

#include <gtest/gtest.h>

namespace {

/// A language in which every text is the English one in brackets.
struct Brackets : InstalledTranslator
{
    Brackets() : InstalledTranslator([](const QString&, const QString& text) { return "[" + text + "]"; }) {}
};

/// The window as people with all kinds of hardware, languages and cameras use it.
class WindowUseTest : public WindowFixture
{
protected:
    void openWithOneCamera(const SdkDouble::Camera& camera = {.ipConfig = StaticIp})
    {
        addCamera(camera);
        open();
        QCoreApplication::processEvents();
    }

    /// Where every widget of the window is.
    std::vector<QRect> geometry() const
    {
        QCoreApplication::processEvents();
        std::vector<QRect> all;
        for (const auto* widget : window->findChildren<QWidget*>()) {
            // Scroll bars come with the rows that need them.
            if (!qobject_cast<const QScrollBar*>(widget) && !table()->isAncestorOf(widget))
                all.emplace_back(widget->mapTo(window, QPoint()), widget->size());
        }
        return all;
    }

    static QString accessibleName(QWidget* widget)
    {
        return QAccessible::queryAccessibleInterface(widget)->text(QAccessible::Name);
    }
};

} // namespace

TEST_F(WindowUseTest, NothingMovesWhenTheListChanges)
{
    open();
    const auto empty = geometry();
    addCamera({.ipConfig = StaticIp});
    refresh();
    EXPECT_TRUE(geometry() == empty);
    for (int i = 0; i < 40; ++i)
        addCamera({.mac = QString::asprintf("00:00:00:00:01:%02d", i).toStdString()});
    refresh();
    EXPECT_TRUE(geometry() == empty);
}

TEST_F(WindowUseTest, TextsOfCamerasAreShownAsTheyAreAndMoveNothing)
{
    openWithOneCamera();
    const auto before = geometry();
    struct Hostile
    {
        std::string model;
        std::string serial;
        std::string userName;
    };
    const Hostile rows[] = {{"<b>b</b><img src='/etc/motd'>", "<h1>1</h1>", "<a href=x>y</a>"},
                            {"WWWWWWWWWWWWWWWWWWWWWWWWWWWWWWW", "WWWWWWWWWWWWWWW", "WWWWWWWWWWWWWWW"},
                            {"\u76F8\u673A\u76F8\u673A\u76F8\u673A\u76F8\u673A\u76F8\u673A", "\u76F8\u673A",
                             "\u76F8\u673A\u76F8\u673A\u76F8"},
                            {"line\nbreak\ttab", "\x01\x02\x1b[31m", "a\r\nb"},
                            {"\xff\xfe\xc0\xaf", "\xed\xa0\x80", "\xe7\x9b"},
                            {"%1%2 &File", "%1(%2)", "A&B && C"}};
    for (const auto& [model, serial, userName] : rows) {
        sdk.listed.clear();
        addCamera({.model = model, .serial = serial, .userName = userName, .ipConfig = StaticIp});
        refresh();
        const QString expectedModel = QString::fromUtf8(model.data(), static_cast<int>(model.size()));
        const QString expectedName = QString::fromUtf8(userName.data(), static_cast<int>(userName.size()));
        const QString expectedSerial = QString::fromUtf8(serial.data(), static_cast<int>(serial.size()));
        EXPECT_EQ(cell(0, 0), expectedModel);
        EXPECT_EQ(panelTexts().at(1), expectedModel);
        EXPECT_EQ(panelTexts().at(3), expectedName);
        EXPECT_EQ(panelTitle().replace("&&", "&"), expectedName + '(' + expectedSerial + ')');
        EXPECT_TRUE(geometry() == before) << model;

        for (const auto* label : window->findChild<QGroupBox*>()->findChildren<QLabel*>())
            EXPECT_EQ(label->textFormat(), Qt::PlainText);
    }
}

TEST_F(WindowUseTest, TabReachesEveryControlThatIsInUse)
{
    openWithOneCamera();
    table()->setFocus();
    std::set<QWidget*> reached;
    for (int i = 0; i < 20; ++i) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        reached.insert(QApplication::focusWidget());
    }
    std::set<QWidget*> expected = {table(), button("Modify IP"), button("Refresh"), button("Static IP"),
                                   button("Save")};
    for (const char* caption : {"IP Address:", "Subnet Mask:", "Default Gateway:", "Device User ID:"})
        expected.insert(field(caption));
    for (auto* control : expected)
        EXPECT_TRUE(reached.count(control)) << accessibleName(control).toStdString();
}

TEST_F(WindowUseTest, ArrowKeysChooseTheKindOfAddressAsClicksDo)
{
    openWithOneCamera();
    button("Static IP")->setFocus();
    QTest::keyClick(button("Static IP"), Qt::Key_Down);
    EXPECT_TRUE(button("DHCP")->isChecked());
    EXPECT_FALSE(isEnabled("IP Address:"));
    QTest::keyClick(button("DHCP"), Qt::Key_Up);
    EXPECT_TRUE(button("Static IP")->isChecked());
    EXPECT_TRUE(isEnabled("IP Address:"));
}

TEST_F(WindowUseTest, EveryControlHasANameForThoseWhoDoNotSeeIt)
{
    openWithOneCamera();
    EXPECT_NE(accessibleName(table()), "");
    for (const char* caption : {"IP Address:", "Subnet Mask:", "Default Gateway:", "Device User ID:"})
        EXPECT_EQ(accessibleName(field(caption)), caption);
    for (const char* text : {"Static IP", "DHCP", "LLA", "Save", "Modify IP", "Refresh"})
        EXPECT_EQ(accessibleName(button(text)), text);
}

TEST_F(WindowUseTest, ALanguageIsTakenOnWhileTheWindowIsOpen)
{
    openWithOneCamera();
    {
        const Brackets translator;
        QCoreApplication::processEvents();
        EXPECT_EQ(window->windowTitle(), "[IP Configurator]");
        for (const char* text : {"Static IP", "DHCP", "LLA", "Save", "Modify IP", "Refresh"})
            EXPECT_NE(button(text), nullptr);
        for (const char* caption : {"IP Address:", "Subnet Mask:", "Default Gateway:", "Device User ID:"})
            EXPECT_NE(field(caption), nullptr);
        QStringList captions;
        for (int i = 0; i < 16; i += 2)
            captions << panelTexts().at(i);
        EXPECT_EQ(captions, (QStringList{"[Model Name:]", "[Device User ID:]", "[Serial Number:]",
                                         "[MAC Address:]", "[IP Configurator:]", "[IP Address:]",
                                         "[Subnet Mask:]", "[Default Gateway:]"}));
        QStringList columns;
        for (int i = 0; i < 8; ++i)
            columns << table()->horizontalHeaderItem(i)->text();
        EXPECT_EQ(columns,
                  (QStringList{"[Model Name]", "[Device User ID]", "[Serial Number]", "[MAC Address]",
                               "[Status]", "[IP Configuration]", "[IP Address]", "[Subnet Mask]"}));
        EXPECT_EQ(cell(0, 4), "Free"); // as of the last refresh

        refresh(); // F5 is still there
        EXPECT_EQ(cell(0, 4), "[Free]");
        EXPECT_EQ(cell(0, 5), "[Static IP]");
        EXPECT_TRUE(button("Static IP")->isChecked());
        EXPECT_TRUE(button("Save")->isEnabled());
    }
    QCoreApplication::processEvents();
    refresh();
    EXPECT_EQ(cell(0, 4), "Free");
}

TEST_F(WindowUseTest, ADialogTakesOnALanguageButKeepsItsRangeUntilTheNextUse)
{
    QSetIpAddrDlg dialog(nullptr);
    QDevice device;
    dialog.SetCurDevice(device);
    const auto texts = [&dialog] {
        QStringList found;
        for (const auto* label : dialog.findChildren<QLabel*>())
            found << label->text();
        for (const auto* button : dialog.findChildren<QAbstractButton*>())
            found << button->text();
        return found;
    };
    const Brackets translator;
    QCoreApplication::processEvents();
    EXPECT_EQ(dialog.windowTitle(), "[Modify IP Address]");
    for (const char* text : {"[IP Address:]", "[Subnet Mask:]", "[Default Gateway:]", "[OK]", "[Cancel]"})
        EXPECT_TRUE(texts().contains(text)) << text;
    EXPECT_FALSE(texts().join(' ').contains("[Valid Range:]"));
    dialog.SetCurDevice(device);
    EXPECT_TRUE(texts().join(' ').contains("[Valid Range:]"));
}

TEST_F(WindowUseTest, AfterReleaseNothingReacts)
{
    openWithOneCamera();
    MainWidget& released = *std::exchange(window, nullptr);
    released.Release();
    EXPECT_TRUE(released.findChildren<QTableWidget*>().isEmpty());
    released.UpdateListShow();
    released.ShowNoDevices();
    released.ShowHostIp();
    const QDevice device;
    released.AddListRow(&device);
    released.ShowDeviceInfo(&device);
    released.SetEnableCtrls(&device);
    released.EnabledRadio(true);
    released.EnabledSaveBtn(true);
    released.EnabledEditIPBtn(true);
    released.EnabledRefreshBtn(true);
    released.EnabledUserIDEdit(true);
    released.OnSelectStaticIp();
    released.OnSelectDHCP();
    released.OnSelectLLA();
    released.OnSelectItemChanged();
    QTableWidgetItem item;
    released.OnItemClicked(&item);
    released.OnItemClicked(nullptr);
    released.OnIpAddrChanged("1.2.3.4");
    released.OnSubnetMaskChanged("255.0.0.0");
    released.OnGatewayChanged("1.2.3.4");
    released.OnForceIpBtn();
    released.OnSetIpDlgBtnOk();
    released.OnBtnSave();
    released.OnEndSaveThread();
    released.OnBtnRefresh();
    released.OnEndRefreshThread();
    released.RefreshWidgetInfo();
    QTest::keyClick(&released, Qt::Key_Return);
    EXPECT_EQ(enumerationCount(), 1);
    released.hide();
}
