// SPDX-License-Identifier: Apache-2.0
#include "base/Zip.h"

#include "tests/support/Zips.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using base::isZip;
using base::unzip;
using testing::StartsWith;

namespace {

constexpr std::size_t Enough = 1'000'000;

base::Bytes bytesOf(const std::string& text)
{
    return {text.begin(), text.end()};
}

/// The text with each `from` in it replaced by a `to` of the same length.
std::string replaced(std::string text, const std::string& from, const std::string& to)
{
    for (auto at = text.find(from); at != text.npos; at = text.find(from, at + to.size()))
        text.replace(at, from.size(), to);
    return text;
}

std::string faultOf(const std::string& archive, std::size_t maxSize = Enough)
{
    const auto unzipped = unzip(bytesOf(archive), maxSize);
    EXPECT_TRUE(unzipped.fault.empty() || unzipped.content.empty());
    return unzipped.fault;
}

const std::string Text = "<RegisterDescription>" + std::string(100'000, ' ') + "</RegisterDescription>";

} // namespace

TEST(AZip, IsKnownByItsFirstBytes)
{
    EXPECT_TRUE(isZip(bytesOf(zipOf({{"a.xml", Text}}))));
    for (const char* text : {"", "PK", "PK\3", "<PK\3\4", "PK\5\6"})
        EXPECT_FALSE(isZip(bytesOf(text))) << text;
}

TEST(AZip, GivesItsFirstFileTheNameOfThatAndHowManyThereAre)
{
    const auto one = unzip(bytesOf(zipOf({{"a.xml", Text}})), Enough);
    EXPECT_EQ(one.fault, "");
    EXPECT_EQ(one.content, bytesOf(Text));
    EXPECT_EQ(one.name, "a.xml");
    EXPECT_EQ(one.fileCount, 1);

    const auto two = unzip(bytesOf(zipOf({{"../a.xml", "first"}, {"b.xml", "second"}})), Enough);
    EXPECT_EQ(two.fault, "");
    EXPECT_EQ(two.content, bytesOf("first"));
    EXPECT_EQ(two.name, "../a.xml");
    EXPECT_EQ(two.fileCount, 2);
}

TEST(AZip, MayHoldAFileThatIsEmpty)
{
    const auto unzipped = unzip(bytesOf(zipOf({{"a.xml", ""}})), Enough);
    EXPECT_EQ(unzipped.fault, "");
    EXPECT_EQ(unzipped.content, bytesOf(""));
    EXPECT_EQ(unzipped.fileCount, 1);
}

TEST(AZip, OfNoFileGivesNothing)
{
    EXPECT_EQ(faultOf("PK\5\6" + std::string(18, '\0')), "holds no file");
}

TEST(AZip, IsUnpackedUpToTheLimit)
{
    const auto archive = zipOf({{"a.xml", Text}});
    EXPECT_EQ(unzip(bytesOf(archive), Text.size()).content, bytesOf(Text));
    EXPECT_EQ(faultOf(archive, Text.size() - 1),
              "holds more than " + std::to_string(Text.size() - 1) + " bytes");
    EXPECT_EQ(faultOf(archive, 0), "holds more than 0 bytes");
}

TEST(AZip, MayBeFilledUpWithZerosByTheCamera)
{
    const auto archive = zipOf({{"a.xml", Text}});
    for (const std::size_t zeros : {1, 2, 3, 500})
        EXPECT_EQ(unzip(bytesOf(archive + std::string(zeros, '\0')), Enough).content, bytesOf(Text)) << zeros;
}

TEST(AZip, ThatIsCutOffGivesNothing)
{
    const auto archive = zipOf({{"a.xml", Text}});
    for (std::size_t size = 4; size < archive.size(); ++size)
        EXPECT_THAT(faultOf(archive.substr(0, size)), StartsWith("is damaged (")) << size;
    EXPECT_EQ(faultOf(""), "holds no file");
    EXPECT_THAT(faultOf("PK\3\4 and no archive"), StartsWith("is damaged ("));
}

TEST(AZip, WithADamagedByteGivesNothingOrWhatItHeld)
{
    const auto archive = bytesOf(zipOf({{"a.xml", Text}}));
    for (std::size_t at = 0; at < archive.size(); ++at) {
        auto damaged = archive;
        damaged[at] ^= 0xFF;
        const auto unzipped = unzip(damaged, Enough); // Perhaps it is not the content that is damaged.
        EXPECT_TRUE(unzipped.fault.empty() ? unzipped.content == bytesOf(Text) : unzipped.content.empty())
            << at;
    }
}

TEST(AZip, ThatHasAnotherChecksumThanItsFileIsDamaged)
{
    const auto archive = zipOf({{"a.xml", Text}});
    const std::string checksum = archive.substr(14, 4);
    const std::string other = replaced(archive, checksum, "none");
    ASSERT_NE(other, archive);
    EXPECT_THAT(faultOf(other), StartsWith("is damaged (CRC"));
}

TEST(AZip, ThatHoldsMoreOrLessThanItSaysGivesNothing)
{
    const auto archive = zipOf({{"a.xml", std::string(0x12345, 'x')}});
    const std::string size("\x45\x23\1\0", 4);
    for (const auto& said : {std::string("\0\1\0\0", 4), std::string("\0\0\2\0", 4)}) {
        const auto lying = replaced(archive, size, said);
        ASSERT_NE(lying, archive);
        EXPECT_EQ(faultOf(lying), "holds another number of bytes than it says");
    }
    EXPECT_EQ(faultOf(replaced(archive, size, std::string("\0\1\0\0", 4)), 1000),
              "holds more than 1000 bytes");
}

TEST(AZip, ThatIsEncryptedGivesNothing)
{
    EXPECT_EQ(faultOf(zipOf({{"a.xml", Text}}, true)), "is encrypted");
}
