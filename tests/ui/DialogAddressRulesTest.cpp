// SPDX-License-Identifier: Apache-2.0
#include "ui/DialogAddressRules.h"

#include "device/QDevice.h"

#include <QStringList>

#include <gtest/gtest.h>

using namespace DialogAddressRules;

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

_NETWORK_INFO adapter(const char* address, const char* mask)
{
    return {QDevice::GetIP(address), QDevice::GetIP(mask)};
}

} // namespace

TEST(DialogAddressRulesTest, EachTextIsAnAddressAMaskOrAGatewayAsTheTableSays)
{
    for (const Row& row : Rows) {
        EXPECT_EQ(IsCameraAddress(row.text), row.address) << row.text;
        EXPECT_EQ(IsSubnetMask(row.text), row.mask) << row.text;
        EXPECT_EQ(IsGateway(row.text), row.gateway) << row.text;
    }
}

TEST(DialogAddressRulesTest, EveryOctetInEveryPlaceIsJudgedByItsRangeAndTheFirstByItsNetwork)
{
    for (int place = 0; place < 4; ++place) {
        for (int octet = -1; octet <= 300; ++octet) {
            QStringList parts = {"10", "20", "30", "40"};
            parts[place] = QString::number(octet);
            const QString text = parts.join('.');
            const bool mask = octet >= 0 && octet <= 255;
            const bool gateway = mask && (place > 0 || (octet != 127 && octet < 224));
            EXPECT_EQ(IsSubnetMask(text), mask) << text.toStdString();
            EXPECT_EQ(IsGateway(text), gateway) << text.toStdString();
            EXPECT_EQ(IsCameraAddress(text), gateway && (place > 0 || octet >= 1)) << text.toStdString();
        }
    }
}

TEST(DialogAddressRulesTest, TheRangeGoesFromTheNetworkToTwoBelowTheBroadcastAddress)
{
    EXPECT_EQ(ValidRange(adapter("192.168.1.10", "255.255.255.0")), "192.168.1.0~192.168.1.253");
    EXPECT_EQ(ValidRange(adapter("10.7.200.1", "255.255.0.0")), "10.7.0.0~10.7.255.253");
    EXPECT_EQ(ValidRange(adapter("10.7.200.1", "255.0.0.0")), "10.0.0.0~10.255.255.253");
    EXPECT_EQ(ValidRange(adapter("172.16.5.9", "255.255.255.248")), "172.16.5.8~172.16.5.13");
    EXPECT_EQ(ValidRange(adapter("192.168.254.1", "255.255.254.0")), "192.168.254.0~192.168.255.253");
    EXPECT_EQ(ValidRange(adapter("10.0.0.0", "255.255.255.255")), "10.0.0.0~10.0.0.-2");
}
