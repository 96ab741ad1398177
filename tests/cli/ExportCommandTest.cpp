// SPDX-License-Identifier: Apache-2.0
#include "tests/cli/LineFixture.h"

#include <gmock/gmock.h>

using cli::ExitStatus;
using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

class ExportCommand : public LineFixture
{};

} // namespace

TEST_F(ExportCommand, PrintsAFileOfWhichThereIsNothingToApply)
{
    for (const char* by : {"mac", "serial"}) {
        sdk.listed[0] = camera(
            {.mac = "02:00:00:00:00:01", .ip = "192.0.2.21", .serial = "24010018", .userName = "left"});
        EXPECT_EQ(run({"export", "--by", by}), ExitStatus::Done) << err.str();
        EXPECT_THAT(out.str(), AllOf(HasSubstr("version: 1\n"), HasSubstr(std::string(by) + ":"),
                                     HasSubstr("192.0.2.21"), HasSubstr("192.0.2.22")));
        EXPECT_EQ(err.str(), "");
        write(out.str());
        EXPECT_EQ(run({"apply", path, "--check"}), ExitStatus::Done) << out.str() << err.str();
    }
    EXPECT_THAT(changes(), IsEmpty());
}

TEST_F(ExportCommand, FailsWhenCamerasMayBeMissing)
{
    sdk.notSearched = "eth1: Too many open files";
    EXPECT_EQ(run({"export"}), ExitStatus::Failed);
    EXPECT_THAT(out.str(), HasSubstr("192.0.2.21"));
    EXPECT_THAT(err.str(), HasSubstr("eth1: Too many open files"));
}
