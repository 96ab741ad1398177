// SPDX-License-Identifier: Apache-2.0
#include "genapi/description/Formula.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace genapi;
using testing::ElementsAre;

TEST(Brackets, AreCountedWhereTheyAreDeepest)
{
    const std::pair<const char*, std::size_t> rows[] = {
        {"", 0}, {"A + B", 0}, {"(A) + (B)", 1}, {"((A) + (B))", 2}, {")))(", 1}, {"(((", 3},
    };
    for (const auto& [formula, depth] : rows)
        EXPECT_EQ(bracketDepth(formula), depth) << formula;
}

TEST(Names, AreWhatIsNoNumber)
{
    EXPECT_THAT(namesIn("A_1*0xFF+1e5-2.5E-3+SIN(B.Max) && A_1"), ElementsAre("A_1", "SIN", "B.Max", "A_1"));
}

TEST(DivisionGuard, LeavesWhatDividesByNothingOrAPlainNumber)
{
    for (const std::string formula :
         {"", "A + B * C", "A / 2", "A % 16 / 4 ", "(A) ** 2", "A /", "A / )", "A / / B"}) {
        const auto guarded = guardDivisions(formula);
        const bool isWhole = formula.find("/ /") == formula.npos && formula.find("/ )") == formula.npos &&
                             !formula.ends_with('/');
        EXPECT_EQ(guarded, isWhole ? std::optional(formula) : std::nullopt) << formula;
    }
}

TEST(DivisionGuard, ChangesAllOfTheDivisorAndNothingElse)
{
    const auto divided = [](const std::string& d) {
        return "A /((" + d + ")+2*((" + d + ")=(-1)))*(1-2*((" + d + ")=(-1)))";
    };
    EXPECT_EQ(guardDivisions("A / B"), divided("B"));
    EXPECT_EQ(guardDivisions("A / -1"), divided("-1"));
    EXPECT_EQ(guardDivisions("A / 2.5E-1"), divided("2.5E-1"));
    EXPECT_EQ(guardDivisions("A / - (B + 1) ** C * D"), divided("- (B + 1) ** C") + " * D");
    EXPECT_EQ(guardDivisions("A / NEG ( B )+1"), divided("NEG ( B )") + "+1");
    EXPECT_EQ(guardDivisions("A % B"), "A %((B)+2*((B)=(-1)))");
}

TEST(DivisionGuard, GivesUpWhereTheResultWouldBeTooLong)
{
    std::string nested = "B";
    for (int i = 0; i < 30; ++i)
        nested = "A / (" + nested + ")";
    EXPECT_EQ(guardDivisions(nested), std::nullopt);
}
