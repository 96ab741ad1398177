// SPDX-License-Identifier: Apache-2.0
#include "ui/Editability.h"

#include <gtest/gtest.h>

namespace {

constexpr auto Free = CameraStatus::Free;
constexpr auto InUse = CameraStatus::InUse;
constexpr auto Unreachable = CameraStatus::Unreachable;
constexpr auto Static = IpConfigType::Static;
constexpr auto Dhcp = IpConfigType::Dhcp;
constexpr auto LinkLocal = IpConfigType::LinkLocal;

struct Row
{
    CameraStatus status;
    IpConfigType chosen;
    Editability allowed;
};

// clang-format off
const Row Rows[] = {
    //                        address  mask   gateway radios name   save   modify IP
    {Free,        Static,    {true,    true,  true,   true,  true,  true,  true}},
    {Free,        Dhcp,      {false,   false, false,  true,  true,  true,  true}},
    {Free,        LinkLocal, {false,   false, false,  true,  true,  true,  true}},
    {Unreachable, Static,    {true,    false, false,  false, false, true,  true}},
    {Unreachable, Dhcp,      {false,   false, false,  false, false, false, true}},
    {Unreachable, LinkLocal, {false,   false, false,  false, false, false, true}},
    {InUse,       Static,    {false,   false, false,  false, false, false, false}},
    {InUse,       Dhcp,      {false,   false, false,  false, false, false, false}},
    {InUse,       LinkLocal, {false,   false, false,  false, false, false, false}},
};
// clang-format on

} // namespace

TEST(EditabilityTest, EachStatusAndKindOfAddressAllowsWhatTheTableSays)
{
    for (const Row& row : Rows) {
        const std::optional<Editability> allowed = EditabilityOf(row.status, row.chosen);
        const std::string which = "row " + std::to_string(&row - Rows);
        ASSERT_TRUE(allowed.has_value()) << which;
        EXPECT_EQ(allowed->bAddress, row.allowed.bAddress) << which;
        EXPECT_EQ(allowed->bMask, row.allowed.bMask) << which;
        EXPECT_EQ(allowed->bGateway, row.allowed.bGateway) << which;
        EXPECT_EQ(allowed->bRadios, row.allowed.bRadios) << which;
        EXPECT_EQ(allowed->bUserName, row.allowed.bUserName) << which;
        EXPECT_EQ(allowed->bSave, row.allowed.bSave) << which;
        EXPECT_EQ(allowed->bModifyIp, row.allowed.bModifyIp) << which;
    }
}

TEST(EditabilityTest, WithoutAKnownStatusNothingIsSaid)
{
    for (const IpConfigType chosen : {Static, Dhcp, LinkLocal})
        EXPECT_FALSE(EditabilityOf(std::nullopt, chosen).has_value());
}
