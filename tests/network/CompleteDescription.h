// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <string>

/// A description file of `size` bytes that lacks nothing, for as long as this lives.
class CompleteDescription
{
public:
    explicit CompleteDescription(std::size_t size)
        : path(testing::TempDir() + "description-" + std::to_string(getpid()) + "-" + std::to_string(size) +
               ".xml"),
          content(R"(<RegisterDescription><Port Name="Device"/>
<Boolean Name="GevCurrentIPConfigurationPersistentIP"/><Boolean Name="GevCurrentIPConfigurationDHCP"/>
<StringReg Name="DeviceUserID"/><Command Name="DeviceReset"/><!-- )")
    {
        const std::string end = " --></RegisterDescription>";
        for (std::size_t i = 0; content.size() + end.size() < size; ++i)
            content += static_cast<char>('a' + i * 7 / 512 % 26);
        content += end;
        std::ofstream(path) << content;
    }
    CompleteDescription(const CompleteDescription&) = delete;
    CompleteDescription& operator=(const CompleteDescription&) = delete;
    ~CompleteDescription() { std::filesystem::remove(path); }

    std::string path;
    std::string content;
};
