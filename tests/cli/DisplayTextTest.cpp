// SPDX-License-Identifier: Apache-2.0
#include "cli/text/DisplayText.h"

#include "cli/text/TextTable.h"

#include <gtest/gtest.h>

TEST(DisplayText, LeavesWhatATerminalShows)
{
    for (const char* text : {"", "Left camera", "瓶盖检测", "Grünfläche", "e\u0301", "\U0001F4F7", "a  b"})
        EXPECT_EQ(cli::displayText(std::string(text)), text);
}

TEST(DisplayText, EscapesWhatATerminalObeys)
{
    const struct
    {
        const char* text;
        const char* shown;
    } table[] = {
        {"\x1B[31mred", "\\x1B[31mred"},
        {"a\nb\r\tc", "a\\x0Ab\\x0D\\x09c"},
        {"\x7F", "\\x7F"},
        {"\u0085\u009B", "\\x85\\x9B"},
        {"\u202Egnp", "\\u202Egnp"},
        {"\u2066x\u2069", "\\u2066x\\u2069"},
        {"\u200E\u061C", "\\u200E\\u061C"},
        {"\u2028\u2029", "\\u2028\\u2029"},
        {"a\u200Bb\uFEFF", "a\\u200Bb\\uFEFF"},
        {"\U000E0041", "\\U000E0041"},
        {"C:\\x1B", "C:\\\\x1B"},
    };
    for (const auto& each : table)
        EXPECT_EQ(cli::displayText(std::string(each.text)), each.shown);
}

TEST(DisplayText, IsUtf8WhateverCameIn)
{
    EXPECT_EQ(cli::displayText(std::string("a\xFFz")), "a\uFFFDz");
    EXPECT_EQ(cli::displayText(std::string("\xE7\x93z")), "\uFFFD\uFFFDz");
    const QChar loneSurrogate(0xD800);
    EXPECT_EQ(cli::displayText(QString(loneSurrogate)), "\uFFFD");
}

TEST(DisplayWidth, CountsColumnsWhateverTheLocale)
{
    EXPECT_EQ(cli::displayWidth(""), 0);
    EXPECT_EQ(cli::displayWidth("Left"), 4);
    EXPECT_EQ(cli::displayWidth("瓶盖"), 4);
    EXPECT_EQ(cli::displayWidth("ｱｲ"), 2);
    EXPECT_EQ(cli::displayWidth("ＡＢ"), 4);
    EXPECT_EQ(cli::displayWidth("한글"), 4);
    EXPECT_EQ(cli::displayWidth("e\u0301e\u0301"), 2);
    EXPECT_EQ(cli::displayWidth("ü\uFFFD"), 2);
    EXPECT_EQ(cli::displayWidth("\U0001F4F7"), 2);
}

TEST(TextTable, AlignsColumnsByTheirWidthOnATerminal)
{
    cli::TextTable table;
    table.addRow({{"a", {}}, {"瓶盖", {}}, {"1", {}}});
    table.addRow({{"bbb", {}}, {"e\u0301", {}}, {"2", {}}});
    EXPECT_EQ(table.text(), "a    瓶盖  1\n"
                            "bbb  e\u0301     2\n");
}

TEST(TextTable, EndsNoLineInSpaces)
{
    cli::TextTable table;
    table.addRow({{"a", {}}, {"", {}}, {"", {}}});
    table.addRow({{"", {}}, {"b", {}}, {"c", {}}});
    EXPECT_EQ(table.text(), "a\n"
                            "   b  c\n");
}

TEST(TextTable, ColoursTheTextAndNotTheSpaces)
{
    cli::TextTable table;
    table.addRow({{"a", "\x1B[31m"}, {"b", {}}});
    table.addRow({{"long", {}}, {"c", {}}});
    EXPECT_EQ(table.text(), "\x1B[31ma\x1B[0m     b\n"
                            "long  c\n");
}
