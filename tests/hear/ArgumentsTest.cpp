// SPDX-License-Identifier: Apache-2.0
#include "tests/hear/Listener.h"

#include <gtest/gtest.h>

namespace {

const char Program[] = LISTENER;

lab::Output run(const lab::Namespace& host, std::vector<std::string> arguments)
{
    arguments.insert(arguments.begin(), Program);
    return host.execute(arguments);
}

} // namespace

TEST(Arguments, AreAnAdaptersNumberAndAPortOrArrivalsAndNothingElse)
{
    const lab::Namespace host;
    const std::vector<std::string> wrong[] = {
        {},
        {"1"},
        {"1", "40000", "1"},
        {"arrivals"},
        {"arrivals", "1"},
        {"0", "40000"},
        {"1", "0"},
        {"", "40000"},
        {"1", ""},
        {"-1", "40000"},
        {"1", "-1"},
        {"+1", "40000"},
        {"1", "+40000"},
        {" 1", "40000"},
        {"1 ", "40000"},
        {"1", " 40000"},
        {"1", "40000\n"},
        {"0x1", "40000"},
        {"1", "0x9C40"},
        {"1.0", "40000"},
        {"lo", "40000"},
        {"1", "65536"},
        {"1", "4295007296"},           // 40000 in its lower 32 bits,
        {"4294967297", "40000"},       // and 1 here,
        {"1", "18446744073709591616"}, // and in the lower 64 ones.
        {"18446744073709551617", "40000"},
        {"2147483648", "40000"},
        {"1", "Arrivals"},
        {"1", "arrival"},
        {"1", "arrivals "},
        {"1", "40000 arrivals"},
    };
    for (const auto& arguments : wrong) {
        SCOPED_TRACE(testing::PrintToString(arguments));
        const lab::Output output = run(host, arguments);
        EXPECT_EQ(output.status, 2);
        EXPECT_EQ(output.standardOutput, "");
        EXPECT_EQ(output.standardError, "usage: ip-configurator-hear IFINDEX PORT|arrivals\n");
    }
}

TEST(Arguments, AreTakenUpToTheLargest)
{
    const lab::Namespace host;
    for (const char* const what : {"65535", "1", "arrivals"}) {
        const lab::Output output = run(host, {"2147483647", what});
        EXPECT_EQ(output.status, 1);
        EXPECT_EQ(output.standardOutput, "");
        EXPECT_EQ(output.standardError, "ip-configurator-hear: bind: No such device\n");
    }
}

TEST(Arguments, ThatNameAnAdapterWithoutEthernetLeaveNothingToHear)
{
    const lab::Namespace host;
    for (const char* const what : {"40000", "arrivals"}) {
        Listener listener = Listener::started(host, {"1", what});
        EXPECT_EQ(listener.wait(), 0) << "though its input has not ended";
        EXPECT_EQ(listener.rest(), "") << "it does not say that it listens";
        EXPECT_EQ(listener.complaints(), "");
    }
}
