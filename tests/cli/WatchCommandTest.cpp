// SPDX-License-Identifier: Apache-2.0
#include "cli/cameras/EventReport.h"
#include "tests/cli/ProgramFixture.h"

#include <csignal>
#include <gmock/gmock.h>
#include <nlohmann/json.hpp>
#include <unistd.h>

using cli::ExitStatus;
using inventory::WatchEvent;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::MatchesRegex;
using testing::Not;

namespace {

/// The looks follow each other at once; after the last one comes Ctrl-C.
class WatchCommandTest : public ProgramFixture
{
protected:
    WatchCommandTest()
    {
        sdk.listed = {sdk.record({})};
        sdk.look = [this, look = sdk.look](unsigned options, unsigned time, const RZ_CC_LOOK_SINK& sink) {
            ++looks;
            atLook(sink);
            const int result = look(options, time, sink);
            if (looks == lastLook)
                ::kill(::getpid(), SIGINT);
            return result;
        };
    }

    std::vector<std::string> lines(const std::vector<std::string>& words)
    {
        EXPECT_EQ(run(words), ExitStatus::Done);
        std::vector<std::string> result;
        std::istringstream text(out.str());
        for (std::string line; std::getline(text, line);)
            result.push_back(line);
        return result;
    }

    std::function<void(const RZ_CC_LOOK_SINK&)> atLook = [](const RZ_CC_LOOK_SINK&) {};
    int looks = 0;
    int lastLook = 1;
};

WatchEvent event(WatchEvent::Kind kind)
{
    WatchEvent result;
    result.kind = kind;
    result.mac = *base::MacAddress::parse("00:1A:2B:3C:4D:5E");
    return result;
}

} // namespace

TEST_F(WatchCommandTest, PrintsALineForEachCameraAndEndsWellAtCtrlC)
{
    EXPECT_THAT(
        lines({"watch"}),
        ElementsAre(MatchesRegex("TIME +EVENT +MAC +ADDRESS +STATUS +MODEL +USER NAME +ADAPTER"),
                    MatchesRegex("[-0-9]+T[:0-9]+\\.[0-9]+(Z|[-+][:0-9]+) +present +00:1A:2B:3C:4D:5E "
                                 "+192.0.2.20 +Free +Model +Name +-")));
    EXPECT_EQ(err.str(), "");
}

TEST_F(WatchCommandTest, PrintsAnObjectALineWithEveryMemberInAFixedOrder)
{
    lastLook = 2;
    atLook = [this](const RZ_CC_LOOK_SINK& sink) {
        const RZ_CC_ARRIVAL device{RZ_ARRIVAL_DHCP, 0, 0x0011, 0x22334455, 0};
        sink.pOnArrival(sink.pContext, &device);
        if (looks == 2)
            sdk.isDeviceAccessible = [](const RZ_CC_DEVICE_INFO*) { return false; };
    };
    std::vector<std::string> objects;
    for (const std::string& line : lines({"watch", "--json"})) {
        auto object = nlohmann::ordered_json::parse(line);
        EXPECT_THAT(object["Time"].get<std::string>(),
                    MatchesRegex("20[0-9][0-9]-[01][0-9]-[0-3][0-9]T[0-2][0-9]:[0-5][0-9]:[0-5][0-9]"
                                 "\\.[0-9][0-9][0-9](Z|[-+][01][0-9]:[0-5][0-9])"));
        object["Time"] = "then";
        objects.push_back(object.dump());
    }
    const std::string camera = R"("GevMACAddress":"00:1A:2B:3C:4D:5E","GevCurrentIPAddress":"192.0.2.20",)";
    const std::string more = R"("AdapterName":null,"DeviceModelName":"Model","DeviceUserID":"Name"})";
    EXPECT_THAT(
        objects,
        ElementsAre(R"({"Time":"then","Event":"asks-for-address","GevMACAddress":"00:11:22:33:44:55",)"
                    R"("GevCurrentIPAddress":null,"Status":null,"AdapterName":null,"DeviceModelName":null,)"
                    R"("DeviceUserID":null})",
                    R"({"Time":"then","Event":"present",)" + camera + R"("Status":"Free",)" + more,
                    R"({"Time":"then","Event":"status",)" + camera + R"("Status":"InUse",)" + more));
}

TEST_F(WatchCommandTest, EndsWellAtEachSignalThatEndsPrograms)
{
    for (const int signal : {SIGTERM, SIGHUP}) {
        looks = 0;
        lastLook = 0;
        atLook = [signal](const RZ_CC_LOOK_SINK&) { ::kill(::getpid(), signal); };
        EXPECT_EQ(run({"watch"}), ExitStatus::Done);
        EXPECT_EQ(looks, 1);
    }
}

TEST_F(WatchCommandTest, TellsALookUnderWayThatItIsOver)
{
    lastLook = 0;
    std::vector<int> isOver;
    atLook = [&isOver](const RZ_CC_LOOK_SINK& sink) {
        isOver.push_back(sink.pIsOver(sink.pContext));
        ::kill(::getpid(), SIGINT);
        isOver.push_back(sink.pIsOver(sink.pContext));
        isOver.push_back(sink.pIsOver(sink.pContext));
    };
    EXPECT_EQ(run({"watch"}), ExitStatus::Done);
    EXPECT_THAT(isOver, ElementsAre(0, 1, 1));
}

TEST_F(WatchCommandTest, EndsWhenNobodyIsLeftToReadIt)
{
    int ends[2];
    ASSERT_EQ(::pipe(ends), 0);
    session.outDescriptor = ends[1];
    lastLook = 0;
    atLook = [&ends](const RZ_CC_LOOK_SINK& sink) {
        EXPECT_EQ(sink.pIsOver(sink.pContext), 0);
        ::close(ends[0]);
        EXPECT_EQ(sink.pIsOver(sink.pContext), 1);
    };
    EXPECT_EQ(run({"watch"}), ExitStatus::Done);
    EXPECT_EQ(looks, 1);
    ::close(ends[1]);
}

TEST_F(WatchCommandTest, EndsWhenItsOutputCannotBeWritten)
{
    lastLook = 0;
    atLook = [this](const RZ_CC_LOOK_SINK&) { out.setstate(std::ios::failbit); };
    EXPECT_EQ(run({"watch"}), ExitStatus::Failed);
    EXPECT_EQ(looks, 1);
}

TEST_F(WatchCommandTest, EndsAfterSoManySeconds)
{
    lastLook = 0;
    atLook = [](const RZ_CC_LOOK_SINK& sink) {
        while (sink.pIsOver(sink.pContext) == 0) {
        }
    };
    EXPECT_EQ(run({"watch", "--seconds", "1"}), ExitStatus::Done);
    EXPECT_EQ(looks, 1);
}

TEST_F(WatchCommandTest, RefusesWhatIsNoNumberOfSeconds)
{
    for (const char* text : {"0", "x", "1.5", "", "1 ", "+1", "99999999999"}) {
        EXPECT_EQ(run({"watch", std::string("--seconds=") + text}), ExitStatus::WrongArguments) << text;
        EXPECT_THAT(err.str(), HasSubstr("is no number from 1 to "));
    }
    EXPECT_EQ(looks, 0);
}

TEST_F(WatchCommandTest, GoesOnWhenTheNetworkFailsAndSaysSoOnce)
{
    lastLook = 3;
    int failures = 0;
    sdk.openLook = [&failures] { return ++failures <= 2 ? RZ_ERROR_NETWORK : RZ_OK; };
    sdk.notSearched = "eth1: Too many open files";
    EXPECT_EQ(lines({"watch", "--json"}).size(), 1u);
    EXPECT_EQ(failures, 3);
    EXPECT_THAT(err.str(),
                MatchesRegex("note: not all networks are watched \\(the network adapters[^\n]*\\)\n"
                             "note: not all networks are watched \\(eth1: Too many open files\\)\n"));
}

TEST_F(WatchCommandTest, SaysOnceThatItCannotHearAll)
{
    lastLook = 3;
    sdk.listener = RZ_LISTENER_UNPRIVILEGED;
    EXPECT_EQ(lines({"watch", "--json"}).size(), 1u);
    const std::string command = "sudo setcap cap_net_raw+ep /usr/libexec/ip-configurator-hear\n";
    ASSERT_THAT(err.str(), HasSubstr(command));
    EXPECT_EQ(err.str().find(command), err.str().rfind(command));
}

TEST_F(WatchCommandTest, SaysOfAFloodThatSomeIsLeftOut)
{
    lastLook = 4;
    unsigned number = 0;
    atLook = [&number](const RZ_CC_LOOK_SINK& sink) {
        for (int i = 0; i < 1000; ++i) {
            const RZ_CC_ARRIVAL device{RZ_ARRIVAL_DHCP, 0, 0x0011, ++number, 0};
            sink.pOnArrival(sink.pContext, &device);
        }
    };
    EXPECT_LT(lines({"watch"}).size(), 1100u);
    EXPECT_EQ(err.str(), "note: there is more than can be told, such as in a flood of forged packets: some "
                         "cameras or devices are left out\n");
}

TEST(EventReport, AlignsWhatIsKnownAndWhatIsNot)
{
    WatchEvent camera = event(WatchEvent::Kind::Appeared);
    camera.address = base::Ipv4(0xC0000214);
    camera.status = inventory::Status::InUse;
    camera.model = "瓶盖";
    camera.userName = "Left";
    camera.adapterName = "eth0";
    const std::string time = "2026-03-01T12:00:00.123+01:00";
    EXPECT_EQ(cli::eventHeader(), "TIME                           EVENT             MAC                "
                                  "ADDRESS          STATUS       MODEL         USER NAME        ADAPTER\n");
    EXPECT_EQ(cli::eventText(camera, time),
              "2026-03-01T12:00:00.123+01:00  appeared          00:1A:2B:3C:4D:5E  192.0.2.20       In Use   "
              "    瓶盖          Left             eth0\n");
    EXPECT_EQ(cli::eventText(event(WatchEvent::Kind::AsksForAddress), time),
              "2026-03-01T12:00:00.123+01:00  asks-for-address  00:1A:2B:3C:4D:5E  -                -        "
              "    -             -                -\n");
}

TEST(EventReport, LetsNoDeviceTextReachTheTerminalAsAnOrder)
{
    for (const std::string text : {"\x1B[2J", "a\nb", "\u202Egnp", "\xFF\xFE", "\u009B31m"}) {
        WatchEvent camera = event(WatchEvent::Kind::Gone);
        camera.model = camera.userName = camera.adapterName = text;
        const std::string line = cli::eventText(camera, "now");
        EXPECT_EQ(line.find('\n'), line.size() - 1);
        for (const char* order : {"\x1B", "\u009B", "\u202E", "\xFF"})
            EXPECT_THAT(line, Not(HasSubstr(order)));
        const std::string json = cli::eventJson(camera, "now");
        EXPECT_EQ(json.find('\n'), json.size() - 1);
        for (const char byte : json)
            EXPECT_TRUE((byte >= ' ' && byte < 0x7F) || byte == '\n');
        EXPECT_EQ(nlohmann::json::parse(json)["DeviceUserID"], text == "\xFF\xFE" ? "\uFFFD\uFFFD" : text);
    }
}
