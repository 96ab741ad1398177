// SPDX-License-Identifier: Apache-2.0
#include "tests/genapi/Descriptions.h"
#include "tests/genapi/MemoryPort.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <pthread.h>

using namespace GenApi;
using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

/// The switch "Mode" with a condition, over a bit with another one; both conditions may name the register
/// "Flag" and the switch "FlagOn" over it.
std::string conditional(const std::string& ofMode, const std::string& ofBit = {},
                        const std::string& accessMode = "RW")
{
    return registerNode("IntReg", "Flag", "0x40", "4", element("Endianess", "BigEndian")) +
           "<Boolean Name=\"FlagOn\">" + element("pValue", "Flag") + "</Boolean>\n" +
           registerNode("MaskedIntReg", "Bit", "0x14", "4",
                        element("Bit", "30") + element("Endianess", "BigEndian") + ofBit, accessMode) +
           "<Boolean Name=\"Mode\">" + element("pValue", "Bit") + ofMode + "</Boolean>\n";
}

struct AccessRow
{
    const char* name;
    std::string nodes;
    EAccessMode whenFlagIsClear;
    EAccessMode whenFlagIsSet;
};

/// A port at which its thread is cancelled.
class CancellingPort : public MemoryPort
{
public:
    void Read(void* buffer, int64_t address, int64_t length) override
    {
        pthread_cancel(pthread_self());
        pthread_testcancel();
        MemoryPort::Read(buffer, address, length);
    }
};

class Access : public testing::TestWithParam<AccessRow>
{};

const std::string notFlag = "<IntSwissKnife Name=\"Not\"><pVariable Name=\"F\">FlagOn</pVariable>"
                            "<Formula>F = 0</Formula></IntSwissKnife>";

const std::vector<AccessRow> accessRows{
    {"Free", conditional({}), RW, RW},
    {"Locked", conditional(element("pIsLocked", "Flag")), RW, RO},
    {"LockedByABoolean", conditional(element("pIsLocked", "FlagOn")), RW, RO},
    {"LockedBelow", conditional({}, element("pIsLocked", "Flag")), RW, RO},
    {"Available", conditional(element("pIsAvailable", "Flag")), NA, RW},
    {"AvailableBelow", conditional({}, element("pIsAvailable", "FlagOn")), NA, RW},
    {"Implemented", conditional(element("pIsImplemented", "Flag")), NI, RW},
    {"ImplementedBelow", conditional({}, element("pIsImplemented", "Flag")), NI, RW},
    {"ImplementedByAFormulaOfABoolean", notFlag + conditional(element("pIsImplemented", "Not")), RW, NI},
    {"ReadOnly", conditional({}, {}, "RO"), RO, RO},
    {"WriteOnly", conditional({}, {}, "WO"), WO, WO},
    {"WriteOnlyLocked", conditional(element("pIsLocked", "Flag"), {}, "WO"), WO, NA},
    {"LockedWithItsStructure",
     registerNode("IntReg", "Flag", "0x40", "4", element("Endianess", "BigEndian")) + "<StructReg>" +
         element("Address", "0x14") + element("Length", "4") + element("AccessMode", "RW") +
         element("pPort", "Device") + element("pIsLocked", "Flag") + element("Endianess", "BigEndian") +
         "<StructEntry Name=\"Bit\"><Bit>30</Bit></StructEntry></StructReg><Boolean Name=\"Mode\">" +
         element("pValue", "Bit") + "</Boolean>",
     RW, RO},
};

} // namespace

TEST_P(Access, FollowsTheCamera)
{
    MemoryPort port;
    const auto map = load(description(GetParam().nodes));
    map->Connect(&port, "Device");
    auto* mode = nodeAs<IBoolean>(*map, "Mode");
    ASSERT_TRUE(mode);
    for (const bool flag : {false, true}) {
        SCOPED_TRACE(flag);
        port.put(0x40, {0, 0, 0, flag});
        const auto expected = flag ? GetParam().whenFlagIsSet : GetParam().whenFlagIsClear;
        EXPECT_EQ(mode->GetAccessMode(), expected);
        port.put(0x14, {0, 0, 0, 0});
        if (expected == RW || expected == WO) {
            mode->SetValue(true, true);
            EXPECT_EQ(port.bytes(0x14, 4).back(), 2);
        } else {
            EXPECT_THAT(textOf<GenICam::AccessException>([&] { mode->SetValue(true, true); }),
                        HasSubstr("Mode cannot be set"));
            EXPECT_EQ(port.bytes(0x14, 4).back(), 0);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Descriptions, Access, testing::ValuesIn(accessRows),
                         [](const auto& row) { return row.param.name; });

TEST(APortThatFails, IsReportedWithFeatureAddressAndCauseAtWhateverAccess)
{
    const auto nodes = conditional(element("pIsLocked", "Flag") + element("pIsAvailable", "Here"),
                                   element("pIsImplemented", "Here")) +
                       "<IntSwissKnife Name=\"Here\"><pVariable Name=\"F\">Flag</pVariable><Formula>F = "
                       "0</Formula></IntSwissKnife>";
    std::size_t accesses = 0;
    {
        MemoryPort port;
        const auto map = load(description(nodes));
        map->Connect(&port, "Device");
        nodeAs<IBoolean>(*map, "Mode")->SetValue(true, true);
        accesses = port.accesses.size();
    }
    ASSERT_GE(accesses, 5U);
    for (std::size_t failing = 0; failing < accesses; ++failing) {
        MemoryPort port;
        const auto map = load(description(nodes));
        map->Connect(&port, "Device");
        port.failFrom(failing);
        const auto text =
            textOf<GenICam::RuntimeException>([&] { nodeAs<IBoolean>(*map, "Mode")->SetValue(true, true); });
        EXPECT_THAT(text, AllOf(HasSubstr("Mode"), HasSubstr("4 bytes at 0x"), HasSubstr("the cable is out")))
            << failing;
        EXPECT_EQ(port.accesses.size(), failing + 1) << "Nothing is tried after a failure.";
        EXPECT_EQ(port.bytes(0x14, 4).back(), 0);
    }
}

TEST(ANodeMapWithoutPort, SaysThatNoCameraIsConnected)
{
    const auto map = load(description(conditional({})));
    EXPECT_THAT(
        textOf<GenICam::RuntimeException>([&] { nodeAs<IBoolean>(*map, "Mode")->SetValue(true, true); }),
        HasSubstr("no camera is connected"));
    EXPECT_THAT(textOf<GenICam::RuntimeException>([&] { map->Connect(nullptr, "Device"); }),
                HasSubstr("no camera"));
    MemoryPort port;
    EXPECT_THAT(textOf<GenICam::RuntimeException>([&] { map->Connect(&port, "Elsewhere"); }),
                HasSubstr("no port named 'Elsewhere'"));
}

TEST(AThreadThatIsCancelled, FinishesItsAccessFirst)
{
    struct Work
    {
        CancellingPort port;
        std::unique_ptr<INodeMap> map = load(description(conditional({})));
        bool isSet = false;
    } work;
    work.map->Connect(&work.port, "Device");
    const auto run = [](void* data) -> void* {
        auto& job = *static_cast<Work*>(data);
        nodeAs<IBoolean>(*job.map, "Mode")->SetValue(true, true);
        job.isSet = true;
        pthread_testcancel();
        return nullptr;
    };
    pthread_t thread{};
    ASSERT_EQ(pthread_create(&thread, nullptr, run, &work), 0);
    void* result = nullptr;
    ASSERT_EQ(pthread_join(thread, &result), 0);
    EXPECT_EQ(result, PTHREAD_CANCELED);
    EXPECT_TRUE(work.isSet);
    EXPECT_EQ(work.port.bytes(0x14, 4).back(), 2);
}

TEST(ANodeMapReference, HoldsOneMapAndConnectsIt)
{
    CNodeMapRef reference("Device");
    MemoryPort port;
    EXPECT_EQ(reference._GetNode("Mode"), nullptr);
    EXPECT_THAT(textOf<GenICam::RuntimeException>([&] { reference._Connect(&port, "Device"); }),
                HasSubstr("no node map"));
    const auto text = description(conditional({}));
    GenICam::gcstring data((text + std::string(64, '\0')).data(), text.size() + 64);
    data.resize(text.size() + 3);
    reference._LoadXMLFromString(data);
    EXPECT_EQ(textOf<GenICam::RuntimeException>([&] { reference._LoadXMLFromString(data); }),
              "Node map already created");
    reference._Connect(&port, "Device");
    auto* mode = dynamic_cast<IBoolean*>(static_cast<IBase*>(reference._GetNode("Mode")));
    ASSERT_TRUE(mode);
    mode->SetValue(true, true);
    EXPECT_EQ(port.bytes(0x14, 4).back(), 2);
}

TEST(AFeatureWithABrokenDescription, CannotBeUsedAndSaysWhy)
{
    const std::vector<std::pair<std::string, std::string>> rows{
        {"<Boolean Name=\"Mode\"><pValue>Gone</pValue></Boolean>", "'Gone'"},
        {conditional(element("pIsAvailable", "Gone")), "'Gone'"},
        {conditional({}, element("pIsLocked", "Gone")), "'Gone'"},
        {registerNode("IntReg", "Word", "0", "0") + "<Boolean Name=\"Mode\"><pValue>Word</pValue></Boolean>",
         "length"},
        {registerNode("IntReg", "Word", "0", "99999999999999") +
             "<Boolean Name=\"Mode\"><pValue>Word</pValue></Boolean>",
         "length"},
        {"<IntSwissKnife Name=\"Word\"><Formula>1 +</Formula></IntSwissKnife><Boolean "
         "Name=\"Mode\"><pValue>Word</pValue></Boolean>",
         "formula"},
        {"<Boolean Name=\"Mode\"><pValue>Device</pValue></Boolean>", "wrong kind"},
    };
    for (const auto& [nodes, reason] : rows) {
        MemoryPort port;
        const auto map = load(description(nodes));
        map->Connect(&port, "Device");
        auto* mode = nodeAs<IBoolean>(*map, "Mode");
        ASSERT_TRUE(mode) << nodes;
        EXPECT_EQ(mode->GetAccessMode(), NI);
        for (const bool verify : {false, true})
            EXPECT_THAT(textOf<GenICam::AccessException>([&, mode = mode] { mode->SetValue(true, verify); }),
                        AllOf(HasSubstr("Mode cannot be used"), HasSubstr(reason)));
        EXPECT_THAT(port.accesses, IsEmpty());
    }
}
