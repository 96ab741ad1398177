// SPDX-License-Identifier: Apache-2.0
#include "cli/line/FileText.h"

#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <iterator>
#include <stdlib.h>
#include <system_error>

using cli::FileReplacement;
namespace fs = std::filesystem;

namespace {

/// A file "old" in a folder of the test's own.
class FileText : public testing::Test
{
protected:
    FileText()
    {
        char name[] = "/tmp/file-XXXXXX";
        folder = ::mkdtemp(name);
        path = folder / "file.yaml";
        std::ofstream(path) << "old";
    }

    ~FileText() override { fs::remove_all(folder); }

    std::string text() const { return cli::readText(path, 100); }

    std::ptrdiff_t files() const
    {
        const fs::directory_iterator all(folder);
        return std::distance(begin(all), end(all));
    }

    fs::path folder;
    std::string path;
};

} // namespace

TEST_F(FileText, IsReadUpToALimit)
{
    EXPECT_EQ(cli::readText(path, 100), "old");
    EXPECT_EQ(cli::readText(path, 2), "ol");
    EXPECT_EQ(cli::readText("/dev/zero", 1000).size(), 1000U);
    EXPECT_THROW(cli::readText(path + ".none", 100), std::system_error);
    EXPECT_THROW(cli::readText(folder, 100), std::system_error);
}

TEST_F(FileText, IsReplacedInOneStep)
{
    std::ifstream reader(path);
    {
        FileReplacement replacement(path);
        EXPECT_EQ(text(), "old");
        replacement.commit("new");
    }
    EXPECT_EQ(text(), "new");
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(reader), {}), "old") << "it is another file";
    EXPECT_EQ(files(), 1);
}

TEST_F(FileText, StaysAsItIsWhenNothingIsCommitted)
{
    {
        const FileReplacement replacement(path);
        EXPECT_EQ(files(), 2);
    }
    EXPECT_EQ(text(), "old");
    EXPECT_EQ(files(), 1);
}

TEST_F(FileText, IsNotReplacedWhereThereIsNone)
{
    EXPECT_THROW(FileReplacement(path + ".none"), std::system_error);
    EXPECT_THROW(FileReplacement{folder}, std::system_error);
    EXPECT_THROW(FileReplacement("/dev/null"), std::system_error);
    EXPECT_EQ(files(), 1);
}
