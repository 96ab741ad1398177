// SPDX-License-Identifier: Apache-2.0
#include "inventory/Processes.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <stdexcept>
#include <unistd.h>

using inventory::Processes;
using testing::ElementsAre;
using testing::Pair;

namespace fs = std::filesystem;

namespace {

/// Processes as the kernel tells of them, in files of the test's own.
class ProcessesTest : public testing::Test
{
protected:
    ProcessesTest()
    {
        std::string name = "/tmp/processes-XXXXXX";
        if (!::mkdtemp(name.data()))
            throw std::runtime_error("no directory for the test");
        proc = name;
    }
    ~ProcessesTest() override { fs::remove_all(proc); }

    void write(const std::string& file, const std::string& text)
    {
        fs::create_directories((proc / file).parent_path());
        std::ofstream(proc / file, std::ios::binary) << text;
    }

    void open(const std::string& pid, const std::string& fd, const std::string& target)
    {
        fs::create_directories(proc / pid / "fd");
        fs::create_symlink(target, proc / pid / "fd" / fd);
    }

    fs::path proc;
};

} // namespace

TEST_F(ProcessesTest, AreFoundByTheSocketsThatTheyHaveOpen)
{
    open("12", "0", "/dev/null");
    open("12", "3", "socket:[4026]");
    open("12", "4", "socket:[4026]");
    open("12", "5", "socket:[4027]");
    open("345", "7", "socket:[4026]");
    open("345", "8", "socket:[]");
    open("345", "9", "socket:[40x]");
    open("345", "10", "pipe:[4028]");
    open("sys", "3", "socket:[4029]");
    fs::create_directories(proc / "7"); // One whose files may not be seen.
    EXPECT_THAT(Processes(proc).bySocket(),
                ElementsAre(Pair(4026, testing::UnorderedElementsAre(12, 345)), Pair(4027, ElementsAre(12))));
}

TEST_F(ProcessesTest, TellTheirNameUserAndCommandLine)
{
    write("12/status", "Name:\tpython3\nPPid:\t1\nUid:\t0\t33\t0\t0\n");
    write("12/comm", "python3\n");
    write("12/cmdline", std::string("python3\0hold camera.py\0-v\0", 26));
    const auto process = Processes(proc).process(12);
    ASSERT_TRUE(process);
    EXPECT_EQ(process->pid, 12);
    EXPECT_EQ(process->name, "python3");
    EXPECT_EQ(process->user, "root");
    EXPECT_EQ(process->commandLine, "python3 hold camera.py -v");
    EXPECT_EQ(Processes(proc).parentOf(12), 1);
}

TEST_F(ProcessesTest, OfAUserWithoutANameHaveItsNumber)
{
    write("12/status", "Uid:\t4123456789\t0\t0\t0\n");
    write("12/comm", "a\nb\n");
    EXPECT_EQ(Processes(proc).process(12)->user, "4123456789");
    EXPECT_EQ(Processes(proc).process(12)->name, "a\nb") << "as they came";
}

TEST_F(ProcessesTest, ThatHaveEndedAreNothing)
{
    EXPECT_FALSE(Processes(proc).process(12));
    EXPECT_EQ(Processes(proc).parentOf(12), 0);
    EXPECT_TRUE(Processes(proc / "nowhere").bySocket().empty());
}

TEST_F(ProcessesTest, WithEndlessCommandLinesAreCut)
{
    write("12/status", "Uid:\t0\t0\t0\t0\n");
    write("12/cmdline", std::string(1'000'000, 'x'));
    EXPECT_EQ(Processes(proc).process(12)->commandLine.size(), 4096u);
}
