// SPDX-License-Identifier: Apache-2.0
#include "sdk/description/Unzip.h"

#include "tests/support/Zips.h"

#include <gtest/gtest.h>

using sdk::isZip;
using sdk::unzip;

namespace {

base::Bytes bytesOf(const std::string& text)
{
    return {text.begin(), text.end()};
}

const std::string Text = "<RegisterDescription>" + std::string(100'000, ' ') + "</RegisterDescription>";

} // namespace

TEST(Unzip, GivesTheFirstFile)
{
    EXPECT_EQ(unzip(bytesOf(zipOf({{"a.xml", Text}})), 1'000'000), bytesOf(Text));
    EXPECT_EQ(unzip(bytesOf(zipOf({{"a.xml", "first"}, {"b.xml", "second"}})), 1'000'000), bytesOf("first"));
}

TEST(Unzip, KnowsAnArchiveByItsFirstBytes)
{
    EXPECT_TRUE(isZip(bytesOf(zipOf({{"a.xml", Text}}))));
    for (const char* text : {"", "PK", "PK\3", "<PK\3\4", "PK\5\6"})
        EXPECT_FALSE(isZip(bytesOf(text))) << text;
}

TEST(Unzip, UnpacksNoMoreThanIsAllowed)
{
    const auto archive = bytesOf(zipOf({{"a.xml", Text}}));
    EXPECT_TRUE(unzip(archive, Text.size()));
    EXPECT_FALSE(unzip(archive, Text.size() - 1));
}

TEST(Unzip, TakesAnArchiveThatTheCameraHasFilledUpWithNuls)
{
    auto archive = bytesOf(zipOf({{"a.xml", Text}}));
    archive.insert(archive.end(), 3, 0);
    EXPECT_EQ(unzip(archive, 1'000'000), bytesOf(Text));
}

TEST(Unzip, GivesNothingForADamagedArchive)
{
    const auto archive = bytesOf(zipOf({{"a.xml", Text}}));
    for (std::size_t size = 0; size < archive.size(); size += 7)
        EXPECT_FALSE(unzip(base::ByteView(archive).first(size), 1'000'000)) << size;
    for (std::size_t at = 0; at < archive.size(); ++at) {
        auto damaged = archive;
        damaged[at] ^= 0xFF;
        const auto content = unzip(damaged, 1'000'000); // Perhaps it is not the content that is damaged.
        EXPECT_TRUE(!content || *content == bytesOf(Text)) << at;
    }
    EXPECT_FALSE(unzip(bytesOf("PK\3\4 and no archive"), 1'000'000));
    EXPECT_FALSE(unzip({}, 1'000'000));
}

TEST(Unzip, GivesNothingOfAnEncryptedFile)
{
    EXPECT_FALSE(unzip(bytesOf(zipOf({{"a.xml", Text}}, true)), 1'000'000));
}
