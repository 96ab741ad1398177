// SPDX-License-Identifier: Apache-2.0
#include "cli/AddressConflict.h"

#include "cli/Failure.h"
#include "cli/Session.h"

#include <gmock/gmock.h>
#include <sstream>

namespace {

class AddressConflictTest : public testing::Test
{
protected:
    AddressConflictTest()
    {
        camera.m_strMacAddress = "00:00:00:00:00:01";
        camera.m_strIpAddress = "10.0.0.9";
        camera.m_nNetExport = 0xC0A80105;
        camera.m_vecHostAdapter = {{0xC0A80105, 0xFFFF0000}, {0xAC100001, 0xFFFFFF00}};
    }

    QDevice camera;
    std::ostringstream out;
    std::ostringstream err;
    cli::Session session{.out = out, .err = err, .programPath = {}, .ping = [](const std::string&) {
                             return cli::PingResult{};
                         }};
};

} // namespace

TEST_F(AddressConflictTest, IsSeenWithEveryAdapterOfTheComputer)
{
    for (const quint32 address : {0xC0A80105u, 0xAC100001u}) {
        try {
            cli::requireUnusedAddress(camera, {camera}, address, session);
            ADD_FAILURE() << address;
        } catch (const cli::Failure& failure) {
            EXPECT_EQ(failure.status(), cli::ExitStatus::Failed);
            EXPECT_THAT(failure.what(), testing::HasSubstr("an adapter of this computer has it"));
        }
    }
    EXPECT_NO_THROW(cli::requireUnusedAddress(camera, {camera}, 0xC0A80106, session));
    EXPECT_EQ(err.str(), "");
}

TEST_F(AddressConflictTest, KnowsTheSubnetByTheMaskOfTheAdapterThatHearsTheCamera)
{
    EXPECT_FALSE(cli::isOutsideAdapterSubnet(camera, 0xC0A8FE01));
    EXPECT_TRUE(cli::isOutsideAdapterSubnet(camera, 0xC0A90101));
    EXPECT_TRUE(cli::isOutsideAdapterSubnet(camera, 0xAC100009)) << "another adapter's";
    camera.m_vecHostAdapter.clear();
    EXPECT_FALSE(cli::isOutsideAdapterSubnet(camera, 0xC0A801FE));
    EXPECT_TRUE(cli::isOutsideAdapterSubnet(camera, 0xC0A80201));
}
