// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "cli/Program.h"
#include "cli/neighbours/AddressOwner.h"
#include "cli/session/Session.h"
#include "tests/support/SdkDouble.h"

#include <gtest/gtest.h>
#include <sstream>
#include <string>
#include <vector>

/// The program on a computer of the test's own: cameras are the SDK double's, and no packet leaves it.
class ProgramFixture : public testing::Test
{
protected:
    cli::ExitStatus run(const std::vector<std::string>& words)
    {
        out.str({});
        err.str({});
        return cli::runProgram(words, session);
    }

    /// The FORCEIP calls so far.
    std::vector<std::string> forced() const
    {
        std::vector<std::string> calls;
        for (const std::string& call : sdk.calls())
            if (call.rfind("ForceIpEx", 0) == 0)
                calls.push_back(call);
        return calls;
    }

    SdkDouble sdk;
    std::ostringstream out;
    std::ostringstream err;
    std::vector<base::Ipv4> questions; ///< The addresses whose owners were asked for.
    cli::OwnerAnswer ownerAnswer;
    cli::Session session{.out = out, .err = err, .findOwner = [this](const cli::OwnerQuestion& question) {
                             questions.push_back(question.address);
                             return ownerAnswer;
                         }};
};
