// SPDX-License-Identifier: Apache-2.0
#include "ui/AddressRules.h"

#include <QStringList>

#include <gtest/gtest.h>
#include <iterator>
#include <vector>

namespace {

/// A text, and what it is taken for.
struct Row
{
    const char* text;
    bool address;
    bool mask;
    bool gateway;
};

const Row RowsOfTheMainWindow[] = {
    {"", false, false, false},
    {".", false, false, false},
    {"...", false, false, false},
    {"192.168.1.10", true, false, true},
    {"192.168.1.", false, false, false},
    {"192.168.1.10.", false, false, false},
    {"192.168.1.10.5", false, false, false},
    {".192.168.1.10", false, false, false},
    {"1..2.3", false, false, false},
    {"192.168.1", false, false, false},
    {"10.0.0.0", true, false, true},
    {"192.168.1.255", true, false, true},
    {"0.1.2.3", false, false, true},
    {"0.0.0.0", false, false, true},
    {"00.1.2.3", false, false, true},
    {"126.255.255.255", true, false, true},
    {"127.0.0.1", false, false, false},
    {"128.0.0.1", true, false, true},
    {"223.1.1.1", true, false, true},
    {"224.0.0.1", false, false, false},
    {"255.255.255.255", false, false, false},
    {"192.168.001.010", true, false, true},
    {"1.2.3.256", false, false, false},
    {" 1.2.3.4", false, false, false},
    {"1.2.3.4 ", false, false, false},
    {"1.2. 3.4", false, false, false},
    {"1.2.3.-4", false, false, false},
    {"1.2.3.+4", false, false, false},
    {"1.2.3.0x4", false, false, false},
    {"1.2.3.4\n", false, false, false},
    {"1,2,3,4", false, false, false},
    {"\u0661.2.3.4", false, false, false},
    {"10.0.0.99999999999", true, false, true},
    {"99999999999.0.0.1", false, false, true},
    {"255.255.255.0", false, true, false},
    {"255.255.0.0", false, true, false},
    {"255.0.0.0", false, true, false},
    {"255.255.255.000", false, false, false},
    {" 255.255.255.0", false, false, false},
    {"255.255.255.0 ", false, false, false},
    {"255.255.254.0", false, false, false},
    {"255.255.255.128", false, false, false},
    {"255.255.255.252", false, false, false},
};

const Row RowsOfTheDialog[] = {
    {"", false, false, false},
    {"...", false, false, false},
    {"...1", false, true, true},
    {"1...1", true, true, true},
    {"1..2.3", true, true, true},
    {"10.0.0.", false, false, false},
    {"10.0.0", false, false, false},
    {"10.0.0.1.", false, false, false},
    {"10.0.0.1.2", false, false, false},
    {"192.168.1.10", true, true, true},
    {"192.168.1.0", true, true, true},
    {"192.168.1.255", true, true, true},
    {"0.1.2.3", false, true, true},
    {"0.0.0.0", false, true, true},
    {"127.0.0.1", false, true, false},
    {"126.0.0.1", true, true, true},
    {"128.0.0.1", true, true, true},
    {"223.255.255.255", true, true, true},
    {"224.0.0.1", false, true, false},
    {"255.0.255.0", false, true, false},
    {"255.255.255.255", false, true, false},
    {"256.0.0.0", false, false, false},
    {"1.2.3.256", false, false, false},
    {"1.2.3.-4", false, false, false},
    {"1.2.3.x", true, true, true},
    {"x.2.3.4", false, true, true},
    {"1.2.3.99999999999", true, true, true},
    {"001.002.003.004", true, true, true},
};

struct Rules
{
    const char* name;
    bool (*isCameraAddress)(const QString&);
    bool (*isSubnetMask)(const QString&);
    bool (*isGateway)(const QString&);
    bool takesAnyMask; ///< Else only three of them.
    std::vector<Row> rows;
};

void PrintTo(const Rules& rules, std::ostream* stream)
{
    *stream << rules.name;
}

class AddressRulesTest : public testing::TestWithParam<Rules>
{};

_NETWORK_INFO adapter(const char* address, const char* mask)
{
    return {QDevice::GetIP(address), QDevice::GetIP(mask)};
}

} // namespace

TEST_P(AddressRulesTest, EachTextIsAnAddressAMaskOrAGatewayAsTheTableSays)
{
    for (const Row& row : GetParam().rows) {
        const QString text = QString::fromUtf8(row.text);
        EXPECT_EQ(GetParam().isCameraAddress(text), row.address) << row.text;
        EXPECT_EQ(GetParam().isSubnetMask(text), row.mask) << row.text;
        EXPECT_EQ(GetParam().isGateway(text), row.gateway) << row.text;
    }
}

TEST_P(AddressRulesTest, EveryOctetInEveryPlaceIsJudgedByItsRangeAndTheFirstByItsNetwork)
{
    for (int place = 0; place < 4; ++place) {
        for (int octet = -1; octet <= 300; ++octet) {
            QStringList parts = {"10", "20", "30", "40"};
            parts[place] = QString::number(octet);
            const QString text = parts.join('.');
            const bool inRange = octet >= 0 && octet <= 255;
            const bool gateway = inRange && (place > 0 || (octet != 127 && octet <= 223));
            EXPECT_EQ(GetParam().isSubnetMask(text), inRange && GetParam().takesAnyMask)
                << text.toStdString();
            EXPECT_EQ(GetParam().isGateway(text), gateway) << text.toStdString();
            EXPECT_EQ(GetParam().isCameraAddress(text), gateway && (place > 0 || octet >= 1))
                << text.toStdString();
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Windows, AddressRulesTest,
                         testing::Values(Rules{"OfTheMainWindow",
                                               MainAddressRules::IsCameraAddress,
                                               MainAddressRules::IsSubnetMask,
                                               MainAddressRules::IsGateway,
                                               false,
                                               {std::begin(RowsOfTheMainWindow),
                                                std::end(RowsOfTheMainWindow)}},
                                         Rules{"OfTheDialog",
                                               DialogAddressRules::IsCameraAddress,
                                               DialogAddressRules::IsSubnetMask,
                                               DialogAddressRules::IsGateway,
                                               true,
                                               {std::begin(RowsOfTheDialog), std::end(RowsOfTheDialog)}}),
                         [](const testing::TestParamInfo<Rules>& rules) { return rules.param.name; });

TEST(MainAddressRulesTest, EveryOctetInEveryPlaceOfAMaskIsRefusedButTheThreeKnownTexts)
{
    int accepted = 0;
    for (int place = 0; place < 4; ++place) {
        for (int octet = -1; octet <= 300; ++octet) {
            QStringList parts = {"255", "255", "255", "0"};
            parts[place] = QString::number(octet);
            const bool known = parts.join('.') == "255.255.255.0" || (place == 2 && octet == 0);
            EXPECT_EQ(MainAddressRules::IsSubnetMask(parts.join('.')), known)
                << parts.join('.').toStdString();
            accepted += known;
        }
    }
    EXPECT_EQ(accepted, 5); // 255.255.255.0 once in each place, and 255.255.0.0
}

TEST(MainAddressRulesTest, ANumberHasNothingButDecimalDigitsAndMayBeEmpty)
{
    EXPECT_TRUE(MainAddressRules::IsNumber(""));
    EXPECT_TRUE(MainAddressRules::IsNumber("0123456789"));
    for (const char* text : {"-1", "+1", " 1", "1 ", "1.", "1a", "\u0661", "\uFF11"})
        EXPECT_FALSE(MainAddressRules::IsNumber(QString::fromUtf8(text))) << text;
}

TEST(DialogAddressRulesTest, TheRangeGoesFromTheNetworkToTwoBelowTheBroadcastAddress)
{
    EXPECT_EQ(DialogAddressRules::ValidRange(adapter("192.168.1.10", "255.255.255.0")),
              "192.168.1.0~192.168.1.253");
    EXPECT_EQ(DialogAddressRules::ValidRange(adapter("10.7.200.1", "255.255.0.0")), "10.7.0.0~10.7.255.253");
    EXPECT_EQ(DialogAddressRules::ValidRange(adapter("10.7.200.1", "255.0.0.0")), "10.0.0.0~10.255.255.253");
    EXPECT_EQ(DialogAddressRules::ValidRange(adapter("172.16.5.9", "255.255.255.248")),
              "172.16.5.8~172.16.5.13");
    EXPECT_EQ(DialogAddressRules::ValidRange(adapter("192.168.254.1", "255.255.254.0")),
              "192.168.254.0~192.168.255.253");
    EXPECT_EQ(DialogAddressRules::ValidRange(adapter("10.0.0.0", "255.255.255.255")), "10.0.0.0~10.0.0.-2");
}
