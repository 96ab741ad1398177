// SPDX-License-Identifier: Apache-2.0
#include "tests/genapi/Descriptions.h"
#include "tests/support/Sanitizers.h"
#include "tests/support/Zips.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <malloc.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

using testing::HasSubstr;
using testing::IsEmpty;

namespace {

/// A description of that many features, documented as real ones are.
std::string realisticDescription(int features)
{
    std::string nodes;
    for (int i = 0; i < features; ++i) {
        const auto name = "Feature" + std::to_string(i);
        nodes += "<Integer Name=\"" + name + "\" NameSpace=\"Custom\">" +
                 element("ToolTip", "Sets feature number " + std::to_string(i) + " of the camera.") +
                 element("Visibility", "Expert") + element("pValue", name + "Reg") + element("Min", "0") +
                 "</Integer>\n" +
                 registerNode("IntReg", name + "Reg", std::to_string(4096 + 4 * i), "4",
                              element("Cachable", "NoCache") + element("Sign", "Unsigned") +
                                  element("Endianess", "BigEndian"));
    }
    return description(nodes);
}

/// How much memory (bytes) it takes, at the most, to load the data after all that this process holds already,
/// in a process of its own that may take a second of CPU time; -1 when that does not end as loading should.
long memoryToLoad(const std::string& data)
{
    int ends[2];
    if (pipe(ends) != 0)
        return -1;
    malloc_trim(0); // Else the child has free memory from the start, which would not count.
    const pid_t child = fork();
    if (child == 0) {
        const auto peak = [] {
            rusage usage{};
            getrusage(RUSAGE_SELF, &usage);
            return usage.ru_maxrss * 1024;
        };
        if (!IsSanitized) {
            const rlimit second{1, 1};
            setrlimit(RLIMIT_CPU, &second);
        }
        const long before = peak();
        refusalOf(data);
        const long grown = peak() - before;
        _exit(write(ends[1], &grown, sizeof grown) == sizeof grown ? 0 : 1);
    }
    close(ends[1]);
    long grown = -1;
    const bool isRead = read(ends[0], &grown, sizeof grown) == sizeof grown;
    close(ends[0]);
    int status = 0;
    waitpid(child, &status, 0);
    return isRead && status == 0 ? grown : -1;
}

std::string repeated(const std::string& text, int count)
{
    std::string all;
    all.reserve(text.size() * static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i)
        all += text;
    return all;
}

const std::string billionLaughs = R"(<!DOCTYPE d [<!ENTITY a "aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa">
<!ENTITY b "&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;"><!ENTITY c "&b;&b;&b;&b;&b;&b;&b;&b;&b;&b;">
<!ENTITY d "&c;&c;&c;&c;&c;&c;&c;&c;&c;&c;"><!ENTITY e "&d;&d;&d;&d;&d;&d;&d;&d;&d;&d;">]>
<RegisterDescription><Integer Name="N"><Value>&e;</Value></Integer></RegisterDescription>)";

const std::string externalEntity =
    R"(<!DOCTYPE d SYSTEM "http://192.0.2.1/d.dtd" [<!ENTITY a SYSTEM "file:///etc/hostname">]>
<RegisterDescription><Integer Name="N"><Value>&a;</Value></Integer></RegisterDescription>)";

} // namespace

TEST(AText, IsRefusedUnlessItIsADescription)
{
    const std::pair<std::string, std::string> rows[] = {
        {"", "empty"},
        {std::string(64, '\0'), "empty"},
        {"   \n", "empty"},
        {"no XML at all", "XML"},
        {std::string("<RegisterDescription>\0</RegisterDescription>", 44), "no text"},
        {"<html></html>", "RegisterDescription"},
        {"<RegisterDescription>", "XML"},
        {"<RegisterDescription><Integer Name=\"N></RegisterDescription>", "XML"},
        {"<!DOCTYPE RegisterDescription><RegisterDescription/>", "document type"},
        {billionLaughs, "document type"},
        {externalEntity, "document type"},
        {description("<Integer Name=\"N\"/><Group><Boolean Name=\"N\"/></Group>"), "two nodes named 'N'"},
        {description(repeated("<a>", 200'000) + repeated("</a>", 200'000)), "nested"},
        {repeated("<RegisterDescription>", 200'000), "XML"},
        {description(repeated("<Integer/>", 400'000)), "more"},
        {description(repeated("<Integer><Value>1</Value></Integer>", 60'000)), "more than"},
        {description("<Integer " + repeated("a='' ", 600'000) + "/>"), "more"},
        {description("<Integer Name=\"" + std::string(300, 'N') + "\"/>"), "name of 300"},
    };
    for (const auto& [text, reason] : rows)
        EXPECT_THAT(refusalOf(text), HasSubstr(reason)) << text.substr(0, 60);
}

TEST(AText, MayHoldWhatReadersOfXmlDislike)
{
    const std::string plain = description("<Integer Name=\"N\"><Value>1</Value></Integer>");
    const std::vector<std::string> texts{
        "\xEF\xBB\xBF" + plain,
        plain + std::string(500, '\0'),
        plain + std::string("\0\n\0 \0\r\n", 7),
        std::string(3, '\0') + " \n" + plain,
        description("<Integer Name=\"N\"><ToolTip>Gr\xF6\xDF"
                    "e &unknown; \x01</ToolTip><Value>1</Value></Integer>"),
        description("<Integer Name=\"N\"><Value><![CDATA[ 1 ]]></Value></Integer>"),
        description(
            "<!-- c --><Integer Name=\"N\" Name=\"M\" Unknown=\"&#1;\"><Value>1<!-- c --></Value></Integer>"),
        description(
            "<Group Comment=\"g\"><Group><Integer Name=\"N\"><Value>1</Value></Integer></Group></Group>"),
        description(
            "<Unknown Name=\"N\"/>text<Integer Name=\"N\">text<Value>1</Value><Value2>2</Value2></Integer>"),
    };
    for (const auto& text : texts) {
        ASSERT_THAT(refusalOf(text), IsEmpty()) << text;
        auto* number = nodeAs<GenApi::IInteger>(*load(text), "N");
        ASSERT_TRUE(number) << text;
    }
}

TEST(AText, IsRefusedWhereverItIsCutOff)
{
    const auto text = realisticDescription(3000);
    ASSERT_GT(text.size(), 1'000'000U);
    ASSERT_THAT(refusalOf(text), IsEmpty());
#ifdef __SANITIZE_THREAD__
    constexpr std::size_t Step = 20'000; // Many times slower, and there is one thread alone.
#else
    constexpr std::size_t Step = 1000;
#endif
    for (std::size_t size = 0; size < text.size() - 30; size += Step)
        ASSERT_THAT(refusalOf(text.substr(0, size)), HasSubstr("cannot be used")) << size;
}

TEST(ADescriptionOfAnySize, TakesLessThan64MegabytesAndASecond)
{
    if (IsSanitized)
        GTEST_SKIP() << "The sanitizer's memory would be measured.";
    constexpr long most = 64 * 1024 * 1024;
    const std::string gigabytes = zipOf({{"bomb.xml", std::string(200 * 1024 * 1024, ' ')}});
    auto lying = zipOf({{"bomb.xml", std::string(64 * 1024 * 1024, ' ')}});
    const std::string size("\0\0\0\4", 4);
    for (auto at = lying.find(size); at != lying.npos; at = lying.find(size, at))
        lying.replace(at, 4, std::string("\0\0\x7F\0", 4));
    const std::pair<const char*, std::string> rows[] = {
        {"a real one", realisticDescription(3000)},
        {"as many nodes as there may be",
         description(repeated("<Integer><Value>1</Value></Integer>", 39'000))},
        {"as many properties as there may be",
         description("<Integer>" + repeated("<Value>1234567890</Value>", 79'000) + "</Integer>")},
        {"as many elements as there may be", description(repeated("<Unknown/>", 490'000))},
        {"as many attributes as there may be", description("<Integer " + repeated("a='' ", 490'000) + "/>")},
        {"as many bytes as there may be",
         description(element("Integer", element("Value", std::string(8'000'000, '1'))))},
        {"nested elements", repeated("<a>", 200'000)},
        {"a zip of far too much", gigabytes},
        {"a zip that lies about it", lying},
        {"entities", billionLaughs},
    };
    for (const auto& [name, data] : rows) {
        const long memory = memoryToLoad(data);
        RecordProperty(name, std::to_string(memory));
        std::cout << name << ": " << memory / 1024 << " KiB\n";
        EXPECT_GE(memory, 0) << name;
        EXPECT_LT(memory, most) << name;
    }
}
