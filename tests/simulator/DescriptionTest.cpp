// SPDX-License-Identifier: Apache-2.0
#include "simulator/config/ReadFarm.h"

#include "tests/simulator/Hex.h"

#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

namespace {

using namespace simulator;
using testing::HasSubstr;
using testing::Not;

/// What a camera with these members tells of its features.
class DescriptionTest : public testing::Test
{
protected:
    DescriptionTest() { std::filesystem::create_directory(directory); }
    ~DescriptionTest() override { std::filesystem::remove_all(directory); }

    CameraConfig camera(const std::string& members) const
    {
        return readFarm(R"({"cameras": [{"mac": "001A2B000001", "address": "10.0.0.1")" + members + "}]}",
                        directory)
            .cameras.at(0);
    }

    std::string fileOf(const std::string& members) const
    {
        const auto file = camera(members).description.file;
        return {file->begin(), file->end()};
    }

    std::string errorOf(const std::string& members) const
    {
        try {
            camera(members);
        } catch (const ConfigError& error) {
            return error.what();
        }
        return "no error";
    }

    void write(const std::string& name, const std::string& contents) const
    {
        std::ofstream(directory / name) << contents;
    }

    const std::filesystem::path directory = testing::TempDir() + "descriptions-" + std::to_string(::getpid());
};

TEST_F(DescriptionTest, IsBuiltInUnlessAFileIsNamed)
{
    const std::string text = fileOf("");
    for (const char* const feature :
         {"\"DeviceUserID\"", "\"DeviceReset\"", "\"GevCurrentIPConfigurationPersistentIP\"",
          "\"GevCurrentIPConfigurationDHCP\"", "\"GevPersistentIPAddress\"", "<Address>0x00010000</Address>"})
        EXPECT_THAT(text, HasSubstr(feature));
    EXPECT_EQ(text.size() % 4, 0u);
    EXPECT_THAT(fileOf(R"(, "resetRegister": "0xF0000614")"), HasSubstr("<Address>0xF0000614</Address>"));
}

TEST_F(DescriptionTest, LeavesOutWhatItIsToLeaveOutAndNothingElse)
{
    const std::string text =
        fileOf(R"(, "descriptionLeavesOut": ["DeviceUserID", "GevCurrentIPConfigurationDHCP"])");
    EXPECT_THAT(text, Not(HasSubstr("DeviceUserID")));
    EXPECT_THAT(text, Not(HasSubstr("ConfigurationDHCP")));
    EXPECT_THAT(text, HasSubstr("\"DeviceReset\""));
    EXPECT_THAT(text, HasSubstr("\"GevCurrentIPConfigurationPersistentIP\""));
    EXPECT_THAT(fileOf(R"(, "descriptionLeavesOut": ["DeviceReset", "GevPersistentIPAddress",
                                                     "GevCurrentIPConfigurationPersistentIP"])"),
                Not(testing::AnyOf(HasSubstr("DeviceReset"), HasSubstr("Persistent"))));
}

TEST_F(DescriptionTest, ComesFromAFileBesideTheConfigurationByteForByte)
{
    write("own.xml", "<own/>");
    const CameraConfig own = camera(R"(, "description": "own.xml")");
    EXPECT_EQ(*own.description.file, hex("3C6F776E 2F3E0000")) << "padded to whole registers";
    EXPECT_EQ(own.description.url, "Local:own.xml;c0a00000;6");
    EXPECT_EQ(own.description.secondUrl, "");
    EXPECT_EQ(fileOf(", \"description\": \"" + (directory / "own.xml").string() + "\"").substr(0, 6),
              "<own/>");
}

TEST_F(DescriptionTest, IsZippedOnRequestAndOnceOnly)
{
    write("own.xml", "<own/>");
    const CameraConfig zipped = camera(R"(, "description": "own.xml", "descriptionZip": true)");
    const base::Bytes& file = *zipped.description.file;
    EXPECT_EQ(base::Bytes(file.begin(), file.begin() + 4), hex("504B0304"));
    EXPECT_THAT(zipped.description.url, testing::StartsWith("Local:own.zip;c0a00000;"));
    write("own.zip", std::string(file.begin(), file.end()));
    EXPECT_EQ(*camera(R"(, "description": "own.zip", "descriptionZip": true)").description.file, file);
    EXPECT_EQ(*camera(R"(, "description": "own.zip")").description.file, file);
}

TEST_F(DescriptionTest, HasUrlsInAnySpelling)
{
    write("own.xml", std::string(0xABC, ' '));
    const auto description = camera(R"(, "description": "own.xml",
        "url": "LOCAL: {name}; 0x{ADDRESS}; 0x{LENGTH}?SchemaVersion=1.1.0",
        "secondUrl": "local:///x;{address};{length}")")
                                 .description;
    EXPECT_EQ(description.url, "LOCAL: own.xml; 0xC0A00000; 0xABC?SchemaVersion=1.1.0");
    EXPECT_EQ(description.secondUrl, "local:///x;c0a00000;abc");
    EXPECT_EQ(camera(R"(, "url": "http://example.com/a.xml")").description.url, "http://example.com/a.xml");
    EXPECT_EQ(camera(R"(, "url": "")").description.url, "");
}

TEST_F(DescriptionTest, SaysWhatIsWrongWithIt)
{
    write("empty.xml", "");
    write(std::string(100, 'n') + ".xml", "<own/>");
    EXPECT_THAT(errorOf(R"(, "description": "none.xml")"), HasSubstr("\"description\" cannot be read: "));
    EXPECT_THAT(errorOf(R"(, "description": "empty.xml")"),
                HasSubstr("must name a file of 1 byte to 16 MiB"));
    EXPECT_THAT(errorOf(R"(, "description": "none.xml", "descriptionLeavesOut": ["DeviceReset"])"),
                HasSubstr("is about the built-in description"));
    EXPECT_THAT(errorOf(R"(, "descriptionLeavesOut": ["Gain"])"),
                HasSubstr("must be one of \"DeviceUserID\""));
    EXPECT_THAT(errorOf(R"(, "descriptionZip": "yes")"), HasSubstr("must be true or false"));
    EXPECT_THAT(errorOf(", \"description\": \"" + std::string(100, 'n') + ".xml\", \"url\": \"{name}" +
                        std::string(500, 'u') + "\""),
                HasSubstr("is too long when it is filled in"));
}

} // namespace
