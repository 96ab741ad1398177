// SPDX-License-Identifier: Apache-2.0
#include "sdk/description/Description.h"

#include "gvcp/Registers.h"
#include "sdk/network/CameraError.h"
#include "tests/sdk/FakeCamera.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace sdk;
using namespace std::string_literals;
using gvcp::reg::FirstDescriptionUrl;
using gvcp::reg::SecondDescriptionUrl;

namespace {

class DescriptionTest : public testing::Test
{
protected:
    DescriptionTest()
    {
        setUrl(FirstDescriptionUrl.address, "");
        setUrl(SecondDescriptionUrl.address, "");
    }

    void setUrl(std::uint32_t address, std::string text)
    {
        text.resize(512);
        camera.setBytes(address, text);
    }

    std::string fetch()
    {
        ControlChannel channel(camera.connect(), FakeCamera::Ip);
        const auto bytes = fetchDescription(channel);
        return {bytes.begin(), bytes.end()};
    }

    RZ_ERROR fetchError()
    {
        try {
            fetch();
        } catch (const CameraError& error) {
            return error.code();
        }
        return RZ_OK;
    }

    FakeCamera camera;
};

} // namespace

TEST_F(DescriptionTest, ComesFromWhereTheFirstUrlSays)
{
    camera.setBytes(0x10000, "<RegisterDescription/>");
    setUrl(FirstDescriptionUrl.address, "Local:a.xml;10000;16");
    setUrl(SecondDescriptionUrl.address, "Local:b.xml;20000;16");
    EXPECT_EQ(fetch(), "<RegisterDescription/>");
}

TEST_F(DescriptionTest, IsReadInWholeWordsAndCutToItsLength)
{
    const std::string file = "PK\3\4 any \0 bytes at all\xFF\0 and all of them"s;
    camera.setBytes(0x10000, file + "something else");
    setUrl(FirstDescriptionUrl.address, "Local:a.zip;10000;19");
    EXPECT_EQ(fetch(), file.substr(0, 0x19));
    EXPECT_THAT(camera.log(), testing::ElementsAre("READMEM 00000200+512", "READMEM 00010000+28"));
}

TEST_F(DescriptionTest, ComesFromTheSecondUrlWhenTheFirstIsOfNoUse)
{
    camera.setBytes(0x20000, "second");
    setUrl(SecondDescriptionUrl.address, "Local:b.xml;20000;6");
    for (const char* useless : {"", "nonsense", "http://example.com/a.xml", "File:a.xml",
                                "Local:a.xml;10000;300001", "Local:a.xml;90000000;10"}) {
        setUrl(FirstDescriptionUrl.address, useless);
        EXPECT_EQ(fetch(), "second") << useless;
    }
}

TEST_F(DescriptionTest, IsRefusedWhenItIsNotInTheCamera)
{
    setUrl(FirstDescriptionUrl.address, "File:camera.xml");
    setUrl(SecondDescriptionUrl.address, "http://example.com/camera.xml");
    EXPECT_EQ(fetchError(), RZ_ERROR_DESCRIPTION_ELSEWHERE);
    setUrl(SecondDescriptionUrl.address, "");
    EXPECT_EQ(fetchError(), RZ_ERROR_DESCRIPTION_ELSEWHERE);
    setUrl(FirstDescriptionUrl.address, "");
    EXPECT_EQ(fetchError(), RZ_ERROR_DESCRIPTION);
}

TEST_F(DescriptionTest, MayBeThreeMebibytesLongAndNotOneByteMore)
{
    camera.network.keepsSent = false;
    for (std::uint32_t i = 0; i < RZ_MAX_DESCRIPTION; i += 4)
        camera.words[0x10000000 + i] = i;
    setUrl(FirstDescriptionUrl.address, "Local:a.xml;10000000;300000");
    const auto file = fetch();
    EXPECT_EQ(file.size(), RZ_MAX_DESCRIPTION);
    EXPECT_EQ(file.substr(0x2FFFFC), "\x00\x2F\xFF\xFC"s);
    setUrl(FirstDescriptionUrl.address, "Local:a.xml;10000000;300001");
    EXPECT_EQ(fetchError(), RZ_ERROR_BUFFER);
}

TEST_F(DescriptionTest, IsNotLookedForElsewhereWhenTheCameraIsGone)
{
    setUrl(FirstDescriptionUrl.address, "Local:a.xml;10000;10");
    camera.onCommand = [](const auto& command) { return base::readU32(command.payload, 0) == 0x10000; };
    camera.setBytes(0x10000, "0123456789ABCDEF");
    EXPECT_EQ(fetchError(), RZ_ERROR_NO_ANSWER);
    EXPECT_THAT(camera.log(), testing::Not(testing::Contains("READMEM 00000400+512")));
}
