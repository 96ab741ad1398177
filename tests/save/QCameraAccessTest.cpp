// SPDX-License-Identifier: Apache-2.0
#include "save/QCameraAccess.h"

#include "tests/save/DebugLines.h"
#include "tests/save/NodeMapDouble.h"
#include "tests/support/SdkDouble.h"

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr unsigned MaxXmlLength = 3145728;

struct Port : GenApi::IPort
{
    GenApi::EAccessMode GetAccessMode() const override { return GenApi::RW; }
    void Read(void*, int64_t, int64_t) override {}
    void Write(const void*, int64_t, int64_t) override {}
};

class QCameraAccessTest : public testing::Test
{
protected:
    QCameraAccessTest()
    {
        sdk.port = &port;
        sdk.description = "<xml/>";
    }

    Port port;
    SdkDouble sdk;
    std::vector<std::string> events;
    NodeMapDouble nodes{[this](const std::string& event) { events.push_back(event); }};
    DebugLines debug;
    QCameraAccess camera;
};

} // namespace

TEST_F(QCameraAccessTest, ANullRecordGivesNoHandle)
{
    EXPECT_FALSE(camera.Create(nullptr));
    EXPECT_EQ(camera.GetHandle(), nullptr);
    EXPECT_THAT(sdk.calls(), IsEmpty());
}

TEST_F(QCameraAccessTest, TheSdkMayRefuseAHandle)
{
    sdk.createHandle = [](const RZ_CC_DEVICE_INFO*) { return RZ_ERROR_INTERNAL; };
    EXPECT_FALSE(camera.Create(sdk.record({})));
    EXPECT_EQ(camera.GetHandle(), nullptr);
}

TEST_F(QCameraAccessTest, AHandleReplacesTheOneThatIsStillThere)
{
    ASSERT_TRUE(camera.Create(sdk.record({})));
    ASSERT_TRUE(camera.Create(sdk.record({.mac = "00:00:00:00:00:01"})));
    EXPECT_THAT(sdk.calls(),
                ElementsAre("CreateHandle(00:1A:2B:3C:4D:5E)", "DestroyHandle(00:1A:2B:3C:4D:5E)",
                            "CreateHandle(00:00:00:00:00:01)"));
}

TEST_F(QCameraAccessTest, LoadingOpensExclusivelyAndConnectsTheDescriptionsNodeMapToThePort)
{
    ASSERT_TRUE(camera.Create(sdk.record({})));
    EXPECT_TRUE(camera.Load());
    EXPECT_THAT(sdk.calls(),
                ElementsAre("CreateHandle(00:1A:2B:3C:4D:5E)", "OpenDevice(00:1A:2B:3C:4D:5E, 1, 0)",
                            "GetGenICamXML(00:1A:2B:3C:4D:5E, 3145728)", "GetTlProxy(00:1A:2B:3C:4D:5E)"));
    EXPECT_THAT(events, ElementsAre("Make(<xml/>)", "Connect(Device)"));
    EXPECT_EQ(nodes.connectedTo, &port);
    EXPECT_EQ(nodes.deviceName, "Device");
    EXPECT_NE(camera.GetNodeMap(), nullptr);
    EXPECT_THAT(debug.lines(), IsEmpty());
}

TEST_F(QCameraAccessTest, TheDescriptionIsTakenWithItsZeroBytesAndExactLength)
{
    sdk.description = std::string("PK\x03\x04\0\0zip\0", 10);
    ASSERT_TRUE(camera.Create(sdk.record({})));
    EXPECT_TRUE(camera.Load());
    EXPECT_THAT(events, ElementsAre("Make(" + sdk.description + ")", "Connect(Device)"));

    camera.Release();
    events.clear();
    sdk.reportedLength = 4;
    ASSERT_TRUE(camera.Create(sdk.record({})));
    EXPECT_TRUE(camera.Load());
    EXPECT_THAT(events, ElementsAre("Make(PK\x03\x04)", "Connect(Device)"));
}

TEST_F(QCameraAccessTest, NothingOfALongerDescriptionBeforeIsLeft)
{
    sdk.description = "<longer/>";
    ASSERT_TRUE(camera.Create(sdk.record({})));
    EXPECT_TRUE(camera.Load());
    camera.Release();
    events.clear();

    sdk.description = "<xml/>";
    sdk.reportedLength = 9;
    ASSERT_TRUE(camera.Create(sdk.record({})));
    EXPECT_TRUE(camera.Load());
    EXPECT_EQ(events.front(), std::string("Make(<xml/>\0\0\0)", 15));
}

TEST_F(QCameraAccessTest, ADescriptionMayFillTheWholeBuffer)
{
    sdk.description = std::string(MaxXmlLength, 'x');
    ASSERT_TRUE(camera.Create(sdk.record({})));
    EXPECT_TRUE(camera.Load());
    EXPECT_EQ(events.front(), "Make(" + sdk.description + ")");
}

TEST_F(QCameraAccessTest, ALengthBeyondTheBufferIsRejected)
{
    sdk.description = std::string(MaxXmlLength, 'x');
    sdk.reportedLength = MaxXmlLength + 1;
    ASSERT_TRUE(camera.Create(sdk.record({})));
    EXPECT_FALSE(camera.Load());
    EXPECT_THAT(debug.lines(), ElementsAre("RZ_XML_GetGenICamXML"));
    EXPECT_THAT(events, IsEmpty());
}

TEST_F(QCameraAccessTest, EachFailureOfLoadingEndsItThereWithALine)
{
    struct Row
    {
        std::function<void()> fail;
        std::string line;
        std::string lastCall;
    };
    const Row rows[] = {
        {[&] { sdk.openDevice = [](RZ_CC_DEVICE_INFO*) { return 26; }; }, "open device fail 26",
         "OpenDevice(00:1A:2B:3C:4D:5E, 1, 0)"},
        {[&] { sdk.getGenICamXml = [](RZ_CC_DEVICE_INFO*) { return 4; }; }, "RZ_XML_GetGenICamXML",
         "GetGenICamXML(00:1A:2B:3C:4D:5E, 3145728)"},
        {[&] { sdk.port = nullptr; }, "RZ_CC_GetTlProxy", "GetTlProxy(00:1A:2B:3C:4D:5E)"},
        {[&] { nodes.onConnect = [] { throw GenICam::RuntimeException("no such port", "X.cpp", 1); }; },
         "catch", "GetTlProxy(00:1A:2B:3C:4D:5E)"},
        {[&] { nodes.onMake = [] { throw 7; }; }, "catch", "GetTlProxy(00:1A:2B:3C:4D:5E)"},
    };
    const auto works = std::tuple(sdk.openDevice, sdk.getGenICamXml, nodes.onConnect, nodes.onMake);
    for (const Row& row : rows) {
        std::tie(sdk.openDevice, sdk.getGenICamXml, nodes.onConnect, nodes.onMake) = works;
        sdk.port = &port;
        row.fail();
        debug.forget();
        ASSERT_TRUE(camera.Create(sdk.record({})));
        EXPECT_FALSE(camera.Load());
        EXPECT_THAT(debug.lines(), ElementsAre(row.line));
        EXPECT_EQ(sdk.calls().back(), row.lastCall);
        EXPECT_EQ(sdk.livingHandles(), 1u) << "Released later, by Release().";
        EXPECT_EQ(camera.GetNodeMap() != nullptr, row.line == "catch") << "Released later, too.";
        camera.Release();
        EXPECT_EQ(sdk.livingHandles(), 0u);
        EXPECT_EQ(camera.GetNodeMap(), nullptr);
    }
}

TEST_F(QCameraAccessTest, ReleasingTwiceIsReleasingOnce)
{
    ASSERT_TRUE(camera.Create(sdk.record({})));
    ASSERT_TRUE(camera.Load());
    camera.Release();
    camera.Release();
    EXPECT_EQ(sdk.livingHandles(), 0u);
    EXPECT_EQ(sdk.calls().back(), "DestroyHandle(00:1A:2B:3C:4D:5E)");
    EXPECT_EQ(sdk.calls().size(), 5u);
}

TEST_F(QCameraAccessTest, ReleasingGivesTheHandleBackBeforeTheNodeMapIsDeleted)
{
    ASSERT_TRUE(camera.Create(sdk.record({})));
    ASSERT_TRUE(camera.Load());
    std::vector<size_t> handles;
    nodes.onDelete = [&] { handles.push_back(sdk.livingHandles()); };
    camera.Release();
    EXPECT_THAT(handles, ElementsAre(0u));
}

TEST_F(QCameraAccessTest, DestructionGivesTheHandleBackAfterTheNodeMapIsDeleted)
{
    std::vector<size_t> handles;
    {
        QCameraAccess other;
        ASSERT_TRUE(other.Create(sdk.record({})));
        ASSERT_TRUE(other.Load());
        nodes.onDelete = [&] { handles.push_back(sdk.livingHandles()); };
    }
    EXPECT_THAT(handles, ElementsAre(1u));
    EXPECT_EQ(sdk.livingHandles(), 0u);
}
