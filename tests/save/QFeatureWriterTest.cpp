// SPDX-License-Identifier: Apache-2.0
#include "save/QFeatureWriter.h"

#include "tests/save/NodeMapDouble.h"

#include <QString>

#include <algorithm>
#include <gmock/gmock.h>
#include <new>
#include <string_view>

using testing::ElementsAre;
using testing::IsEmpty;
using testing::StrEq;

namespace {

constexpr char Name[] = "Feature";
constexpr char Action[] = "Set Feature";

class QFeatureWriterTest : public testing::Test
{
protected:
    void SetUp() override
    {
        nodeMap._LoadXMLFromString("<xml/>");
        writes.clear();
    }

    std::vector<std::string> writes;
    NodeMapDouble nodes{[this](const std::string& event) { writes.push_back(event); }};
    GenApi::CNodeMapRef nodeMap;
    std::vector<std::string> told;
    QFeatureWriter writer{[this](const QString& reason) { told.push_back(reason.toStdString()); }};
};

void throwAccess()
{
    throw GenICam::AccessException("not now", "Some.cpp", 1);
}

void throwCode()
{
    throw 0x1F; // as the library's own callers do
}

void throwOther()
{
    throw std::bad_alloc();
}

/// What a failing write throws, and the reasons that become of it.
struct Failure
{
    const char* description;
    void (*throwIt)();
    const char* ofBoolean;
    const char* ofOthers; ///< After the action; none when the user is not told.
};

class QFeatureWriterFailureTest : public QFeatureWriterTest, public testing::WithParamInterface<Failure>
{
protected:
    void expectTold()
    {
        if (!GetParam().ofOthers) {
            EXPECT_THAT(told, IsEmpty());
            EXPECT_THAT(writer.GetErrorText(), StrEq(""));
            return;
        }
        const std::string reason = std::string(Action) + GetParam().ofOthers;
        EXPECT_THAT(told, ElementsAre(reason));
        EXPECT_EQ(writer.GetErrorText(), reason);
    }
};

} // namespace

TEST_F(QFeatureWriterTest, WritesABooleanVerified)
{
    nodes.addBoolean(Name);
    EXPECT_TRUE(writer.WriteBoolean(nodeMap, Name, true));
    EXPECT_TRUE(writer.WriteBoolean(nodeMap, Name, false));
    EXPECT_THAT(writes, ElementsAre("Feature = 1", "Feature = 0"));
}

TEST_F(QFeatureWriterTest, ABooleanThatIsMissingOrOfAnotherKindHasNoReason)
{
    EXPECT_FALSE(writer.WriteBoolean(nodeMap, Name, true));
    nodes.addInteger(Name);
    EXPECT_FALSE(writer.WriteBoolean(nodeMap, Name, true));
    EXPECT_THAT(writes, IsEmpty());
    EXPECT_THAT(told, IsEmpty());
    EXPECT_THAT(writer.GetErrorText(), StrEq(""));
}

TEST_F(QFeatureWriterTest, AnAddressFrom128OnIsWrittenAsANegativeNumber)
{
    nodes.addInteger(Name);
    EXPECT_TRUE(writer.WriteAddress(nodeMap, Name, Action, "192.168.1.1"));
    EXPECT_TRUE(writer.WriteAddress(nodeMap, Name, Action, "10.0.0.1"));
    EXPECT_THAT(writes, ElementsAre("Feature = -1062731519", "Feature = 167772161"));
}

TEST_F(QFeatureWriterTest, AnAddressWithoutFourPartsIsNotWrittenAndNobodyIsTold)
{
    nodes.addInteger(Name);
    EXPECT_FALSE(writer.WriteAddress(nodeMap, Name, Action, "192.168.1"));
    EXPECT_THAT(writes, IsEmpty());
    EXPECT_THAT(told, IsEmpty());
}

TEST_F(QFeatureWriterTest, AMissingFeatureIsToldBeforeTheAddressIsLookedAt)
{
    EXPECT_FALSE(writer.WriteAddress(nodeMap, Name, Action, "192.168.1"));
    EXPECT_THAT(told, ElementsAre("Set Feature Error: code 0x0"));
}

TEST_F(QFeatureWriterTest, AFeatureOfAnotherKindIsToldAsCode0)
{
    nodes.addOther(Name);
    EXPECT_FALSE(writer.WriteAddress(nodeMap, Name, Action, "10.0.0.1"));
    EXPECT_FALSE(writer.WriteRegister(nodeMap, Name, Action, "text"));
    EXPECT_FALSE(writer.Execute(nodeMap, Name, Action));
    EXPECT_THAT(told, ElementsAre("Set Feature Error: code 0x0", "Set Feature Error: code 0x0",
                                  "Set Feature Error: code 0x0"));
    EXPECT_THAT(writes, IsEmpty());
}

TEST_F(QFeatureWriterTest, ARegisterIsWrittenWholeFilledUpWithZeros)
{
    nodes.addRegister(Name, 6);
    EXPECT_TRUE(writer.WriteRegister(nodeMap, Name, Action, "abc"));
    EXPECT_TRUE(writer.WriteRegister(nodeMap, Name, Action, ""));
    EXPECT_THAT(writes, ElementsAre("Feature = 61 62 63 00 00 00", "Feature = 00 00 00 00 00 00"));
}

TEST_F(QFeatureWriterTest, WhatIsLongerThanTheRegisterIsCut)
{
    nodes.addRegister(Name, 2);
    EXPECT_TRUE(writer.WriteRegister(nodeMap, Name, Action, "abc"));
    EXPECT_THAT(writes, ElementsAre("Feature = 61 62"));
}

TEST_F(QFeatureWriterTest, ExecutesACommandVerified)
{
    nodes.addCommand(Name);
    EXPECT_TRUE(writer.Execute(nodeMap, Name, Action));
    EXPECT_THAT(writes, ElementsAre("Feature()"));
}

TEST_F(QFeatureWriterTest, TheErrorTextHoldsNothingOfTheOneBefore)
{
    EXPECT_THAT(writer.GetErrorText(), StrEq(""));
    nodes.addBoolean(Name, throwAccess);
    EXPECT_FALSE(writer.WriteBoolean(nodeMap, Name, true));
    nodes.addBoolean(Name, throwCode);
    EXPECT_FALSE(writer.WriteBoolean(nodeMap, Name, true));
    const std::string_view text("Error code:0x1f");
    EXPECT_EQ(writer.GetErrorText(), text);
    EXPECT_TRUE(std::all_of(writer.GetErrorText() + text.size(),
                            writer.GetErrorText() + QFeatureWriter::ErrorTextSize,
                            [](char each) { return each == '\0'; }));
}

TEST_F(QFeatureWriterTest, AnErrorTextOfMoreThan511BytesIsCut)
{
    const std::string begin = "what:";
    const std::string end = " SourceFileName:Some.cpp";
    for (const std::size_t size : {511, 512, 5000}) {
        const std::string what(size - begin.size() - end.size(), 'a');
        nodes.addBoolean(Name, [&what] { throw GenICam::AccessException(what, "Some.cpp", 1); });
        EXPECT_FALSE(writer.WriteBoolean(nodeMap, Name, true));
        EXPECT_EQ(writer.GetErrorText(), (begin + what + end).substr(0, 511)) << size;
    }
}

TEST_P(QFeatureWriterFailureTest, OfABooleanStaysInTheErrorText)
{
    nodes.addBoolean(Name, GetParam().throwIt);
    EXPECT_FALSE(writer.WriteBoolean(nodeMap, Name, true));
    EXPECT_THAT(writer.GetErrorText(), StrEq(GetParam().ofBoolean));
    EXPECT_THAT(told, IsEmpty());
}

TEST_P(QFeatureWriterFailureTest, OfAnIntegerIsTold)
{
    nodes.addInteger(Name, GetParam().throwIt);
    EXPECT_FALSE(writer.WriteAddress(nodeMap, Name, Action, "10.0.0.1"));
    expectTold();
}

TEST_P(QFeatureWriterFailureTest, OfARegisterIsTold)
{
    nodes.addRegister(Name, 16, GetParam().throwIt);
    EXPECT_FALSE(writer.WriteRegister(nodeMap, Name, Action, "text"));
    expectTold();
}

TEST_P(QFeatureWriterFailureTest, OfACommandIsTold)
{
    nodes.addCommand(Name, GetParam().throwIt);
    EXPECT_FALSE(writer.Execute(nodeMap, Name, Action));
    expectTold();
}

INSTANTIATE_TEST_SUITE_P(
    Failures, QFeatureWriterFailureTest,
    testing::Values(Failure{"Exception", throwAccess, "what:not now SourceFileName:Some.cpp",
                            " Error: what:not now SourceFileName:Some.cpp"},
                    Failure{"Code", throwCode, "Error code:0x1f", " Error: code 0x1f"},
                    Failure{"AnythingElse", throwOther, "Unknow error.", nullptr}),
    [](const testing::TestParamInfo<Failure>& failure) { return failure.param.description; });
