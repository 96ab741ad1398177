// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "gvcp/Packet.h"
#include "sdk/line/Looks.h"
#include "sdk/network/Network.h"
#include "sdk/network/RequestIds.h"

#include <coroutine>
#include <exception>
#include <functional>
#include <list>

namespace sdk {

/// Something on the network that takes its time, and that a coroutine waits for.
class Step
{
public:
    Step() = default;
    Step(const Step&) = delete;
    Step& operator=(const Step&) = delete;
    virtual ~Step() = default;

    /// Does what is due. May throw CameraError.
    virtual void proceed() = 0;
    /// A camera's answer to a command.
    virtual void take(const Datagram& /*datagram*/, const gvcp::AcknowledgePacket& /*acknowledge*/) {}
    /// Its answer to a look.
    virtual void see(const Sighting& /*sighting*/) {}
    virtual bool isOver() const = 0;
    /// When proceed() has something to do next.
    virtual Clock::time_point nextStep() const = 0;
};

/// One network for many coroutines: gives each of the steps that they wait for its time, and what is heard.
/// On one thread; asleep while nothing is due.
class Line
{
public:
    explicit Line(Network& network) : m_network(network), m_looks(network, m_ids) {}
    Line(const Line&) = delete;
    Line& operator=(const Line&) = delete;
    ~Line() = default;

    Network& network() { return m_network; }
    RequestIds& ids() { return m_ids; }
    Looks& looks() { return m_looks; }

    /// Goes on until then, or until `hasNews`, or until nobody waits any more.
    void serve(Clock::time_point until, const std::function<bool()>& hasNews);

    class Waiting;
    /// To be awaited: until the step is over, which lives longer.
    Waiting wait(Step& step);

private:
    struct Waiter
    {
        Step& step;
        std::coroutine_handle<> coroutine;
        std::exception_ptr failure; ///< Of the step.
    };

    bool resumeOne();
    void listen(Clock::time_point until);
    void tell(const Datagram& datagram);

    Network& m_network;
    RequestIds m_ids;
    Looks m_looks;
    std::list<Waiter> m_waiters;
};

class Line::Waiting
{
public:
    Waiting(Line& line, Step& step) : m_line(line), m_step(step) {}
    Waiting(const Waiting&) = delete;
    Waiting& operator=(const Waiting&) = delete;
    ~Waiting()
    {
        if (m_isListed)
            m_line.m_waiters.erase(m_waiter);
    }

    bool await_ready()
    {
        m_step.proceed();
        return m_step.isOver();
    }
    void await_suspend(std::coroutine_handle<> coroutine)
    {
        m_waiter = m_line.m_waiters.insert(m_line.m_waiters.end(), {m_step, coroutine, nullptr});
        m_isListed = true;
    }
    void await_resume() const
    {
        if (m_isListed && m_waiter->failure)
            std::rethrow_exception(m_waiter->failure);
    }

private:
    Line& m_line;
    Step& m_step;
    std::list<Waiter>::iterator m_waiter;
    bool m_isListed = false;
};

inline Line::Waiting Line::wait(Step& step)
{
    return {*this, step};
}

} // namespace sdk
