// SPDX-License-Identifier: Apache-2.0
#include "ui/MainAddressRules.h"

#include <QStringList>

#include <gtest/gtest.h>

using namespace MainAddressRules;

namespace {

struct Row
{
    const char* text;
    bool address;
    bool mask;
    bool gateway;
};

const Row Rows[] = {
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

} // namespace

TEST(MainAddressRulesTest, EachTextIsAnAddressAMaskOrAGatewayAsTheTableSays)
{
    for (const Row& row : Rows) {
        const QString text = QString::fromUtf8(row.text);
        EXPECT_EQ(IsCameraAddress(text), row.address) << row.text;
        EXPECT_EQ(IsSubnetMask(text), row.mask) << row.text;
        EXPECT_EQ(IsGateway(text), row.gateway) << row.text;
    }
}

TEST(MainAddressRulesTest, EveryOctetInEveryPlaceIsJudgedByItsRangeAndTheFirstByItsNetwork)
{
    for (int place = 0; place < 4; ++place) {
        for (int octet = -1; octet <= 300; ++octet) {
            QStringList parts = {"10", "20", "30", "40"};
            parts[place] = QString::number(octet);
            const QString text = parts.join('.');
            const bool inRange = octet >= 0 && octet <= 255;
            const bool gateway = inRange && (place > 0 || (octet != 127 && octet <= 223));
            EXPECT_EQ(IsGateway(text), gateway) << text.toStdString();
            EXPECT_EQ(IsCameraAddress(text), gateway && (place > 0 || octet >= 1)) << text.toStdString();
            EXPECT_FALSE(IsSubnetMask(text)) << text.toStdString();
        }
    }
}

TEST(MainAddressRulesTest, EveryOctetInEveryPlaceOfAMaskIsRefusedButTheThreeKnownTexts)
{
    int accepted = 0;
    for (int place = 0; place < 4; ++place) {
        for (int octet = -1; octet <= 300; ++octet) {
            QStringList parts = {"255", "255", "255", "0"};
            parts[place] = QString::number(octet);
            const bool known = parts.join('.') == "255.255.255.0" || (place == 2 && octet == 0);
            EXPECT_EQ(IsSubnetMask(parts.join('.')), known) << parts.join('.').toStdString();
            accepted += known;
        }
    }
    EXPECT_EQ(accepted, 5); // 255.255.255.0 once in each place, and 255.255.0.0
}

TEST(MainAddressRulesTest, ANumberHasNothingButDecimalDigitsAndMayBeEmpty)
{
    EXPECT_TRUE(IsNumber(""));
    EXPECT_TRUE(IsNumber("0123456789"));
    for (const char* text : {"-1", "+1", " 1", "1 ", "1.", "1a", "\u0661", "\uFF11"})
        EXPECT_FALSE(IsNumber(QString::fromUtf8(text))) << text;
}
