// SPDX-License-Identifier: Apache-2.0
#include "site/Apply.h"

#include "site/Orders.h"
#include "site/Schedule.h"

#include <map>
#include <system_error>
#include <utility>

namespace site {
namespace {

using Move = Schedule::Move;
using State = Schedule::State;
using End = Schedule::End;

/// Between two questions whether it is interrupted, in milliseconds.
constexpr unsigned TimeToServe = 100;

void require(int error)
{
    if (error != RZ_OK)
        throw std::system_error(std::make_error_code(std::errc::network_unreachable), "the network adapters");
}

/// What one change told while it was served.
struct Told
{
    std::size_t task = 0;
    unsigned step = 0; ///< An RZ_STEP; 0 at its end.
    int error = RZ_OK;
    std::string text;
    unsigned steps = 0;
    RZ_CC_SETTINGS now{};
};

/// The SDK's. What it tells is handed on when it has returned, so that no exception has to pass through it.
class Line
{
public:
    Line() { require(RZ_CC_OpenLine(&m_line)); }
    Line(const Line&) = delete;
    Line& operator=(const Line&) = delete;
    ~Line() { RZ_CC_CloseLine(m_line); }

    void begin(std::size_t task, const RZ_CC_CHANGE& change)
    {
        unsigned number = 0;
        if (const int error = RZ_CC_BeginChange(m_line, &change, &number); error != RZ_OK)
            m_told.push_back({task, 0, error, "the SDK does not begin it", 0, {}});
        else
            m_tasks[number] = task;
    }

    std::vector<Told> serve()
    {
        if (m_told.empty()) {
            const RZ_CC_LINE_SINK sink{this, &Line::onStep, &Line::onEnd};
            require(RZ_CC_ServeLine(m_line, TimeToServe, &sink));
        }
        return std::exchange(m_told, {});
    }

private:
    static void onStep(void* context, unsigned number, unsigned step)
    {
        auto& self = *static_cast<Line*>(context);
        self.m_told.push_back({self.m_tasks.at(number), step, RZ_OK, {}, 0, {}});
    }

    static void onEnd(void* context, unsigned number, const RZ_CC_CHANGE_RESULT* result)
    {
        auto& self = *static_cast<Line*>(context);
        self.m_told.push_back(
            {self.m_tasks.at(number), 0, result->nError, result->szError, result->nSteps, result->stNow});
    }

    void* m_line = nullptr;
    std::map<unsigned, std::size_t> m_tasks; ///< By the numbers of their changes.
    std::vector<Told> m_told;
};

/// From the first camera to the last one.
class Application
{
public:
    Application(const Plan& plan, const Policy& policy, const Progress& progress)
        : m_plan(plan),
          m_policy(policy),
          m_progress(progress),
          m_schedule(plan, policy.keepsGoing)
    {
        for (const Outcome& outcome : foresee(plan))
            m_attempts.push_back({.outcome = outcome});
        for (std::size_t i = 0; i < m_attempts.size(); ++i)
            if (!plan.tasks[i].actions.empty())
                m_attempts[i] = {.heard = asHeard(*plan.tasks[i].camera),
                                 .outcome = {Result::NotBegun, plan.tasks[i].before, {}, {}}};
    }

    std::vector<Outcome> run()
    {
        tellSettled();
        if (m_plan.hasActions())
            workOff();
        for (std::size_t i = 0; i < m_attempts.size(); ++i)
            settle(i);
        std::vector<Outcome> outcomes;
        for (Attempt& attempt : m_attempts)
            outcomes.push_back(std::move(attempt.outcome));
        return outcomes;
    }

private:
    struct Attempt
    {
        RZ_CC_DEVICE_INFO heard{};
        Move move = Move::Change; ///< What is under way, or was last.
        bool goesBack = false;
        unsigned steps = 0; ///< RZ_STEP bits: what was done to it, or may have been.
        Outcome outcome;
        bool isTold = false;
    };

    void workOff()
    {
        Line line;
        for (;;) {
            if (!m_isStopped && m_progress.isInterrupted()) {
                m_schedule.stop();
                m_isStopped = true;
            }
            for (const Schedule::Order& order : m_schedule.next())
                begin(line, order);
            if (m_schedule.isIdle())
                return;
            for (const Told& told : line.serve())
                take(told);
            tellSettled();
        }
    }

    void begin(Line& line, const Schedule::Order& order)
    {
        const Task& task = m_plan.tasks[order.task];
        Attempt& attempt = m_attempts[order.task];
        attempt.move = order.move;
        // One that takes its detour again makes way for those that go back.
        if (order.move == Move::Return || m_schedule.stateOf(order.task) == State::Failed) {
            attempt.goesBack = true;
            m_progress.onReturn(order.task);
        }
        const RZ_CC_SETTINGS wanted = order.move == Move::Detour   ? toDetour(task)
                                      : order.move == Move::Return ? toReturn(task, attempt.steps)
                                                                   : toChange(task);
        line.begin(order.task,
                   {attempt.heard, wanted, static_cast<std::uint32_t>(m_policy.patience.count())});
    }

    void take(const Told& told)
    {
        if (told.step == 0)
            return end(told);
        if (!m_attempts[told.task].goesBack)
            for (const Action action : actionsOf(told.step))
                m_progress.onAction(told.task, action);
    }

    void end(const Told& told)
    {
        const Task& task = m_plan.tasks[told.task];
        Attempt& attempt = m_attempts[told.task];
        Outcome& outcome = attempt.outcome;
        update(attempt.heard, told.now);
        outcome.now = settingsOf(told.now, outcome.now.value_or(task.before));
        if (!attempt.goesBack) {
            attempt.steps |= told.steps;
            outcome.actions = actionsOf(attempt.steps);
        }
        if (told.error == RZ_OK)
            return m_schedule.ended(told.task, End::Done);
        if (attempt.goesBack)
            outcome.reason.push_back(
                {TRANSLATABLE("Sentence", "It could not be put back: %1."), {told.text}});
        else
            outcome.reason.push_back({TRANSLATABLE("Sentence", "It could not be changed: %1."), {told.text}});
        const base::Ipv4 goal = attempt.move == Move::Return   ? task.before.ip.address
                                : attempt.move == Move::Detour ? task.detour->address
                                                               : task.after.ip.address;
        m_schedule.ended(told.task, told.steps == 0                                  ? End::Unchanged
                                    : outcome.now && outcome.now->ip.address == goal ? End::Partly
                                                                                     : End::Failed);
    }

    void tellSettled()
    {
        for (std::size_t i = 0; i < m_attempts.size(); ++i)
            if (m_schedule.isSettled(i))
                settle(i);
    }

    /// Nothing more becomes of it.
    void settle(std::size_t task)
    {
        Attempt& attempt = m_attempts[task];
        if (std::exchange(attempt.isTold, true))
            return;
        judge(task, attempt);
        m_progress.onOutcome(task, attempt.outcome);
    }

    void judge(std::size_t index, Attempt& attempt) const
    {
        const Task& task = m_plan.tasks[index];
        Outcome& outcome = attempt.outcome;
        switch (m_schedule.stateOf(index)) {
        case State::Idle:
            return;
        case State::Waiting:
            outcome.reason.push_back(reasonNotToBegin(task));
            return;
        case State::Changed:
            outcome.result = Result::Changed;
            if (task.after.method == inventory::IpMethod::Dhcp && outcome.now &&
                outcome.now->ip.address.isLinkLocal())
                outcome.reason.push_back(
                    {TRANSLATABLE("Sentence", "No DHCP server gave it an address, so it took a "
                                              "link-local one."),
                     {}});
            return;
        case State::PutBack:
            // Of one to which nothing was done it is to be seen that it is as it was.
            outcome.result =
                attempt.goesBack || outcome.now == task.before ? Result::PutBack : Result::Failed;
            if (!attempt.goesBack)
                outcome.reason.push_back({TRANSLATABLE("Sentence", "Nothing was done to it."), {}});
            if (outcome.reason.empty())
                outcome.reason.push_back(
                    {TRANSLATABLE("Sentence", "One of those with which it exchanges addresses could "
                                              "not be changed."),
                     {}});
            return;
        case State::Detoured:
            outcome.reason.push_back(
                {TRANSLATABLE("Sentence", "It was left at %1, as another camera may have its address."),
                 {task.detour->address.toText()}});
            break;
        case State::Failed:
        case State::Marred:
        case State::Lost:
            break;
        }
        outcome.result = Result::Failed;
    }

    base::Sentence reasonNotToBegin(const Task& task) const
    {
        for (const std::size_t other : task.waitsFor)
            if (m_schedule.hasFailures() && m_schedule.stateOf(other) != State::Changed)
                return {TRANSLATABLE("Sentence", "It is to get the address of %1, which was not changed."),
                        {m_plan.tasks[other].place.name}};
        if (m_isStopped)
            return {TRANSLATABLE("Sentence", "It was interrupted before this one was begun."), {}};
        return {TRANSLATABLE("Sentence", "Another one failed before this one was begun."), {}};
    }

    const Plan& m_plan;
    const Policy& m_policy;
    const Progress& m_progress;
    Schedule m_schedule;
    std::vector<Attempt> m_attempts;
    bool m_isStopped = false;
};

} // namespace

std::vector<Outcome> apply(const Plan& plan, const Policy& policy, const Progress& progress)
{
    return Application(plan, policy, progress).run();
}

} // namespace site
