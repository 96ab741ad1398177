// SPDX-License-Identifier: Apache-2.0
#include "tests/app/InstalledProgram.h"
#include "tests/support/Sanitizers.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <fstream>
#include <unistd.h>

namespace {

/// The program as processes on a display.
class SingleInstance : public testing::Test
{
protected:
    /// The preparation of a program that gets this error for every lock it asks for.
    static std::string withLockError(int error)
    {
        return "export LD_PRELOAD=" NO_LOCKS " LOCK_ERROR=" + std::to_string(error);
    }

    InstalledProgram program{PROGRAM};
};

} // namespace

TEST_F(SingleInstance, WritesItsProcessIdAndNothingElseToTheLockFile)
{
    const lab::Process first = program.start();
    program.window(first);
    EXPECT_EQ(program.lockFileText(), std::to_string(first.id()));
}

TEST_F(SingleInstance, ASecondStartSaysThatTheFirstRunsAndLeavesItsProcessId)
{
    const lab::Process first = program.start();
    program.window(first);

    const lab::Output second = program.run();
    EXPECT_EQ(second.status, 1);
    EXPECT_EQ(second.standardOutput,
              "/var/run/ip-configurator.pid already locked, error: Resource temporarily unavailable\n"
              "Process is already running\n");
    EXPECT_EQ(second.standardError, "");
    EXPECT_EQ(program.lockFileText(), std::to_string(first.id()));
}

TEST_F(SingleInstance, AStartAfterAKillSucceedsAndReplacesTheProcessId)
{
    lab::Process first = program.start();
    program.window(first);
    const std::string firstId = std::to_string(first.id());
    ASSERT_EQ(kill(first.id(), SIGKILL), 0);
    EXPECT_EQ(first.wait(), 128 + SIGKILL);
    EXPECT_EQ(program.lockFileText(), firstId);

    const lab::Process second = program.start();
    program.window(second);
    EXPECT_EQ(program.lockFileText(), std::to_string(second.id()));
}

TEST_F(SingleInstance, ALongerOldProcessIdIsReplacedAsAWhole)
{
    std::ofstream(program.lockFile()) << "123456789012345";
    const lab::Process first = program.start();
    program.window(first);
    EXPECT_EQ(program.lockFileText(), std::to_string(first.id()));
}

TEST_F(SingleInstance, OfManyStartsAtTheSameTimeOneOpensTheWindow)
{
    std::vector<lab::Process> processes;
    for (int i = 0; i < 6; ++i)
        processes.push_back(program.start());
    program.askWindow({"search", "--sync", "--onlyvisible", "--name", "^IP Configurator$"});

    const std::string winner = program.lockFileText();
    int windows = 0;
    for (lab::Process& process : processes) {
        if (std::to_string(process.id()) == winner)
            ++windows;
        else
            EXPECT_EQ(process.wait(), 1);
    }
    EXPECT_EQ(windows, 1);
}

TEST_F(SingleInstance, StartsAsIfItHadTheLockWhereTheFileSystemKnowsNone)
{
    if (IsSanitized)
        GTEST_SKIP() << "nothing may be preloaded before a sanitizer";
    const lab::Process first = program.start();
    program.window(first);
    const lab::Process second = program.start({}, withLockError(ENOLCK));
    program.window(second);
    EXPECT_EQ(program.lockFileText(), std::to_string(second.id()));
}

TEST_F(SingleInstance, TakesALockThatItIsDeniedForAnothers)
{
    if (IsSanitized)
        GTEST_SKIP() << "nothing may be preloaded before a sanitizer";
    const lab::Output output = program.run({}, withLockError(EACCES));
    EXPECT_EQ(output.status, 1);
    EXPECT_EQ(output.standardOutput, "/var/run/ip-configurator.pid already locked, error: Permission denied\n"
                                     "Process is already running\n");
    EXPECT_EQ(program.lockFileText(), "");
}

TEST_F(SingleInstance, NeedsTheWholeOfItsLockFile)
{
    const int file = open(program.lockFile().c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0666);
    ASSERT_GE(file, 0);
    flock lock = {};
    lock.l_type = F_WRLCK;
    lock.l_whence = SEEK_SET;
    lock.l_start = 1000000;
    lock.l_len = 1;
    ASSERT_EQ(fcntl(file, F_SETLK, &lock), 0);
    const lab::Output output = program.run();
    close(file);
    EXPECT_EQ(output.status, 1);
    EXPECT_EQ(output.standardOutput,
              "/var/run/ip-configurator.pid already locked, error: Resource temporarily unavailable\n"
              "Process is already running\n");
}

TEST_F(SingleInstance, ProgramsOfOtherNamesRunBesideEachOther)
{
    const InstalledProgram other(PROGRAM, "another");
    const lab::Process first = program.start();
    program.window(first);
    const lab::Process second = other.start();
    other.window(second);
    EXPECT_EQ(other.lockFile().filename(), "another.pid");
    EXPECT_EQ(other.lockFileText(), std::to_string(second.id()));
}

TEST_F(SingleInstance, ItsLockFileIsReadAndWrittenByAll)
{
    const lab::Output output = program.run({"-platform", "none-such"}, "umask 0");
    EXPECT_NE(output.status, 0); // It got as far as the display.
    EXPECT_EQ(std::filesystem::status(program.lockFile()).permissions(), std::filesystem::perms(0666));
}

TEST_F(SingleInstance, EndsWhereTheLockFileCannotBeMade)
{
    const lab::Output output = program.run({}, "mount -o remount,bind,ro /var/run");
    EXPECT_EQ(output.status, 1);
    EXPECT_EQ(output.standardOutput, "Open file failed, error : Read-only file system");
    EXPECT_EQ(output.standardError, "");
}

TEST_F(SingleInstance, EndsWhereTheLockFileCannotBeWritten)
{
    std::filesystem::create_symlink("/dev/full", program.lockFile());
    const lab::Output output = program.run();
    EXPECT_EQ(output.status, 1);
    EXPECT_EQ(output.standardOutput,
              "Write file failed, file: /var/run/ip-configurator.pid, error: No space left on device\n");
    EXPECT_EQ(output.standardError, "");
}

TEST_F(SingleInstance, EndsSilentlyWhereTheProgramsNameCannotBeFoundOut)
{
    if (IsSanitized)
        GTEST_SKIP() << "a sanitized program does not start without /proc";
    const lab::Output output = program.run({}, "mount -t tmpfs none /proc");
    EXPECT_EQ(output.status, 1);
    EXPECT_EQ(output.standardOutput, "");
    EXPECT_EQ(output.standardError, "");
    EXPECT_FALSE(std::filesystem::exists(program.lockFile()));
}

TEST_F(SingleInstance, EndsWithZeroWhenTheWindowIsClosedAndLeavesNothingButItsLockFile)
{
    std::set<std::string> files = program.files();
    lab::Process first = program.start({"CH"});
    program.closeWindow(program.window(first));
    EXPECT_EQ(first.wait(), 0);
    files.insert("run/ip-configurator.pid");
    EXPECT_EQ(program.files(), files);
}
