// SPDX-License-Identifier: Apache-2.0
#include "tests/cli/LineFixture.h"

#include <csignal>
#include <gmock/gmock.h>
#include <nlohmann/json.hpp>
#include <unistd.h>

using cli::ExitStatus;
using nlohmann::ordered_json;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::MatchesRegex;
using testing::Not;
using testing::SizeIs;
using testing::StartsWith;

namespace {

class ApplyCommand : public LineFixture
{
protected:
    ExitStatus apply(std::vector<std::string> options = {})
    {
        options.insert(options.begin(), {"apply", path});
        return run(options);
    }

    std::vector<std::string> results(const std::vector<std::string>& options, ExitStatus status)
    {
        std::vector<std::string> words = options;
        words.push_back("--json");
        EXPECT_EQ(apply(words), status) << err.str();
        std::vector<std::string> names;
        for (const auto& object : ordered_json::parse(out.str()))
            names.push_back(object["Result"]);
        return names;
    }

    /// The camera's change fails after it has begun; it goes back if it may.
    void failAt(const std::string& mac, bool goesBack)
    {
        sdk.change = [this, mac, goesBack,
                      count = 0](const RZ_CC_CHANGE& change) mutable -> SdkDouble::ChangeEnd {
            SdkDouble::ChangeEnd end = sdk.obey(change);
            if ((change.stInfo.nMacLow & 0xFF) != static_cast<unsigned>(mac.back() - '0'))
                return end;
            if (++count == 1 || !goesBack) {
                end.error = RZ_ERROR_REFUSED;
                end.text = "writing 0x0000064C: write protected (0x8006)";
            }
            return end;
        };
    }
};

} // namespace

TEST_F(ApplyCommand, DoesNothingToALineThatIsAsPlanned)
{
    EXPECT_EQ(apply(), ExitStatus::Done) << err.str();
    EXPECT_THAT(out.str(), AllOf(HasSubstr("left   02:00:00:00:00:01  static 192.0.2.21/24 \"left\""),
                                 HasSubstr("as planned")));
    EXPECT_EQ(err.str(), "");
    EXPECT_EQ(apply({"--check"}), ExitStatus::Done);
    EXPECT_THAT(changes(), IsEmpty());
}

TEST_F(ApplyCommand, OnlyTellsWhatItWouldDoWhenItIsToCheck)
{
    write(siteText("192.0.2.31"));
    EXPECT_EQ(apply({"--check"}), ExitStatus::SomethingToDo);
    EXPECT_THAT(out.str(),
                MatchesRegex("PLACE +CAMERA +BEFORE +WANTED +DONE +RESULT\n"
                             "left +02:00:00:00:00:01 +static 192.0.2.21/24 \"left\" +static 192.0.2.31/24 "
                             "\"left\" +force 192.0.2.31, store the address +would change\n"
                             "right .*as planned\n"));
    EXPECT_THAT(changes(), IsEmpty());
}

TEST_F(ApplyCommand, ChangesWhatIsNotAsPlannedAndHasNothingToDoTheNextTime)
{
    write(siteText("192.0.2.31"));
    EXPECT_EQ(apply(), ExitStatus::Done) << err.str();
    EXPECT_THAT(out.str(), HasSubstr("changed"));
    EXPECT_THAT(err.str(), AllOf(HasSubstr("left: force 192.0.2.31 ...\n"), HasSubstr("left: changed\n")));
    EXPECT_THAT(changes(), SizeIs(1));
    EXPECT_EQ(apply({"--check"}), ExitStatus::Done);
    EXPECT_EQ(apply(), ExitStatus::Done);
    EXPECT_THAT(changes(), SizeIs(1));
}

TEST_F(ApplyCommand, PrintsAnObjectForEachPlaceWithEveryMember)
{
    write(siteText("192.0.2.31"));
    EXPECT_EQ(apply({"--check", "--json"}), ExitStatus::SomethingToDo);
    const std::string ip = R"("Mask":"255.255.255.0","Gateway":"0.0.0.0",)";
    EXPECT_EQ(
        ordered_json::parse(out.str())[0].dump(),
        R"({"Place":"left","GevMACAddress":"02:00:00:00:00:01","DeviceSerialNumber":"Serial",)"
        R"("Before":{"Mode":"static","Address":"192.0.2.21",)" +
            ip + R"("Name":"left"},"After":{"Mode":"static","Address":"192.0.2.31",)" + ip +
            R"("Name":"left"},"Changed":true,"Actions":["force","store"],"Result":"would-change","Reason":""})");
    EXPECT_EQ(ordered_json::parse(out.str())[1]["Changed"], false);

    sdk.listed.pop_back();
    EXPECT_EQ(apply({"--check", "--json"}), ExitStatus::NoSuchCamera);
    EXPECT_EQ(ordered_json::parse(out.str())[1].dump(),
              R"({"Place":"right","GevMACAddress":null,"DeviceSerialNumber":null,"Before":null,)"
              R"("After":null,"Changed":false,"Actions":[],"Result":"missing","Reason":""})");
}

TEST_F(ApplyCommand, RefusesAWrongFileWithLineAndColumnBeforeItLooks)
{
    write("version: 1\ncamras: {}\n");
    EXPECT_EQ(apply(), ExitStatus::WrongArguments);
    EXPECT_THAT(err.str(), StartsWith("ip-configurator-cli: " + path + ":2:1: "));
    EXPECT_EQ(run({"apply", path + ".none"}), ExitStatus::WrongArguments);
    EXPECT_THAT(err.str(), HasSubstr("No such file"));
    EXPECT_EQ(run({"apply", folder}), ExitStatus::WrongArguments);
    EXPECT_THAT(err.str(), HasSubstr("directory"));
    EXPECT_EQ(looks, 0);
}

TEST_F(ApplyCommand, LooksAtThePlacesThatAreNamedAlone)
{
    write(siteText("192.0.2.31", "192.0.2.32"));
    EXPECT_EQ(apply({"--only", "middle"}), ExitStatus::WrongArguments);
    EXPECT_THAT(err.str(), HasSubstr("has no place \"middle\"; it has left, right"));
    EXPECT_EQ(looks, 0);
    EXPECT_THAT(results({"--only", "right"}, ExitStatus::Done), ElementsAre("changed"));
    EXPECT_THAT(changes(), SizeIs(1));
    EXPECT_THAT(results({"--only", "right", "--only", "left"}, ExitStatus::Done),
                ElementsAre("changed", "ok"));
}

TEST_F(ApplyCommand, SendsNothingWhileACameraIsMissingUnlessItIsToKeepGoing)
{
    write(siteText("192.0.2.31"));
    sdk.listed.pop_back();
    EXPECT_THAT(results({}, ExitStatus::NoSuchCamera), ElementsAre("not-begun", "missing"));
    EXPECT_THAT(results({"--check"}, ExitStatus::NoSuchCamera), ElementsAre("would-change", "missing"));
    EXPECT_THAT(changes(), IsEmpty());
    EXPECT_THAT(results({"--keep-going"}, ExitStatus::NoSuchCamera), ElementsAre("changed", "missing"));
}

TEST_F(ApplyCommand, RefusesBeforeAnythingIsSent)
{
    write(siteText("192.0.2.31", "192.0.2.32"));
    sdk.isDeviceAccessible = [this](const RZ_CC_DEVICE_INFO* each) { return each != sdk.listed[1]; };
    sdk.look = [this](unsigned, unsigned, const RZ_CC_LOOK_SINK& sink) {
        for (RZ_CC_DEVICE_INFO* const each : sdk.listed) {
            RZ_CC_SIGHTING seen = sighting(each);
            seen.nTold |= RZ_TOLD_HEARTBEAT_TIMEOUT;
            seen.nHeartbeatTimeout = 1;
            seen.nPrivilege = seen.nAccessible == 0 ? 2 : 0;
            sink.pOnCamera(sink.pContext, &seen, 1);
        }
        const RZ_CC_LOOK_REPORT report{0, RZ_LISTENER_HEARS, "", ""};
        sink.pOnReport(sink.pContext, &report);
        return RZ_OK;
    };
    EXPECT_THAT(results({}, ExitStatus::Failed), ElementsAre("not-begun", "not-begun"));
    EXPECT_THAT(err.str(), HasSubstr("refused, nothing was changed"));
    EXPECT_THAT(results({"--check"}, ExitStatus::Failed), ElementsAre("not-begun", "not-begun"));
    EXPECT_THAT(ordered_json::parse(out.str())[1]["Reason"].get<std::string>(), Not(IsEmpty()));
    sdk.listed.erase(sdk.listed.begin());
    EXPECT_THAT(results({"--check", "--keep-going"}, ExitStatus::Failed), ElementsAre("missing", "not-begun"))
        << "refused comes before missing";
    EXPECT_THAT(changes(), IsEmpty());
}

TEST_F(ApplyCommand, PutsBackWhatFailsAndEndsWithTheReason)
{
    write(siteText("192.0.2.31", "192.0.2.32"));
    failAt("02:00:00:00:00:01", true);
    EXPECT_EQ(apply(), ExitStatus::Failed);
    EXPECT_THAT(out.str(), AllOf(HasSubstr("put back"), HasSubstr("not begun"),
                                 HasSubstr("left: It could not be changed: writing 0x0000064C: write "
                                           "protected (0x8006).\n")));
    EXPECT_THAT(err.str(), AllOf(HasSubstr("left: is put back ...\n"), HasSubstr("Put back: 1 of 2.")));
    EXPECT_EQ(sdk.listed[0]->stGigEInfo.nDeviceIp, SdkDouble::address("192.0.2.21"));

    failAt("02:00:00:00:00:01", true);
    EXPECT_THAT(results({"--keep-going"}, ExitStatus::Failed), ElementsAre("put-back", "changed"));
}

TEST_F(ApplyCommand, SaysFirstWhatCouldNotBePutBack)
{
    write(siteText("192.0.2.31", "192.0.2.32"));
    failAt("02:00:00:00:00:02", false);
    EXPECT_EQ(apply(), ExitStatus::Failed);
    EXPECT_THAT(out.str(),
                StartsWith("NOT PUT BACK: right (02:00:00:00:00:02) was not put back; it is static "
                           "now, 192.0.2.22/24, name \"right\".\nPLACE"));
    EXPECT_THAT(err.str(), HasSubstr("ip-configurator-cli: right (02:00:00:00:00:02) was not put back"));
}

TEST_F(ApplyCommand, BeginsNoOtherCameraAfterCtrlC)
{
    for (const int signal : {SIGINT, SIGTERM}) {
        write(siteText(signal == SIGINT ? "192.0.2.31" : "192.0.2.41", "192.0.2.32"));
        sdk.change = [this, signal](const RZ_CC_CHANGE& change) {
            ::kill(::getpid(), signal);
            return sdk.obey(change);
        };
        EXPECT_THAT(results({}, ExitStatus::Interrupted), ElementsAre("changed", "not-begun"));
        EXPECT_THAT(err.str(), HasSubstr("interrupted"));
    }
    EXPECT_THAT(changes(), SizeIs(2));
}

TEST_F(ApplyCommand, ChangesNothingWhenItIsInterruptedWhileItLooks)
{
    write(siteText("192.0.2.31"));
    sdk.look = [look = sdk.look](unsigned options, unsigned time, const RZ_CC_LOOK_SINK& sink) {
        ::kill(::getpid(), SIGINT);
        return look(options, time, sink);
    };
    EXPECT_EQ(apply(), ExitStatus::Interrupted);
    EXPECT_EQ(looks, 1);
    EXPECT_EQ(out.str(), "");
    EXPECT_THAT(changes(), IsEmpty());
}

TEST_F(ApplyCommand, TellsOfTheWayBackUnlessTheFileIsIt)
{
    const std::string hint = "export >before.yaml";
    write(siteText("192.0.2.31"));
    EXPECT_EQ(apply({"--check"}), ExitStatus::SomethingToDo);
    EXPECT_THAT(err.str(), Not(HasSubstr(hint)));

    EXPECT_EQ(run({"export"}), ExitStatus::Done);
    const std::string before = out.str();
    EXPECT_EQ(apply(), ExitStatus::Done);
    EXPECT_THAT(err.str(), HasSubstr(hint));

    write(before);
    EXPECT_EQ(apply(), ExitStatus::Done) << err.str();
    EXPECT_THAT(err.str(), Not(HasSubstr(hint)));
    EXPECT_THAT(changes(), SizeIs(2)) << "all is as it was";
    EXPECT_EQ(sdk.listed[0]->stGigEInfo.nDeviceIp, SdkDouble::address("192.0.2.21"));
}

TEST_F(ApplyCommand, ShowsNothingOfACameraThatATerminalWouldObey)
{
    sdk.listed[0] = camera({.mac = "02:00:00:00:00:01", .ip = "192.0.2.21", .userName = "\x1B[2J"});
    EXPECT_EQ(apply({"--check"}), ExitStatus::SomethingToDo);
    EXPECT_THAT(out.str(), AllOf(HasSubstr("\\x1B[2J"), Not(HasSubstr("\x1B"))));
    sdk.change = [this](const RZ_CC_CHANGE& change) {
        SdkDouble::ChangeEnd end = sdk.obey(change);
        end.error = RZ_ERROR_REFUSED;
        end.text = "\x1B]0;title\a";
        return end;
    };
    EXPECT_EQ(apply(), ExitStatus::Failed);
    EXPECT_THAT(out.str() + err.str(), Not(HasSubstr("\x1B")));
}

TEST_F(ApplyCommand, TellsWhyCamerasMayBeMissing)
{
    sdk.look = [look = sdk.look](unsigned options, unsigned time, RZ_CC_LOOK_SINK sink) {
        look(options, time, sink);
        const RZ_CC_LOOK_REPORT report{0, RZ_LISTENER_MISSING, "/usr/libexec/listener", "eth1: no memory"};
        sink.pOnReport(sink.pContext, &report);
        return RZ_OK;
    };
    EXPECT_EQ(apply(), ExitStatus::Done);
    EXPECT_THAT(err.str(), AllOf(HasSubstr("cameras outside this computer's subnets may be missing"),
                                 HasSubstr("not all networks were searched (eth1: no memory)")));
}

TEST_F(ApplyCommand, FailsWhenTheNetworksCannotBeLookedAt)
{
    sdk.openLook = [] { return RZ_ERROR_NETWORK; };
    EXPECT_EQ(apply(), ExitStatus::Failed);
    EXPECT_THAT(err.str(), HasSubstr("the networks cannot be looked at"));
}
