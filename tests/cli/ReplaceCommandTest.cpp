// SPDX-License-Identifier: Apache-2.0
#include "tests/cli/LineFixture.h"

#include <gmock/gmock.h>

using cli::ExitStatus;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

namespace {

/// The left camera is broken, and another one in its stead.
class ReplaceCommand : public LineFixture
{
protected:
    ReplaceCommand()
    {
        sdk.listed[0] = camera({.mac = "02:00:00:00:00:09", .ip = "192.0.2.99", .userName = ""});
    }

    ExitStatus replace(const std::vector<std::string>& options = {})
    {
        std::vector<std::string> words{"replace", "left", path};
        words.insert(words.end(), options.begin(), options.end());
        return run(words);
    }

    /// From now on the user answers so.
    void answer(bool isYes)
    {
        session.ask = [this, isYes](const std::string& question) {
            questionsAsked.push_back(question);
            return isYes;
        };
    }

    void expectNothingDone() const
    {
        EXPECT_THAT(changes(), IsEmpty());
        EXPECT_EQ(written(), siteText());
        EXPECT_EQ(filesInFolder(), 1) << "nothing is left behind";
    }

    std::ptrdiff_t filesInFolder() const
    {
        const std::filesystem::directory_iterator files(folder);
        return std::distance(begin(files), end(files));
    }

    std::vector<std::string> questionsAsked;
};

} // namespace

TEST_F(ReplaceCommand, ShowsBothCamerasAsksAndGivesTheNewOneThePlace)
{
    answer(true);
    EXPECT_EQ(replace(), ExitStatus::Done) << err.str();
    EXPECT_EQ(questionsAsked.size(), 1U);
    EXPECT_THAT(err.str(),
                AllOf(HasSubstr("02:00:00:00:00:01"), HasSubstr("02:00:00:00:00:09"),
                      HasSubstr("static 192.0.2.99/24"), HasSubstr("static 192.0.2.21/24 \"left\"")));
    EXPECT_EQ(sdk.listed[0]->stGigEInfo.nDeviceIp, SdkDouble::address("192.0.2.21"));
    EXPECT_STREQ(sdk.listed[0]->stGigEInfo.szUserDefinedName, "left");
    std::string expected = siteText();
    expected.replace(expected.find("00:01"), 5, "00:09");
    EXPECT_EQ(written(), expected);
    EXPECT_EQ(filesInFolder(), 1);
    EXPECT_EQ(run({"apply", path, "--check"}), ExitStatus::Done);
}

TEST_F(ReplaceCommand, AsksNobodyWhoSaidYesBeforehand)
{
    answer(false);
    EXPECT_EQ(replace({"--yes"}), ExitStatus::Done);
    EXPECT_THAT(questionsAsked, IsEmpty());
}

TEST_F(ReplaceCommand, RefusesUnlessSomebodySaysYes)
{
    EXPECT_EQ(replace(), ExitStatus::Failed);
    EXPECT_THAT(err.str(), HasSubstr("--yes"));
    answer(false);
    EXPECT_EQ(replace(), ExitStatus::Failed);
    expectNothingDone();
}

TEST_F(ReplaceCommand, RefusesWhileTheOldCameraAnswers)
{
    sdk.listed.push_back(camera({.mac = "02:00:00:00:00:01", .ip = "192.0.2.21", .userName = "left"}));
    EXPECT_EQ(replace({"--yes"}), ExitStatus::Failed);
    expectNothingDone();
}

TEST_F(ReplaceCommand, RefusesWhenSeveralCouldBeTheNewOne)
{
    sdk.listed.push_back(camera({.mac = "02:00:00:00:00:0A", .ip = "192.0.2.98"}));
    EXPECT_EQ(replace({"--yes"}), ExitStatus::Failed);
    expectNothingDone();
}

TEST_F(ReplaceCommand, EndsWithThreeWithoutANewCamera)
{
    sdk.listed.erase(sdk.listed.begin());
    EXPECT_EQ(replace({"--yes"}), ExitStatus::NoSuchCamera);
    expectNothingDone();
}

TEST_F(ReplaceCommand, KnowsNoOtherPlacesThanThoseOfTheFile)
{
    EXPECT_EQ(run({"replace", "middle", path, "--yes"}), ExitStatus::WrongArguments);
    EXPECT_EQ(looks, 0);
    expectNothingDone();
}

TEST_F(ReplaceCommand, LeavesTheFileAsItIsWhenTheCameraFails)
{
    sdk.change = [](const RZ_CC_CHANGE&) -> SdkDouble::ChangeEnd {
        return {RZ_ERROR_NO_ANSWER, "it does not answer", 0, {}};
    };
    EXPECT_EQ(replace({"--yes"}), ExitStatus::Failed);
    EXPECT_EQ(written(), siteText());
    EXPECT_EQ(filesInFolder(), 1);
}

TEST_F(ReplaceCommand, RewritesTheFileBehindALinkAndKeepsItsMode)
{
    namespace fs = std::filesystem;
    const fs::path link = folder / "link.yaml";
    fs::create_symlink("line.yaml", link);
    fs::permissions(path, fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read);
    EXPECT_EQ(run({"replace", "left", link, "--yes"}), ExitStatus::Done) << err.str();
    EXPECT_TRUE(fs::is_symlink(link));
    EXPECT_THAT(written(), HasSubstr("02:00:00:00:00:09"));
    EXPECT_EQ(fs::status(path).permissions(),
              fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read);
}
