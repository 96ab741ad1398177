// SPDX-License-Identifier: Apache-2.0
#include "tests/app/InstalledProgram.h"

#include <gtest/gtest.h>

namespace {

constexpr const char* English = "IP Configurator";
constexpr const char* Chinese = "IP 配置工具";

struct Start
{
    const char* settings; ///< Null: there is no such file.
    std::vector<std::string> arguments;
    const char* missing; ///< A file that is not there, or null.
    const char* title;
};

/// The title of the window that the program opens then.
std::string titleOf(const Start& start)
{
    const InstalledProgram program(PROGRAM);
    if (start.settings)
        program.writeSettings(start.settings);
    if (start.missing)
        program.remove(start.missing);
    const lab::Process process = program.start(start.arguments);
    return program.askWindow({"getwindowname", program.window(process)});
}

void expectTitles(const std::vector<Start>& starts)
{
    for (const Start& start : starts) {
        SCOPED_TRACE(std::string(start.settings ? start.settings : "no settings") + " | " +
                     (start.arguments.empty() ? "no argument" : start.arguments.front()));
        EXPECT_EQ(titleOf(start), start.title);
    }
}

constexpr const char* AsksForEnglish = "[Common]\nLanguage=0\n";
constexpr const char* AsksForChinese = "[Common]\nLanguage=1\n";

} // namespace

TEST(ProgramLanguage, IsWhatTheSettingsFileSays)
{
    expectTitles({
        {nullptr, {}, nullptr, English},
        {AsksForEnglish, {}, nullptr, English},
        {AsksForChinese, {}, nullptr, Chinese},
        {"[Common]\n", {}, nullptr, English},
        {"[Other]\nLanguage=1\n", {}, nullptr, English},
        {"[Common]\nLanguage=zh\n", {}, nullptr, English},
    });
}

TEST(ProgramLanguage, StaysEnglishForANumberThatIsNoLanguage)
{
    expectTitles({
        {"[Common]\nLanguage=2\n", {}, nullptr, English},
        {"[Common]\nLanguage=-1\n", {}, nullptr, English},
    });
}

TEST(ProgramLanguage, IsWhatTheFirstArgumentSaysWhateverTheSettingsFileSays)
{
    expectTitles({
        {nullptr, {"CH"}, nullptr, Chinese},
        {AsksForEnglish, {"CH"}, nullptr, Chinese},
        {AsksForChinese, {"ENG"}, nullptr, English},
    });
}

TEST(ProgramLanguage, IsNotChangedByAnArgumentOfOtherCaseOrSpelling)
{
    for (const char* argument : {"ch", "Ch", "CHN", "--CH", ""})
        expectTitles({{AsksForEnglish, {argument}, nullptr, English}});
    for (const char* argument : {"eng", "EN", "ENGLISH", "-ENG"})
        expectTitles({{AsksForChinese, {argument}, nullptr, Chinese}});
    expectTitles({{AsksForEnglish, {"x", "CH"}, nullptr, English}});
}

TEST(ProgramLanguage, IsEnglishWhereEitherTranslationIsMissing)
{
    expectTitles({
        {AsksForChinese, {}, "Kelo_ip_configurator_en.qm", English},
        {AsksForChinese, {}, "qt_zh_CN.qm", English},
        {nullptr, {"CH"}, "Kelo_ip_configurator_en.qm", English},
        {nullptr, {"CH"}, "qt_zh_CN.qm", English},
    });
}
