// SPDX-License-Identifier: Apache-2.0
#include "doctor/Makers.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sstream>

using testing::IsEmpty;
using testing::Pair;
using testing::UnorderedElementsAre;

namespace {

constexpr const char* Registry =
    "OUI/MA-L                                                    Organization\r\n"
    "company_id                                                  Organization\r\n"
    "\r\n"
    "00-22-72   (hex)\t\tAmerican Micro-Fuel Device Corp.\r\n"
    "002272     (base 16)\t\tAmerican Micro-Fuel Device Corp.\r\n"
    "\t\t\t\t2181 Buchanan Loop\r\n"
    "02-22-73   (hex)\t\tNobody\r\n"
    "D0-69-9E   (hex)\t\tLUMINEX\r\n"
    "00-22-74   (hex)\t\t\r\n";

base::MacAddress mac(const char* text)
{
    return *base::MacAddress::parse(text);
}

} // namespace

TEST(Makers, AreReadFromTheRegistry)
{
    std::istringstream registry(Registry);
    EXPECT_THAT(doctor::makersIn(registry, {mac("D0:69:9E:00:00:01"), mac("00:22:72:01:02:03"),
                                            mac("00:22:72:01:02:04"), mac("00:22:74:00:00:00"),
                                            mac("00:00:01:00:00:00")}),
                UnorderedElementsAre(Pair(mac("D0:69:9E:00:00:01"), "LUMINEX"),
                                     Pair(mac("00:22:72:01:02:03"), "American Micro-Fuel Device Corp."),
                                     Pair(mac("00:22:72:01:02:04"), "American Micro-Fuel Device Corp.")));
}

TEST(Makers, OfAMacThatItsOwnerChoseAreUnknown)
{
    std::istringstream registry(Registry);
    EXPECT_THAT(doctor::makersIn(registry, {mac("02:22:73:00:00:01")}), IsEmpty());
}
