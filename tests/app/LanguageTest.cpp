// SPDX-License-Identifier: Apache-2.0
#include "tests/app/InstalledProgram.h"

#include <gtest/gtest.h>

namespace {

/// What the probe prints for these languages, with this file missing.
std::string spoken(const std::vector<std::string>& languages, const std::string& missing = {})
{
    const InstalledProgram probe(LANGUAGE_PROBE, "language-probe");
    if (!missing.empty())
        probe.remove(missing);
    return probe.run(languages).standardOutput;
}

constexpr const char* OwnTexts = "Kelo_ip_configurator_en.qm";
constexpr const char* QtsTexts = "qt_zh_CN.qm";

} // namespace

TEST(Language, OneIsChineseForTheProgramsTextsAndQts)
{
    EXPECT_EQ(spoken({"1"}), "1 修改 IP 取消\n");
    EXPECT_EQ(spoken({"1", "1"}), "1 修改 IP 取消\n1 修改 IP 取消\n");
}

TEST(Language, ZeroIsEnglish)
{
    EXPECT_EQ(spoken({"0"}), "1 Modify IP Cancel\n");
    EXPECT_EQ(spoken({"1", "0"}), "1 修改 IP 取消\n1 Modify IP Cancel\n");
    EXPECT_EQ(spoken({"1", "1", "0"}), "1 修改 IP 取消\n1 修改 IP 取消\n1 Modify IP Cancel\n");
}

TEST(Language, AnyOtherNumberChangesNothing)
{
    EXPECT_EQ(spoken({"2"}), "1 Modify IP Cancel\n");
    EXPECT_EQ(spoken({"1", "-1"}), "1 修改 IP 取消\n1 修改 IP 取消\n");
}

TEST(Language, ComesWithBothTranslationsOrNone)
{
    EXPECT_EQ(spoken({"1"}, OwnTexts), "0 Modify IP Cancel\n");
    EXPECT_EQ(spoken({"1"}, QtsTexts), "0 Modify IP Cancel\n");
    EXPECT_EQ(spoken({"0"}, QtsTexts), "0 Modify IP Cancel\n");
}

TEST(Language, StaysEnglishWhereAFileHoldsNoTranslation)
{
    for (const char* file : {OwnTexts, QtsTexts}) {
        const InstalledProgram probe(LANGUAGE_PROBE, "language-probe");
        probe.write(file, "no translation\n");
        EXPECT_EQ(probe.run({"1"}).standardOutput, "0 Modify IP Cancel\n");
    }
}
