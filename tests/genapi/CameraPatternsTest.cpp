// SPDX-License-Identifier: Apache-2.0
// Each way in which real cameras describe what the tool writes, on literal bytes.
#include "tests/genapi/Camera.h"
#include "tests/support/CameraDescriptions.h"
#include "tests/support/Zips.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace GenApi;
using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

using Bytes = std::vector<uint8_t>;

constexpr auto PersistentIp = "GevCurrentIPConfigurationPersistentIP";
constexpr auto Dhcp = "GevCurrentIPConfigurationDHCP";

Bytes bytesOf(std::uint32_t word)
{
    return {static_cast<uint8_t>(word >> 24), static_cast<uint8_t>(word >> 16),
            static_cast<uint8_t>(word >> 8), static_cast<uint8_t>(word)};
}

/// With the bootstrap registers that conditions look at.
struct PatternCamera : FileCamera
{
    explicit PatternCamera(const std::string& file, const descriptions::Registers& makers = {})
        : FileCamera(file)
    {
        port.put(0x10, {0, 0, 0, 7});
        port.put(0x14, {0xC0, 0, 0, 6});
        port.put(0x934, {0xC0, 0, 0, 0x23});
        for (const auto& [address, value] : makers)
            port.put(address, bytesOf(value));
    }
};

/// A way and the version of the format.
template <typename Way>
using Case = std::tuple<Way, const char*>;

template <typename Way>
std::string nameOf(const testing::TestParamInfo<Case<Way>>& info)
{
    return std::get<0>(info.param).name + std::string("_1_") + std::get<1>(info.param);
}

template <typename Way>
class Pattern : public testing::TestWithParam<Case<Way>>
{
protected:
    static const Way& way() { return std::get<0>(testing::TestWithParam<Case<Way>>::GetParam()); }
    static std::string file(std::size_t size = 0)
    {
        return descriptions::file(way().nodes, std::get<1>(testing::TestWithParam<Case<Way>>::GetParam()),
                                  size);
    }
};

using ModesPattern = Pattern<descriptions::Modes>;
using ResetPattern = Pattern<descriptions::Reset>;
using NamePattern = Pattern<descriptions::Name>;

const auto schemas = testing::Values("0", "1");

} // namespace

namespace descriptions {
void PrintTo(const Modes& way, std::ostream* stream)
{
    *stream << way.name;
}
void PrintTo(const Reset& way, std::ostream* stream)
{
    *stream << way.name;
}
void PrintTo(const Name& way, std::ostream* stream)
{
    *stream << way.name;
}
} // namespace descriptions

TEST_P(ModesPattern, SwitchesItsBitAndNothingElse)
{
    PatternCamera camera(file(), way().registers);
    auto& persistent = camera.node<IBoolean>(PersistentIp);
    auto& dhcp = camera.node<IBoolean>(Dhcp);
    EXPECT_FALSE(persistent.GetValue());
    EXPECT_TRUE(dhcp.GetValue());
    persistent.SetValue(true, true);
    EXPECT_THAT(camera.port.bytes(0x14, 4), ElementsAre(0xC0, 0, 0, 7));
    dhcp.SetValue(false, true);
    EXPECT_THAT(camera.port.bytes(0x14, 4), ElementsAre(0xC0, 0, 0, 5));
    EXPECT_TRUE(persistent.GetValue());
    EXPECT_FALSE(dhcp.GetValue());
    persistent.SetValue(false, true);
    EXPECT_THAT(camera.port.bytes(0x14, 4), ElementsAre(0xC0, 0, 0, 4));
    dhcp.SetValue(true, true);
    EXPECT_THAT(camera.port.bytes(0x14, 4), ElementsAre(0xC0, 0, 0, 6));
    for (const auto& access : camera.port.accesses)
        EXPECT_TRUE(access.starts_with("R ") || access == "W 14+4") << access;
}

INSTANTIATE_TEST_SUITE_P(Cameras, ModesPattern,
                         testing::Combine(testing::ValuesIn(descriptions::allModes()), schemas),
                         nameOf<descriptions::Modes>);

TEST(ModesWithConditions, AreSwitchedOnlyWhenAllAreMet)
{
    int conditions = 0;
    for (const auto& way : descriptions::allModes())
        for (std::size_t i = 0; i < way.registers.size(); ++i) {
            ++conditions;
            auto registers = way.registers;
            registers[i].second ^= 1;
            PatternCamera camera(descriptions::file(way.nodes), registers);
            for (const char* name : {PersistentIp, Dhcp})
                EXPECT_THAT(textOf<GenICam::AccessException>(
                                [&] { camera.node<IBoolean>(name).SetValue(true, true); }),
                            HasSubstr(std::string(name) + " cannot be set"));
            EXPECT_THAT(camera.port.accesses, Each(StartsWith("R")));
        }
    EXPECT_GE(conditions, 2);
}

TEST_P(ResetPattern, WritesItsBitsAndNoOthersOfARegisterThatCanBeRead)
{
    PatternCamera camera(file());
    const std::uint32_t before = 0xA5A5A5A5 & ~way().field;
    camera.port.put(way().address, bytesOf(before));
    camera.port.put(way().address - 4, bytesOf(0x5A5A5A5A));
    camera.node<ICommand>("DeviceReset").Execute(true);
    EXPECT_EQ(camera.port.bytes(way().address, 4), bytesOf(way().written | (way().isWriteOnly ? 0 : before)));
    EXPECT_EQ(camera.port.bytes(way().address - 4, 4), bytesOf(0x5A5A5A5A));
    std::size_t reads = 0;
    for (const auto& access : camera.port.accesses)
        reads += access.starts_with("R");
    EXPECT_EQ(reads, way().isWriteOnly || way().field == 0xFFFFFFFF ? 0u : 1u);
}

INSTANTIATE_TEST_SUITE_P(Cameras, ResetPattern,
                         testing::Combine(testing::ValuesIn(descriptions::allResets()), schemas),
                         nameOf<descriptions::Reset>);

TEST_P(NamePattern, IsARegisterOfSixteenBytesOrNoRegisterAtAll)
{
    PatternCamera camera(file());
    const std::string before("0123456789ABCDEF");
    camera.port.put(0xE8, Bytes(before.begin(), before.end()));
    auto* name = nodeAs<IRegister>(*camera.map, "DeviceUserID");
    ASSERT_EQ(name != nullptr, way().isRegister);
    if (!name)
        return;
    EXPECT_EQ(name->GetLength(), 16);
    const Bytes text{'F', 'E', 'D', 'C', 'B', 'A', '9', '8', '7', '6', '5', '4', '3', '2', '1', '0'};
    if (way().isWritable) {
        name->Set(text.data(), 16, true);
        EXPECT_EQ(camera.port.bytes(0xE8, 16), text);
    } else {
        EXPECT_THAT(textOf<GenICam::AccessException>([&] { name->Set(text.data(), 16, true); }),
                    HasSubstr("DeviceUserID cannot be set: it is read-only"));
        EXPECT_EQ(camera.port.bytes(0xE8, 16), Bytes(before.begin(), before.end()));
    }
}

INSTANTIATE_TEST_SUITE_P(Cameras, NamePattern,
                         testing::Combine(testing::ValuesIn(descriptions::allNames()), schemas),
                         nameOf<descriptions::Name>);

TEST(ADescriptionOfAnyRealSize, IsTakenPlainOrZippedAndWithNulsBehind)
{
    const std::string nodes = descriptions::allModes()[0].nodes + descriptions::allResets()[0].nodes;
    for (const std::size_t size : {60'000u, 300'000u, 1'300'000u}) {
        const auto file = descriptions::file(nodes, "0", size);
        ASSERT_GE(file.size(), size);
        const std::string nuls(3, '\0');
        for (const auto& data :
             {file, file + nuls, zipOf({{"camera.xml", file}}), zipOf({{"camera.xml", file + nuls}})}) {
            PatternCamera camera(data);
            camera.node<IBoolean>(PersistentIp).SetValue(true, true);
            EXPECT_THAT(camera.port.bytes(0x14, 4), ElementsAre(0xC0, 0, 0, 7));
            EXPECT_TRUE(camera.map->GetNode("Custom0")) << "it has been filled";
        }
    }
}
