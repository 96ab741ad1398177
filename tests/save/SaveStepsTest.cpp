// SPDX-License-Identifier: Apache-2.0
#include "tests/save/SavedCamera.h"

#include <QTextCodec>

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::IsEmpty;
using testing::StrEq;

namespace {

/// The steps of a save by themselves, on the test's own thread.
class SaveStepsTest : public SavedCamera
{};

} // namespace

TEST_F(SaveStepsTest, ANullManagerChangesNothing)
{
    const QDevice cur = found();
    QDevice modified = cur;
    modified.m_strIpAddress = "192.0.2.30";
    thread->SetThreadInfo(manager, cur, modified);
    thread->SetThreadInfo(nullptr, cur, cur);
    EXPECT_TRUE(thread->CheckIpChanged());
}

TEST_F(SaveStepsTest, EachTextIsComparedByItself)
{
    struct Row
    {
        QString QDevice::*text;
        bool (QSaveThread::*changed)() const;
    };
    const Row rows[] = {{&QDevice::m_strIpConfigType, &QSaveThread::CheckIPTypeChanged},
                        {&QDevice::m_strIpAddress, &QSaveThread::CheckIpChanged},
                        {&QDevice::m_strSubnetMask, &QSaveThread::CheckSubMaskChanged},
                        {&QDevice::m_strDefaultGateway, &QSaveThread::CheckGatewayChanged},
                        {&QDevice::m_strUserDefinedName, &QSaveThread::CheckUserIdChanged}};
    const QDevice cur = found();
    for (const Row& row : rows) {
        QDevice modified = cur;
        modified.*row.text += ' ';
        thread->SetThreadInfo(manager, cur, modified);
        for (const Row& other : rows)
            EXPECT_EQ((thread.get()->*other.changed)(), &other == &row);
    }
}

TEST_F(SaveStepsTest, ATextThatDiffersInCaseAloneIsChanged)
{
    QDevice modified = found();
    modified.m_strUserDefinedName = "nAME";
    thread->SetThreadInfo(manager, found(), modified);
    EXPECT_TRUE(thread->CheckUserIdChanged());
}

TEST_F(SaveStepsTest, TheNameIsWrittenInTheLocalesEncoding)
{
    QTextCodec* const before = QTextCodec::codecForLocale();
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("ISO-8859-1"));
    QDevice modified = found();
    modified.m_strUserDefinedName = QStringLiteral("Ré");
    thread->SetThreadInfo(manager, found(), modified);
    ASSERT_TRUE(thread->CreateDevice());
    ASSERT_TRUE(thread->LoadXMLFile());
    EXPECT_TRUE(thread->SetUserID());
    QTextCodec::setCodecForLocale(before);
    EXPECT_EQ(events().back(), "DeviceUserID = 52 e9 00 00");
}

TEST_F(SaveStepsTest, TheManagerIsDeletedInTheEnd)
{
    sdk.listed = {sdk.record({})};
    manager->EnumGigEDevices();
    QVector<QDevice> devices;
    manager->GetAllDevices(devices);
    thread->SetThreadInfo(manager, found(), found());
    EXPECT_FALSE(devices.isDetached()) << "The manager has it, too.";
    thread.reset();
    EXPECT_TRUE(devices.isDetached());
}

TEST_F(SaveStepsTest, WithoutANodeMapEveryWriterReturnsFalseAndLeavesTheErrorText)
{
    const QDevice cur = found();
    QDevice modified = cur;
    for (QString QDevice::*text :
         {&QDevice::m_strSubnetMask, &QDevice::m_strDefaultGateway, &QDevice::m_strUserDefinedName})
        modified.*text = "10.0.0.1";
    thread->SetThreadInfo(manager, cur, modified);
    EXPECT_FALSE(thread->SetStaticIPEnabled(true));
    EXPECT_FALSE(thread->SetDHCPEnabled(true));
    EXPECT_FALSE(thread->SetSubMask());
    EXPECT_FALSE(thread->SetGateway());
    EXPECT_FALSE(thread->SetUserID());
    EXPECT_FALSE(thread->RestartDevice());
    EXPECT_THAT(thread->GetErrorText(), StrEq(""));
    EXPECT_THAT(events(), IsEmpty());
}

TEST_F(SaveStepsTest, MaskAndGatewayCanBeWrittenAsFeatures)
{
    const QDevice cur = found();
    QDevice modified = cur;
    thread->SetThreadInfo(manager, cur, modified);
    ASSERT_TRUE(thread->CreateDevice());
    ASSERT_TRUE(thread->LoadXMLFile());
    forgetEvents();
    EXPECT_FALSE(thread->SetSubMask());
    EXPECT_FALSE(thread->SetGateway());
    EXPECT_THAT(events(), IsEmpty()) << "Unchanged.";

    modified.m_strSubnetMask = "255.255.0.0";
    modified.m_strDefaultGateway = "192.168.1.1";
    thread->SetThreadInfo(manager, cur, modified);
    EXPECT_TRUE(thread->SetSubMask());
    EXPECT_TRUE(thread->SetGateway());
    EXPECT_THAT(events(),
                ElementsAre("GevPersistentSubnetMask = -65536", "GevPersistentDefaultGateway = -1062731519"));

    forgetEvents();
    nodes.remove("GevPersistentSubnetMask");
    nodes.remove("GevPersistentDefaultGateway");
    EXPECT_FALSE(thread->SetSubMask());
    EXPECT_FALSE(thread->SetGateway());
    EXPECT_THAT(events(), ElementsAre("ShowMsg(Error|Set SubMask Error: code 0x0)",
                                      "ShowMsg(Error|Set Gateway Error: code 0x0)"));
    thread->ReleaseThread();
    thread->ReleaseThread();
    EXPECT_EQ(sdk.livingHandles(), 0u);
}

TEST_F(SaveStepsTest, AFeatureWithoutANameIsNotWritten)
{
    thread->SetThreadInfo(manager, found(), found());
    ASSERT_TRUE(thread->CreateDevice());
    ASSERT_TRUE(thread->LoadXMLFile());
    EXPECT_FALSE(thread->SetBooleanNodePropertyValue(nullptr, 1));
    EXPECT_TRUE(thread->SetBooleanNodePropertyValue(Dhcp, 2));
    EXPECT_EQ(events().back(), "GevCurrentIPConfigurationDHCP = 1");
}
