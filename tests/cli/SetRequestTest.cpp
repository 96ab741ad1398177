// SPDX-License-Identifier: Apache-2.0
#include "cli/commands/SetRequest.h"

#include "cli/commands/Command.h"
#include "tests/cli/MarkingTranslator.h"
#include "tests/cli/Refusal.h"

#include <gmock/gmock.h>

using testing::HasSubstr;

namespace {

const std::string Mac = "00:1A:2B:3C:4D:5E";

cli::SetRequest parsed(std::vector<std::string> words)
{
    words.insert(words.begin(), Mac);
    return cli::parseSetRequest(cli::parseArguments(cli::setCommand().syntax, words));
}

QDevice camera(const char* type, const char* address)
{
    QDevice device;
    device.m_strIpConfigType = type;
    device.m_strIpAddress = address;
    device.m_strSubnetMask = "255.255.255.0";
    device.m_strDefaultGateway = "0.0.0.0";
    device.m_strUserDefinedName = "Left";
    return device;
}

} // namespace

TEST(SetRequest, SaysHowTheCameraGetsItsAddressAndWhatItIsCalled)
{
    const cli::SetRequest fixed = parsed({"--static", "--ip", "10.0.0.2", "--mask=255.0.0.0"});
    EXPECT_EQ(fixed.mac.toText(), "00:1A:2B:3C:4D:5E");
    EXPECT_EQ(fixed.type, IpConfigType::Static);
    EXPECT_EQ(cli::describe(fixed.settings), "10.0.0.2, mask 255.0.0.0, no gateway");
    EXPECT_FALSE(fixed.userName);

    EXPECT_EQ(parsed({"--dhcp"}).type, IpConfigType::Dhcp);
    EXPECT_EQ(parsed({"--lla", "--user-id", "A"}).type, IpConfigType::LinkLocal);
    const cli::SetRequest named = parsed({"--user-id", "瓶盖检测"});
    EXPECT_FALSE(named.type);
    EXPECT_EQ(named.userName, QString("瓶盖检测"));
    EXPECT_EQ(parsed({"--user-id="}).userName, QString(""));
    EXPECT_EQ(parsed({"--user-id", "123456789012345"}).userName, QString("123456789012345"));
}

TEST(SetRequest, RefusesWhatContradictsItselfOrLeavesSomethingOpen)
{
    const struct
    {
        std::vector<std::string> words;
        const char* reason;
    } table[] = {
        {{}, "nothing is to change; --static, --dhcp, --lla or --user-id is needed"},
        {{"--static"}, "--ip ADDRESS is missing, which --static needs"},
        {{"--static", "--ip", "10.0.0.2"}, "--mask MASK is missing, which --static needs"},
        {{"--static", "--mask", "255.0.0.0"}, "--ip ADDRESS is missing"},
        {{"--static", "--dhcp"}, "--static, --dhcp and --lla exclude each other"},
        {{"--dhcp", "--lla"}, "--static, --dhcp and --lla exclude each other"},
        {{"--static", "--lla", "--ip=10.0.0.2", "--mask=255.0.0.0"}, "exclude each other"},
        {{"--dhcp", "--ip", "10.0.0.2"}, "--ip goes with --static only"},
        {{"--lla", "--mask", "255.0.0.0"}, "--mask goes with --static only"},
        {{"--user-id", "A", "--gateway", "10.0.0.1"}, "--gateway goes with --static only"},
        {{"--ip", "10.0.0.2", "--mask", "255.0.0.0"}, "--ip goes with --static only"},
        {{"--static", "--ip", "10.0.0.256", "--mask", "255.0.0.0"}, "is no IPv4 address"},
        {{"--static", "--ip", "10.0.0.2", "--mask", "255.0.255.0"}, "is no subnet mask"},
        {{"--static", "--ip", "10.0.0.2", "--mask", "255.0.0.0", "--gateway", "11.0.0.1"},
         "is not in the subnet"},
        {{"--user-id", "1234567890123456"}, "is too long with 16 bytes of UTF-8; 15 are allowed"},
        {{"--user-id", "瓶盖检测瓶盖"}, "is too long with 18 bytes of UTF-8; 15 are allowed"},
        {{"--user-id", "\xFF"}, "is not UTF-8"},
    };
    for (const auto& each : table)
        EXPECT_THAT(refusal([&each] { parsed(each.words); }), HasSubstr(each.reason));
}

TEST(SetRequest, ChangesNothingOfTheCameraButWhatItSays)
{
    const QDevice before = camera("DHCP", "192.168.1.20");
    const struct
    {
        std::vector<std::string> words;
        const char* type;
        const char* address;
        const char* mask;
        const char* name;
    } table[] = {
        {{"--static", "--ip=10.0.0.2", "--mask=255.0.0.0"}, "Static IP", "10.0.0.2", "255.0.0.0", "Left"},
        {{"--dhcp"}, "DHCP", "192.168.1.20", "255.255.255.0", "Left"},
        {{"--lla"}, "LLA", "192.168.1.20", "255.255.255.0", "Left"},
        {{"--user-id=B"}, "DHCP", "192.168.1.20", "255.255.255.0", "B"},
        {{"--lla", "--user-id="}, "LLA", "192.168.1.20", "255.255.255.0", ""},
    };
    for (const auto& each : table) {
        const QDevice after = cli::changed(before, parsed(each.words));
        EXPECT_EQ(after.m_strIpConfigType, each.type);
        EXPECT_EQ(after.m_strIpAddress, each.address);
        EXPECT_EQ(after.m_strSubnetMask, each.mask);
        EXPECT_EQ(after.m_strUserDefinedName, each.name);
    }
}

TEST(SetRequest, IsMetByWhatTheCameraReportsOrTellsTheDifference)
{
    const std::vector<std::string> fixed{"--static", "--ip=192.168.1.20", "--mask=255.255.255.0"};
    const struct
    {
        std::vector<std::string> words;
        const char* type;
        const char* address;
        const char* difference; ///< Its end; empty for none.
    } table[] = {
        {fixed, "Static IP", "192.168.1.20", ""},
        {fixed, "DHCP", "192.168.1.20", "it reports DHCP, 192.168.1.20, mask 255.255.255.0, no gateway"},
        {fixed, "Static IP", "192.168.1.21",
         "it reports Static IP, 192.168.1.21, mask 255.255.255.0, no gateway"},
        {{"--dhcp"}, "DHCP", "192.168.1.77", ""},
        {{"--dhcp"}, "DHCP", "169.254.1.1", ""},
        {{"--dhcp"}, "DHCP", "0.0.0.0", "it reports DHCP, 0.0.0.0, mask 255.255.255.0, no gateway"},
        {{"--dhcp"}, "LLA", "192.168.1.77", "it reports LLA, 192.168.1.77, mask 255.255.255.0, no gateway"},
        {{"--lla"}, "LLA", "169.254.200.1", ""},
        {{"--lla"}, "LLA", "169.253.0.1", "it reports LLA, 169.253.0.1, mask 255.255.255.0, no gateway"},
        {{"--lla"}, "DHCP", "169.254.0.1", "it reports DHCP, 169.254.0.1, mask 255.255.255.0, no gateway"},
        {{"--user-id=B"}, "LLA", "10.0.0.1", ""},
    };
    for (const auto& each : table) {
        const std::string text =
            cli::addressingDifference(cli::Camera(camera(each.type, each.address)), parsed(each.words));
        if (*each.difference == '\0')
            EXPECT_EQ(text, "") << each.words[0];
        else
            EXPECT_THAT(text, testing::EndsWith(each.difference));
    }
    EXPECT_EQ(cli::nameDifference(cli::Camera(camera("DHCP", "10.0.0.1")), parsed({"--user-id=B"})),
              "asked for the user name \"B\"; it reports \"Left\"");
    EXPECT_EQ(cli::nameDifference(cli::Camera(camera("DHCP", "10.0.0.1")), parsed({"--user-id=Left"})), "");
    EXPECT_EQ(cli::nameDifference(cli::Camera(camera("DHCP", "10.0.0.1")), parsed({"--dhcp"})), "");
}

TEST(SetRequest, SpeaksOfTheTypesInTheUsersLanguage)
{
    int count = 1;
    char name[] = "tests";
    char* words[] = {name, nullptr};
    const QCoreApplication application(count, words);
    const MarkingTranslator translator;
    const std::pair<const char*, std::vector<std::string>> table[] = {
        {"<Static IP>", {"--static", "--ip=169.254.1.2", "--mask=255.255.255.0"}},
        {"<DHCP>", {"--dhcp"}},
        {"<LLA>", {"--lla"}},
    };
    for (const auto& [type, options] : table) {
        const cli::SetRequest request = parsed(options);
        EXPECT_EQ(cli::changed(camera("", "10.0.0.1"), request).m_strIpConfigType, type);
        EXPECT_EQ(cli::addressingDifference(cli::Camera(camera(type, "169.254.1.2")), request), "") << type;
    }
}
