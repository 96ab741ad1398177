// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <coroutine>
#include <exception>
#include <optional>
#include <utility>

namespace sdk {

/// The result of a task that has none.
struct Nothing
{};

/// A coroutine that begins when it is awaited, or started, and goes with this object. Its exceptions come out
/// where it is awaited. In a condition, g++ 12 makes nothing of what is awaited but a trap: it is named
/// first.
template <typename Result>
class [[nodiscard]] Task
{
public:
    struct promise_type
    {
        std::coroutine_handle<> awaiting; ///< Goes on when this one has ended.
        std::optional<Result> result;
        std::exception_ptr failure;

        Task get_return_object() { return Task(Handle::from_promise(*this)); }
        std::suspend_always initial_suspend() noexcept { return {}; }
        auto final_suspend() noexcept
        {
            struct HandOver
            {
                bool await_ready() const noexcept { return false; }
                std::coroutine_handle<> await_suspend(Handle ended) const noexcept
                {
                    const auto next = ended.promise().awaiting;
                    return next ? next : std::coroutine_handle<>(std::noop_coroutine());
                }
                void await_resume() const noexcept {}
            };
            return HandOver();
        }
        void return_value(Result value) { result = std::move(value); }
        void unhandled_exception() { failure = std::current_exception(); }
    };
    using Handle = std::coroutine_handle<promise_type>;

    /// Where a compiler does not make it in its place.
    Task(Task&& other) noexcept : m_handle(std::exchange(other.m_handle, nullptr)) {}
    Task& operator=(Task&&) = delete;
    ~Task()
    {
        if (m_handle)
            m_handle.destroy();
    }

    /// Runs it to where it first waits. For one that nobody awaits.
    void start() { m_handle.resume(); }
    bool hasEnded() const { return m_handle.done(); }

    bool await_ready() const noexcept { return false; }
    std::coroutine_handle<> await_suspend(std::coroutine_handle<> awaiting)
    {
        m_handle.promise().awaiting = awaiting;
        return m_handle;
    }
    Result await_resume()
    {
        if (m_handle.promise().failure)
            std::rethrow_exception(m_handle.promise().failure);
        return std::move(*m_handle.promise().result);
    }

private:
    explicit Task(Handle handle) : m_handle(handle) {}

    Handle m_handle;
};

} // namespace sdk
