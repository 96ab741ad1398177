// SPDX-License-Identifier: Apache-2.0
#include "tests/network/CompleteDescription.h"
#include "tests/network/OpenCamera.h"
#include "tests/network/Sdk.h"
#include "tests/simulator/Shown.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using simulator_tests::runningCamera;
using simulator_tests::shown;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

const std::string Mac = "02:00:00:00:01:01";
constexpr const char* Lacking = R"(, "descriptionLeavesOut": ["DeviceUserID", "DeviceReset",
    "GevCurrentIPConfigurationPersistentIP", "GevCurrentIPConfigurationDHCP"])";

class Description : public testing::Test
{
protected:
    void build(const std::string& members = {})
    {
        farm = &site.addCameras(
            site.addAdapter("eth0", "192.168.1.5/24"),
            R"({"mac": "02:00:00:00:01:01", "address": "192.168.1.20", "rebootTime": 50)" + members + "}");
    }

    OpenCamera open()
    {
        const auto* record = recordOf(enumerate(site), Mac);
        if (!record)
            throw std::runtime_error("the camera is not found at all");
        return OpenCamera(site, *record);
    }

    Site site;
    lab::Farm* farm = nullptr;
};

} // namespace

TEST_F(Description, OfAMegabyteIsFetchedToTheByte)
{
    const CompleteDescription file(1'300'001);
    build(R"(, "description": ")" + file.path + "\"");
    EXPECT_EQ(open().description(), file.content);
}

TEST_F(Description, ThatIsZippedStaysSo)
{
    build(R"(, "descriptionZip": true)");
    EXPECT_THAT(open().description(), StartsWith("PK\3\4"));
}

TEST_F(Description, IsFoundByTheUrlsOfRealCameras)
{
    for (const char* url :
         {"local:{name};0x{ADDRESS};0x{LENGTH}", "Local: {name}; {address}; {length}",
          "LOCAL:{name};{address};{length}?SchemaVersion=1.1.0", "Local:///{name};{address};{length}"}) {
        Site fresh;
        fresh.addCameras(fresh.addAdapter("eth0", "192.168.1.5/24"),
                         R"({"mac": "02:00:00:00:01:01", "address": "192.168.1.20", "url": ")" +
                             std::string(url) + "\"}");
        const OpenCamera camera(fresh, *recordOf(enumerate(fresh), Mac));
        EXPECT_THAT(camera.description(), HasSubstr("</RegisterDescription>")) << url;
    }
}

TEST_F(Description, IsFetchedFromTheSecondUrlWhenTheFirstIsNotInTheCamera)
{
    build(R"(, "url": "http://192.168.1.5/camera.xml", "secondUrl": "Local:{name};{address};{length}")");
    EXPECT_THAT(open().description(), HasSubstr("</RegisterDescription>"));
}

TEST_F(Description, ElsewhereIsRefused)
{
    build(R"(, "url": "File:///etc/hostname", "secondUrl": "http://192.168.1.5/camera.xml")");
    EXPECT_EQ(open().descriptionResult(), RZ_ERROR_DESCRIPTION_ELSEWHERE);
}

TEST_F(Description, ThatIsTooLongForTheBufferIsReportedWithItsLength)
{
    build();
    const OpenCamera camera = open();
    const auto length = camera.description().size();
    std::vector<unsigned char> buffer(length, 0xEE);
    unsigned reported = 0;
    EXPECT_EQ(
        RZ_XML_GetGenICamXML(camera.handle(), buffer.data(), static_cast<unsigned>(length) - 1, &reported),
        RZ_ERROR_BUFFER);
    EXPECT_EQ(reported, length);
    EXPECT_EQ(buffer[0], 0xEE);
}

TEST_F(Description, GetsWhatItLacksAndThatWorksOnTheCamera)
{
    build(Lacking);
    const OpenCamera camera = open();
    EXPECT_THAT(camera.description(),
                AllOf(HasSubstr(R"(Name="DeviceReset")"), HasSubstr(R"(Name="DeviceUserID")"),
                      HasSubstr(R"(Name="GevCurrentIPConfigurationPersistentIP")"),
                      HasSubstr(R"(Name="GevCurrentIPConfigurationDHCP")")));
    camera.port()->Write("Right\0\0\0\0\0\0\0\0\0\0", 0xE8, 16);
    EXPECT_EQ(shown(*farm, Mac).at("userName"), "Right");
}

TEST_F(Description, OfACameraWithoutAUserNameGetsNone)
{
    build(std::string(Lacking) + R"(, "userNameAccess": "none")");
    EXPECT_THAT(open().description(), Not(HasSubstr("DeviceUserID")));
}

TEST_F(Description, ThatIsZippedAndLacksSomethingComesUnpackedAndComplete)
{
    build(std::string(Lacking) + R"(, "descriptionZip": true)");
    EXPECT_THAT(open().description(), AllOf(StartsWith("<"), HasSubstr(R"(Name="DeviceReset")")));
}

TEST_F(Description, ResetOfItsOwnHasTheCameraRunItsStoredConfiguration)
{
    build(std::string(Lacking) + R"(, "ipConfiguration": "persistent",
        "persistent": {"address": "192.168.1.99", "mask": "255.255.255.0", "gateway": "0.0.0.0"})");
    {
        const OpenCamera camera = open();
        const unsigned one = 0x01000000;
        camera.port()->Write(&one, 0x1'0000'0000, 4);
        EXPECT_EQ(camera.port(), nullptr) << "control is given back";
    }
    const auto after = runningCamera(*farm, Mac);
    EXPECT_EQ(after.at("address"), "192.168.1.99");
    EXPECT_FALSE(after.at("held"));
}

TEST_F(Description, ResetOfTheMakersSucceedsOnACameraThatIsGoneBeforeItCouldAcknowledge)
{
    build(R"(, "rebootsWithoutAck": true)");
    const OpenCamera camera = open();
    EXPECT_NO_THROW(camera.write(0x10000, 1));
    EXPECT_EQ(runningCamera(*farm, Mac).at("resets"), 1);
}

TEST_F(Description, OfTheFieldsOwnFakeCameraIsTheSameAsItsOwnToolFetches)
{
    auto& network = site.addAdapter("eth0", "192.168.1.5/24");
    network.attach(site.router(), "lan", "192.168.1.20/24");
    const auto fake = site.router().start({"arv-fake-gv-camera-0.8", "-i", "lan", "-s", "FAKE1"});
    std::vector<const RZ_CC_DEVICE_INFO*> records;
    for (int tries = 0; tries < 10 && records.empty(); ++tries) // It says nothing when it is ready.
        records = enumerate(site);
    ASSERT_FALSE(records.empty());
    std::string ours;
    {
        const OpenCamera camera(site, *records[0]);
        ASSERT_EQ(camera.result(), RZ_OK);
        EXPECT_EQ(camera.read(0xA00) & 1, 1u);
        ours = camera.description();
    }
    const auto printed =
        site.host().run("arv-tool-0.8 genicam"); // A line with the camera's name comes first.
    const auto begin = printed.find('<');
    const auto theirs = printed.substr(begin, printed.rfind("</RegisterDescription>") - begin);
    EXPECT_GT(theirs.size(), 10'000u);
    EXPECT_TRUE(ours.starts_with(theirs)) << "but for what is added before the closing tag";
}
