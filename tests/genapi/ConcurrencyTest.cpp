// SPDX-License-Identifier: Apache-2.0
#include "tests/genapi/Descriptions.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

TEST(NodeMaps, AreLoadedOnManyThreadsAtOnce)
{
    const std::string text = description(registerNode("IntReg", "Width", "0x100", "4"));
    std::atomic<int> waiting{8};
    std::atomic<int> loaded{0};
    std::vector<std::thread> threads;
    for (int i = 0; i < 8; ++i)
        threads.emplace_back([&] {
            --waiting;
            while (waiting > 0) {
            }
            for (int round = 0; round < 20; ++round)
                loaded += nodeAs<GenApi::IInteger>(*load(text), "Width") != nullptr;
        });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(loaded, 160);
}
