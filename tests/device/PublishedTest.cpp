// SPDX-License-Identifier: Apache-2.0
#include "device/Published.h"

#include <QVector>

#include <functional>
#include <gtest/gtest.h>
#include <thread>

namespace {

/// Counts its living instances, and lets a test in when it is copied.
struct Tracked
{
    Tracked() { ++s_living; }
    explicit Tracked(int number_) : number(number_) { ++s_living; }
    Tracked(const Tracked& other) : number(other.number)
    {
        ++s_living;
        if (s_onCopy)
            std::exchange(s_onCopy, nullptr)();
        // What it is copied from must still be there after whatever the test did meanwhile.
        EXPECT_TRUE(other.alive);
    }
    Tracked(Tracked&& other) noexcept : number(other.number) { ++s_living; }
    Tracked& operator=(const Tracked&) = delete;
    ~Tracked()
    {
        alive = false;
        --s_living;
    }

    int number = 0;
    bool alive = true;

    static inline int s_living = 0;
    static inline std::function<void()> s_onCopy;
};

} // namespace

TEST(PublishedTest, BeginsWithADefaultValue)
{
    const Published<int> published;
    EXPECT_EQ(published.read(), 0);
}

TEST(PublishedTest, GivesWhatWasPublishedLast)
{
    Published<int> published;
    published.publish(1);
    EXPECT_EQ(published.read(), 1);
    published.publish(2);
    EXPECT_EQ(published.read(), 2);
    EXPECT_EQ(published.read(), 2);
}

TEST(PublishedTest, KeepsOneValueWhenNobodyReads)
{
    {
        Published<Tracked> published;
        for (int i = 1; i <= 100; ++i) {
            published.publish(Tracked(i));
            EXPECT_EQ(Tracked::s_living, 1);
        }
    }
    EXPECT_EQ(Tracked::s_living, 0);
}

TEST(PublishedTest, AValueThatIsBeingReadOutlivesItsSuccessors)
{
    {
        Published<Tracked> published;
        published.publish(Tracked(1));
        Tracked::s_onCopy = [&published] {
            published.publish(Tracked(2));
            published.publish(Tracked(3));
        };
        EXPECT_EQ(published.read().number, 1);
        EXPECT_EQ(published.read().number, 3);

        published.publish(Tracked(4));
        EXPECT_EQ(Tracked::s_living, 1); // the retired ones went with the next that was published
    }
    EXPECT_EQ(Tracked::s_living, 0);
}

TEST(PublishedTest, ReadersOnAnyThreadSeeWholeValuesInTheirOrder)
{
    constexpr int Generations = 2000;
    Published<QVector<int>> published;
    const auto generation = [](int number) { return QVector<int>(1 + number % 50, number); };
    published.publish(generation(0));

    // Relaxed on purpose: a stronger order would make up for one that is missing in what is tested.
    std::atomic<int> reads{0};
    const auto readAll = [&] {
        int last = 0;
        while (last < Generations) {
            const QVector<int> value = published.read();
            ASSERT_FALSE(value.isEmpty());
            const int number = value.first();
            ASSERT_GE(number, last);
            ASSERT_EQ(value, generation(number));
            last = number;
            reads.fetch_add(1, std::memory_order_relaxed);
        }
    };
    std::thread first(readAll);
    std::thread second(readAll);
    for (int i = 1; i <= Generations; ++i) {
        const int readsBefore = reads.load(std::memory_order_relaxed);
        published.publish(generation(i));
        while (i < Generations && reads.load(std::memory_order_relaxed) == readsBefore)
            std::this_thread::yield();
    }
    first.join();
    second.join();
}
