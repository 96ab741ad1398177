// SPDX-License-Identifier: Apache-2.0
#include "sdk/description/DescriptionUrl.h"

#include <gtest/gtest.h>

#include <string>

using sdk::parseDescriptionUrl;

TEST(DescriptionUrl, InTheCameraIsUnderstoodInEverySpelling)
{
    struct Row
    {
        std::string text;
        std::uint32_t address;
        std::uint32_t length;
    };
    const Row rows[] = {
        {"Local:Name_Version_3_3.zip;c0000000;10cca", 0xC0000000, 0x10CCA},
        {"local:C4_2040_GigE_1.0.0.zip;0x8C400904;0x4D30", 0x8C400904, 0x4D30},
        {"Local: guide_gige_test.zip; 00010000; 06c5", 0x10000, 0x6C5},
        {"Local:X.ZIP;8001000;395C?SchemaVersion=1.1.0", 0x8001000, 0x395C},
        {"Local:///file;1000;20", 0x1000, 0x20},
        {"LOCAL:F.XML;0X1000;0XaB", 0x1000, 0xAB},
        {"  Local:F.xml;1000;20 \r\n", 0x1000, 0x20},
        {"Local:a;b;c.xml;1000;20", 0x1000, 0x20},
        {"Local:;1000;20", 0x1000, 0x20},
        {"Local:F.xml;0;20", 0, 0x20},
        {"Local:F.xml;FFFFFF00;100", 0xFFFFFF00, 0x100},
        {"Local:F.xml;0000000C0000000;00000000000020", 0xC0000000, 0x20},
        {std::string("Local:F.xml;1000;20\0;30;40", 26), 0x1000, 0x20},
        {"Local:F.xml;1000;20?a=b;c;d", 0x1000, 0x20},
    };
    for (const Row& row : rows) {
        const auto url = parseDescriptionUrl(row.text);
        ASSERT_TRUE(url) << row.text;
        EXPECT_TRUE(url->isLocal) << row.text;
        EXPECT_EQ(url->address, row.address) << row.text;
        EXPECT_EQ(url->length, row.length) << row.text;
    }
}

TEST(DescriptionUrl, OutsideTheCameraIsKnownAsSuch)
{
    for (const char* text :
         {"File:C:\\Program Files\\camera.xml", "file:///etc/passwd", "http://www.example.com/camera.zip",
          "HTTPS://example.com/x;1000;20", " http://x", "ftp://example.com/camera.xml"}) {
        const auto url = parseDescriptionUrl(text);
        ASSERT_TRUE(url) << text;
        EXPECT_FALSE(url->isLocal) << text;
    }
}

TEST(DescriptionUrl, ThatMakesNoSenseIsNone)
{
    for (const char* text :
         {"", "   ", "Local", "Local:", "Local:F.xml", "Local:F.xml;1000", "Local:F.xml;1000;",
          "Local:F.xml;;20", "Local:F.xml;1000;0", "Local:F.xml;1000;-20", "Local:F.xml;1000;2g",
          "Local:F.xml;1000;20 30", "Local:F.xml;100000000;20", "Local:F.xml;1000;100000000",
          "Local:F.xml;FFFFFF00;101", "Local:F.xml;0x;0x", "Local:F.xml;0x0x1000;20", "Other:F.xml;1000;20",
          "?Local:F.xml;1000;20"})
        EXPECT_FALSE(parseDescriptionUrl(text)) << text;
}
