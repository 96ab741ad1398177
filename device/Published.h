// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <atomic>
#include <memory>
#include <utility>
#include <vector>

/// A value that one thread replaces while any others read it, without a lock: a reader gets a copy of the old
/// value or of the new one, whole. T copies cheaply (implicitly shared); there is always a value, at first a
/// default one.
///
/// publish() is called by one thread at a time, read() by any, at any time.
///
/// It is not a std::atomic<std::shared_ptr>: that of g++ 12 takes a lock (is_lock_free() is false), and the
/// thread sanitizer reports a race between its load() and its store().
template <typename T>
class Published
{
public:
    Published() = default;
    Published(const Published&) = delete;
    Published& operator=(const Published&) = delete;
    ~Published() { delete m_current.load(); }

    void publish(T value)
    {
        auto next = std::make_unique<const T>(std::move(value));
        m_retired.emplace_back(m_current.exchange(next.release()));
        // A reader counts itself before it loads the pointer. One that is not counted yet will load the new
        // pointer, so while the count is 0 nobody copies from a retired value.
        if (m_readers.load() == 0)
            m_retired.clear();
    }

    T read() const
    {
        const Reader counted(m_readers);
        return *m_current.load();
    }

private:
    struct Reader
    {
        explicit Reader(std::atomic<int>& readers) : m_readers(readers) { m_readers.fetch_add(1); }
        Reader(const Reader&) = delete;
        Reader& operator=(const Reader&) = delete;
        ~Reader() { m_readers.fetch_sub(1); }

        std::atomic<int>& m_readers;
    };

    std::atomic<const T*> m_current{new T()};
    mutable std::atomic<int> m_readers{0}; ///< That may be copying from the current value or a retired one.
    std::vector<std::unique_ptr<const T>> m_retired; ///< For publish() alone.
};
