// SPDX-License-Identifier: Apache-2.0
#include "widgets/Frame.h"

#include "tests/widgets/ScriptedUname.h"
#include "widgets/QDialogEx.h"

#include <gtest/gtest.h>

namespace {

struct Answer
{
    const char* output;
    bool ubuntu;
};

void PrintTo(const Answer& answer, std::ostream* stream)
{
    *stream << '"' << answer.output << '"';
}

class UbuntuSystemTest : public testing::TestWithParam<Answer>
{};

} // namespace

TEST_P(UbuntuSystemTest, IsSaidByUname)
{
    const ScriptedUname uname(GetParam().output);
    EXPECT_EQ(IsUbuntuSystem(), GetParam().ubuntu);
    EXPECT_EQ(QDialogEx::IsUbuntuSystem(), GetParam().ubuntu);
}

INSTANTIATE_TEST_SUITE_P(Answers, UbuntuSystemTest,
                         testing::Values(Answer{"Linux host 6.8.0-45-generic #45-Ubuntu SMP x86_64", true},
                                         Answer{"Ubuntu", true},
                                         Answer{"Linux ubuntu 6.1.0-25-amd64 #1 SMP Debian", false},
                                         Answer{"", false}));

TEST(UbuntuSystemTest, IsDeniedWithoutUname)
{
    const QByteArray path = qgetenv("PATH");
    qputenv("PATH", "/nowhere");
    EXPECT_FALSE(IsUbuntuSystem());
    qputenv("PATH", path);
}
