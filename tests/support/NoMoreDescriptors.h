// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gtest/gtest.h>
#include <sys/resource.h>

/// As long as it lives, this process may open nothing more; what is open stays so.
class NoMoreDescriptors
{
public:
    NoMoreDescriptors()
    {
        EXPECT_EQ(getrlimit(RLIMIT_NOFILE, &m_before), 0);
        const rlimit none{0, m_before.rlim_max};
        EXPECT_EQ(setrlimit(RLIMIT_NOFILE, &none), 0);
    }
    NoMoreDescriptors(const NoMoreDescriptors&) = delete;
    NoMoreDescriptors& operator=(const NoMoreDescriptors&) = delete;
    ~NoMoreDescriptors() { EXPECT_EQ(setrlimit(RLIMIT_NOFILE, &m_before), 0); }

private:
    rlimit m_before{};
};
