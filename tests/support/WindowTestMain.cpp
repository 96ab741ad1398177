// SPDX-License-Identifier: Apache-2.0
#include <QApplication>

#include <gtest/gtest.h>

int main(int argumentCount, char** arguments)
{
    testing::InitGoogleTest(&argumentCount, arguments);
    if (testing::GTEST_FLAG(list_tests))
        return RUN_ALL_TESTS(); // The build asks, where there is no display.
    const QApplication application(argumentCount, arguments);
    return RUN_ALL_TESTS();
}
