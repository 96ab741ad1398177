// SPDX-License-Identifier: Apache-2.0
#include "ui/QEditPanel.h"

#include <gtest/gtest.h>

namespace {

QString CutUserName(const QString& name)
{
    return QEditPanel::CutUserName(name);
}

} // namespace

TEST(UserNameTest, ANameOfFifteenBytesIsKeptAndALongerOneIsCut)
{
    EXPECT_EQ(CutUserName(""), "");
    EXPECT_EQ(CutUserName("123456789012345"), "123456789012345");
    EXPECT_EQ(CutUserName("1234567890123456"), "123456789012345");
    EXPECT_EQ(CutUserName(QString(200, 'x')), QString(15, 'x'));
}

TEST(UserNameTest, WhatCountsIsTheLengthInUtf8)
{
    const QString fiveCharacters = QString::fromUtf8("\u76F8\u673A\u76F8\u673A\u76F8"); // 15 bytes
    EXPECT_EQ(CutUserName(fiveCharacters), fiveCharacters);
}

TEST(UserNameTest, TheRestOfALongNameIsReadAsLatin1)
{
    const QString name = QString::fromUtf8("Caf\u00E9 of the gate"); // 16 characters, 17 bytes
    EXPECT_EQ(CutUserName(name), QString::fromUtf8("Caf\u00C3\u00A9 of the ga"));
    // A character of several bytes is cut in the middle.
    EXPECT_EQ(CutUserName(QString::fromUtf8("12345678901234\u76F8")),
              QString::fromUtf8("12345678901234\u00E7"));
}
