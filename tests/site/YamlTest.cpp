// SPDX-License-Identifier: Apache-2.0
// What of YAML a site file may have, and what would tire a reader.
#include "site/ReadSite.h"

#include <gmock/gmock.h>

using site::SiteError;

namespace {

struct Refused
{
    const char* name;
    std::string text;
    std::string refusal; ///< With line and column.
};

void PrintTo(const Refused& each, std::ostream* out)
{
    *out << each.text.substr(0, 200);
}

std::string refusal(const std::string& text)
{
    try {
        site::readSite(text);
    } catch (const SiteError& error) {
        return std::to_string(error.line()) + ":" + std::to_string(error.column()) + " " + error.what();
    }
    return {};
}

std::string times(std::size_t count, const std::string& text)
{
    std::string result;
    result.reserve(count * text.size());
    while (count-- > 0)
        result += text;
    return result;
}

class RefusedYaml : public testing::TestWithParam<Refused>
{};

class TiringYaml : public testing::TestWithParam<Refused>
{};

std::string nameOf(const testing::TestParamInfo<Refused>& info)
{
    return info.param.name;
}

} // namespace

TEST_P(RefusedYaml, IsToldWhereItIsWrong)
{
    EXPECT_EQ(refusal(GetParam().text), GetParam().refusal);
}

INSTANTIATE_TEST_SUITE_P(
    All, RefusedYaml,
    testing::Values(
        Refused{"AList", "version: [1]\n", "1:10 A list stands here; members with their values are allowed"},
        Refused{"AListOfLines", "- version: 1\n",
                "1:1 A list stands here; members with their values are allowed"},
        Refused{"AnAnchor", "version: &a 1\n", "1:10 An anchor stands here; a value is allowed"},
        Refused{"AnAlias", "version: &a 1\ncameras: *a\n", "1:10 An anchor stands here; a value is allowed"},
        Refused{"ATag", "version: !!int 1\n", "1:10 A tag stands here; a value is allowed"},
        Refused{"ATagThatSaysNothing", "version: ! 1\n", "1:10 A tag stands here; a value is allowed"},
        Refused{"ATagOfAMapping", "!mine {version: 1}\n", "1:1 A tag stands here; a value is allowed"},
        Refused{"AMappingAsAName", "? {a: b}\n: 1\n",
                "1:3 A member has a mapping as its name; a text is allowed"},
        Refused{"TwoDocuments", "version: 1\n---\nversion: 1\n",
                "2:1 A second document begins here; one is allowed"},
        Refused{"TooDeep", "{a: {a: {a: {a: {a: {a: {a: {a: {a: 1}}}}}}}}}",
                "1:33 Too many mappings are inside each other; 8 are allowed"},
        Refused{"ANul", std::string("version: 1\ncam\0", 15),
                "2:4 The file has a NUL in it; text is allowed"},
        Refused{"NoUtf8",
                "# K\xC3\xBC"
                "che\n# \xFCr\n",
                "2:3 What stands here is no UTF-8, which alone is allowed"},
        Refused{"UnfinishedUtf8", "# \xE2\x82", "1:3 What stands here is no UTF-8, which alone is allowed"},
        Refused{"AControlCharacterThatEndsTheTextForTheParser", "version: 1\n\x04 \"",
                "2:1 A control character stands here; an escape in a text in double quotes is allowed"},
        Refused{"AControlCharacterOfTwoBytes", "version: 1 # \xC2\x9B",
                "1:14 A control character stands here; an escape in a text in double quotes is allowed"},
        Refused{"AFault", "version: 1\n  cameras: {}\n", "2:10 This is no YAML: illegal map value"},
        Refused{"ColumnsCountCharacters", "\"\xC3\xBC\": [1]\n",
                "1:6 A list stands here; members with their values are allowed"},
        Refused{"ColumnsBehindAByteOrderMark", "\xEF\xBB\xBF[1]\n",
                "1:1 A list stands here; members with their values are allowed"}),
    nameOf);

TEST(LargeYaml, IsLookedAtUpToAMegabyte)
{
    const std::string text = "version: 1\ncameras: {}\n";
    const std::size_t megabyte = std::size_t{1} << 20;
    EXPECT_EQ(refusal(text + std::string(megabyte - text.size(), '\n')), "");
    EXPECT_EQ(refusal(text + std::string(megabyte - text.size() + 1, '\n')),
              "0:0 The file is too long; a megabyte is allowed");
}

TEST(LargeYaml, WithALongTextIsRefused)
{
    const auto withModel = [](std::size_t size) {
        return "version: 1\ncameras:\n  a: {match: {serial: a}, mode: dhcp, model: " +
               std::string(size, 'm') + "}\n";
    };
    EXPECT_EQ(refusal(withModel(4096)), "");
    EXPECT_EQ(refusal(withModel(4097)), "3:46 This text is too long; 4096 bytes are allowed");
}

TEST(LargeYaml, WithTooManyValuesIsRefused)
{
    std::string text = "version: 1\ncameras:\n";
    for (int i = 0; i < 6000; ++i)
        text += "  p" + std::to_string(i) + ": {}\n";
    EXPECT_EQ(refusal(text), "3:7 match is missing here; it is needed");
    for (int i = 6000; i < 10000; ++i)
        text += "  p" + std::to_string(i) + ": {}\n";
    EXPECT_THAT(refusal(text), testing::EndsWith(" The file has too many values; 20000 are allowed"));
}

TEST_P(TiringYaml, IsRefusedAtOnce)
{
    EXPECT_THAT(refusal(GetParam().text), testing::StartsWith(GetParam().refusal));
}

INSTANTIATE_TEST_SUITE_P(
    Nested, TiringYaml,
    testing::Values(
        Refused{"Lists", times(1000000, "["), "1:"}, Refused{"Mappings", times(1000000, "{"), "1:"},
        Refused{"MappingsWithNames", times(200000, "{a: "), "1:"},
        Refused{"ListsInALine", times(500000, "- "), "1:1 A list"},
        Refused{"Questions", times(500000, "? "), "1:3 A member has a mapping as its name"},
        Refused{"Answers", times(500000, ": "), "1:"}, Refused{"Anchors", times(300000, "&a "), "1:"},
        Refused{"Tags", times(300000, "!a "), "1:"}, Refused{"Ends", times(1000000, "}"), "1:"},
        Refused{"ListsAndMappings", times(500000, "[{"), "1:"}, Refused{"Quotes", times(1000000, "\""), "1:"},
        Refused{"Documents", times(260000, "---\n"), "2:1 A second document"},
        Refused{"Directives", times(100000, "%YAML 1.2\n"), ""}, Refused{"Names", times(300000, "a: "), "1:"},
        Refused{"Commas", "{" + times(1000000, ","), "1:"}),
    nameOf);
