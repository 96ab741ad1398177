// SPDX-License-Identifier: Apache-2.0
#include "save/ErrorText.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <string>

TEST(ErrorTextTest, IsEmptyAtFirst)
{
    EXPECT_STREQ(ErrorText().Get(), "");
}

TEST(ErrorTextTest, HoldsTheLastTextAndNothingOfTheOneBefore)
{
    ErrorText text;
    text.Format("code 0x%x of %s", 255u, "something long");
    EXPECT_STREQ(text.Get(), "code 0xff of something long");
    text.Format("short");
    EXPECT_STREQ(text.Get(), "short");
    EXPECT_TRUE(std::all_of(text.Get() + 5, text.Get() + ErrorText::Size, [](char c) { return c == '\0'; }));
}

TEST(ErrorTextTest, CutsWhatIsLongerThan511Bytes)
{
    ErrorText text;
    text.Format("%s", std::string(511, 'a').c_str());
    EXPECT_EQ(text.Get(), std::string(511, 'a'));
    text.Format("%s", std::string(5000, 'b').c_str());
    EXPECT_EQ(text.Get(), std::string(511, 'b'));
}
