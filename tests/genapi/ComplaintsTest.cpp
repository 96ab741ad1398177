// SPDX-License-Identifier: Apache-2.0
#include "genapi/engine/Complaints.h"

#include "genapi/description/Description.h"
#include "genapi/engine/Engine.h"
#include "tests/genapi/Camera.h"

#include <glib.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <mutex>
#include <thread>

using genapi::Complaints;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

void complain(const char* domain, const char* text, GLogLevelFlags level = G_LOG_LEVEL_CRITICAL)
{
    g_log(domain, level, "%s", text);
}

/// What GLib prints of complaints, kept instead of printed, while this lives.
class Printed
{
public:
    Printed() { g_log_set_default_handler(keep, this); }
    Printed(const Printed&) = delete;
    Printed& operator=(const Printed&) = delete;
    ~Printed() { restoreHandlerOfTests(); }

    std::vector<std::string> texts() const
    {
        const std::lock_guard lock(m_mutex);
        return m_texts;
    }

private:
    static void keep(const gchar*, GLogLevelFlags, const gchar* text, gpointer self)
    {
        auto& printed = *static_cast<Printed*>(self);
        const std::lock_guard lock(printed.m_mutex);
        printed.m_texts.emplace_back(text);
    }

    mutable std::mutex m_mutex;
    std::vector<std::string> m_texts;
};

/// A port with bugs of its own.
class ComplainingPort : public MemoryPort
{
public:
    void Read(void* buffer, int64_t address, int64_t length) override
    {
        complain("GLib", "the port's own");
        MemoryPort::Read(buffer, address, length);
    }
};

genapi::Engine engineOf(const std::string& nodes)
{
    auto checked = genapi::checkDescription(description(nodes));
    return {checked.text, std::move(checked.faults)};
}

} // namespace

TEST(AComplaint, IsHeardInAnyNameThatTheEngineHasAndNotPrinted)
{
    const Printed printed;
    for (const char* domain : {static_cast<const char*>(nullptr), "Aravis", "GLib", "GLib-GObject"})
        for (const auto level : {G_LOG_LEVEL_CRITICAL, G_LOG_LEVEL_WARNING}) {
            const Complaints complaints;
            EXPECT_EQ(complaints.first(), "");
            complain(domain, "first", level);
            complain(domain, "second", level);
            EXPECT_EQ(complaints.first(), "first") << (domain ? domain : "none");
        }
    EXPECT_THAT(printed.texts(), IsEmpty());
}

TEST(AComplaint, OfAFailedAssertionIsHeardToo)
{
    const Printed printed;
    const Complaints complaints;
    EXPECT_EQ(arv_gc_integer_get_value(nullptr, nullptr), 0);
    EXPECT_THAT(complaints.first(), HasSubstr("assertion"));
    EXPECT_THAT(printed.texts(), IsEmpty());
}

TEST(AComplaint, IsPrintedWhenNobodyListensAndWhenItIsNoneOfTheEngines)
{
    const Printed printed;
    complain("Aravis", "before");
    {
        const Complaints complaints;
        complain("Other", "another's");
        complain("GLib", "only said", G_LOG_LEVEL_MESSAGE);
        EXPECT_EQ(complaints.first(), "");
    }
    complain("Aravis", "after");
    EXPECT_THAT(printed.texts(), ElementsAre("before", "another's", "only said", "after"));
}

TEST(AComplaint, GoesToTheInnermostThatListens)
{
    const Complaints outer;
    {
        const Complaints inner;
        complain("Aravis", "in");
        EXPECT_EQ(inner.first(), "in");
    }
    EXPECT_EQ(outer.first(), "");
    complain("Aravis", "out");
    EXPECT_EQ(outer.first(), "out");
}

TEST(AComplaint, OfAnotherThreadIsNotHeardHere)
{
    testing::internal::CaptureStderr();
    const Complaints complaints;
    std::thread([] { complain("GLib-GObject", "another thread's"); }).join();
    EXPECT_EQ(complaints.first(), "");
    EXPECT_THAT(testing::internal::GetCapturedStderr(), HasSubstr("another thread's"));
}

TEST(Complaints, AreHeardOnEachThreadForItself)
{
    std::atomic<int> mistakes{0};
    std::vector<std::thread> threads;
    for (int i = 0; i < 8; ++i)
        threads.emplace_back([&mistakes, own = "of thread " + std::to_string(i)] {
            for (int round = 0; round < 200; ++round) {
                const Complaints complaints;
                complain("Aravis", own.c_str());
                mistakes += complaints.first() != own;
            }
        });
    for (auto& thread : threads)
        thread.join();
    EXPECT_EQ(mistakes, 0);
}

TEST(ACallIntoTheEngine, FailsWithItsComplaint)
{
    auto engine = engineOf({});
    const auto text = textOf<GenICam::RuntimeException>([&] {
        engine.call("Gain", "set", [](GError**) {
            complain("Aravis", "arv_set: assertion 'length > 0' failed");
            return true;
        });
    });
    EXPECT_EQ(text, "Could not set Gain: the engine complains: arv_set: assertion 'length > 0' failed.");
    EXPECT_TRUE(engine.call("Gain", "set", [](GError**) { return true; })) << "The next one is a new one.";
}

TEST(ACallIntoTheEngine, FailsWithThePortsFailureRatherThanWhatTheEngineSaysOfIt)
{
    auto engine = engineOf(registerNode("IntReg", "Gain", "0", "4"));
    MemoryPort port;
    port.failFrom(0);
    engine.connect(port);
    const auto text = textOf<GenICam::RuntimeException>([&] {
        auto* node = engine.findNode("Gain");
        engine.call("Gain", "read", [node](GError** error) {
            const auto value = arv_gc_integer_get_value(ARV_GC_INTEGER(node), error);
            complain("GLib", "what follows from it");
            return value;
        });
    });
    EXPECT_THAT(text, HasSubstr("the cable is out"));
}

TEST(APort, MayComplainOfItsOwnAffairs)
{
    const Printed printed;
    ComplainingPort port;
    port.put(0, {0, 0, 0, 7});
    const auto map =
        load(description(registerNode("IntReg", "Gain", "0", "4", element("Endianess", "BigEndian"))));
    map->Connect(&port, "Device");
    EXPECT_EQ(nodeAs<GenApi::IInteger>(*map, "Gain")->GetValue(), 7);
    EXPECT_THAT(printed.texts(), ElementsAre("the port's own"));
}
