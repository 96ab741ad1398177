// SPDX-License-Identifier: Apache-2.0
#include "genapi/description/Description.h"

#include "genapi/Base/GCException.h"
#include "tests/support/Zips.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using genapi::MaxDescriptionSize;
using genapi::unpackDescription;
using testing::HasSubstr;

namespace {

/// XML that a zip makes a quarter as long.
std::string longText()
{
    std::string text;
    for (int i = 0; i < 5000; ++i)
        text += "<Integer Name=\"N" + std::to_string(i * 7919 % 5000) + "\"/>";
    return text;
}

std::string refusal(const std::string& data)
{
    try {
        unpackDescription(data);
    } catch (const GenICam::RuntimeException& exception) {
        return exception.what();
    }
    return "(not refused)";
}

} // namespace

TEST(AnUnpacker, HandsOnWhatIsNoZip)
{
    for (const std::string text : {"", "P", "PK", "<x/>", "PK\x05\x06"})
        EXPECT_EQ(unpackDescription(text), text);
}

TEST(AnUnpacker, UnpacksTheOneFileOfAZip)
{
    EXPECT_EQ(unpackDescription(zipOf({{"camera.xml", longText()}})), longText());
    EXPECT_EQ(unpackDescription(zipOf({{"empty.xml", ""}})), "");
}

TEST(AnUnpacker, TakesAZipThatIsFilledUpWithZeros)
{
    const auto zip = zipOf({{"camera.xml", longText()}});
    for (const std::size_t zeros : {1, 2, 3, 500})
        EXPECT_EQ(unpackDescription(zip + std::string(zeros, '\0')), longText()) << zeros;
}

TEST(AnUnpacker, TakesTextUpToItsBound)
{
    const std::string most(MaxDescriptionSize, ' ');
    EXPECT_EQ(unpackDescription(most).size(), most.size());
    EXPECT_EQ(unpackDescription(zipOf({{"camera.xml", most}})).size(), most.size());
    EXPECT_THAT(refusal(most + ' '), HasSubstr("more than"));
    EXPECT_THAT(refusal(zipOf({{"camera.xml", most + ' '}})), HasSubstr("more than"));
}

TEST(AnUnpacker, RefusesZipsThatAreNotOnePlainFile)
{
    const auto text = longText();
    EXPECT_THAT(refusal(zipOf({{"a.xml", text}, {"b.xml", text}})), HasSubstr("2 files"));
    for (const char* name : {"../camera.xml", "/etc/camera.xml", "folder/camera.xml", "..\\camera.xml", ".."})
        EXPECT_THAT(refusal(zipOf({{name, text}})), HasSubstr("folder")) << name;
    EXPECT_THAT(refusal(zipOf({{"a.xml", text}}, true)), HasSubstr("encrypted"));
}

TEST(AnUnpacker, RefusesADamagedZipWhereverTheDamageIs)
{
    const auto zip = zipOf({{"camera.xml", longText()}});
    for (std::size_t size = 4; size < zip.size(); size += 101)
        EXPECT_THAT(refusal(zip.substr(0, size)), HasSubstr("zip")) << size;
    for (std::size_t at = 100; at < zip.size() - 200; at += 101) {
        auto damaged = zip;
        damaged[at] = static_cast<char>(damaged[at] ^ 0x40);
        EXPECT_THAT(refusal(damaged), HasSubstr("zip")) << at;
    }
}

TEST(AnUnpacker, RefusesAZipThatHoldsMoreThanItSays)
{
    const std::string text(1 << 20, 'x');
    auto zip = zipOf({{"camera.xml", text}});
    const std::string size("\x00\x00\x10\x00", 4);
    for (auto at = zip.find(size); at != zip.npos; at = zip.find(size, at))
        zip.replace(at, 4, std::string("\x10\x00\x00\x00", 4));
    EXPECT_THAT(refusal(zip), HasSubstr("zip"));
}
