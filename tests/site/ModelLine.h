// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "site/Schedule.h"
#include "tests/site/Puzzle.h"

#include <gtest/gtest.h>

namespace puzzle {

/// A line of cameras that carries out a schedule's orders, in any order and with any failures, and watches
/// that no two cameras can have one address meanwhile.
class Line
{
public:
    using Schedule = site::Schedule;
    using Move = Schedule::Move;
    using Order = Schedule::Order;
    using End = Schedule::End;

    Line(const site::Plan& plan, bool keepsGoing, std::mt19937& random)
        : m_plan(plan),
          m_random(random),
          m_schedule(plan, keepsGoing),
          m_keepsGoing(keepsGoing)
    {
        for (const site::Task& task : plan.tasks)
            m_cameras.push_back({{task.before.ip.address}, 0, 0});
    }

    /// `failures` and `stop`: one in so many orders fails, and one in so many steps is the last; 0 for none.
    void run(unsigned failures, unsigned stop)
    {
        for (;;) {
            begin(m_schedule.next());
            expectNoAddressTwice();
            if (m_underWay.empty())
                break;
            if (stop != 0 && m_random() % stop == 0) {
                m_schedule.stop();
                m_isStopped = true;
            }
            end(takeAny(), failures != 0 && m_random() % failures == 0);
            expectNoAddressTwice();
        }
    }

    const site::Schedule& schedule() const { return m_schedule; }
    /// Where the camera may be.
    const std::set<base::Ipv4>& addressesOf(std::size_t task) const { return m_cameras[task].addresses; }
    std::size_t ordersOf(std::size_t task) const { return m_cameras[task].orders; }
    std::size_t detoursOf(std::size_t task) const { return m_cameras[task].detours; }

private:
    struct Camera
    {
        std::set<base::Ipv4> addresses; ///< One, or each that it may have.
        std::size_t orders = 0;
        std::size_t detours = 0;
    };

    base::Ipv4 goalOf(const Order& order) const
    {
        const site::Task& task = m_plan.tasks[order.task];
        return order.move == Move::Detour   ? task.detour->address
               : order.move == Move::Change ? task.after.ip.address
                                            : task.before.ip.address;
    }

    void begin(const std::vector<Order>& orders)
    {
        for (const Order& order : orders) {
            Camera& camera = m_cameras[order.task];
            const bool isNew = camera.orders == 0 && !m_circlesBegun.contains(firstOfCircle(order.task));
            EXPECT_FALSE(isNew && m_isStopped);
            EXPECT_FALSE(isNew && m_hasFailed && !m_keepsGoing);
            EXPECT_TRUE(m_isProven || m_underWay.empty()) << "the first ones go alone";
            m_circlesBegun.insert(firstOfCircle(order.task));
            ++camera.orders;
            camera.detours += order.move == Move::Detour ? 1 : 0;
            camera.addresses.insert(goalOf(order));
            m_underWay.push_back(order);
        }
    }

    std::size_t firstOfCircle(std::size_t task) const
    {
        const auto circle = puzzle::circleOf(m_plan.tasks, task);
        return circle.empty() ? task : *std::ranges::min_element(circle);
    }

    Order takeAny()
    {
        const auto at = m_underWay.begin() + static_cast<std::ptrdiff_t>(m_random() % m_underWay.size());
        const Order order = *at;
        m_underWay.erase(at);
        return order;
    }

    void end(const Order& order, bool fails)
    {
        std::set<base::Ipv4>& addresses = m_cameras[order.task].addresses;
        const base::Ipv4 goal = goalOf(order);
        if (!fails) {
            addresses = {goal};
            m_isProven = m_isProven || order.move == Move::Change;
            return m_schedule.ended(order.task, End::Done);
        }
        m_hasFailed = true;
        const auto how = static_cast<End>(1 + m_random() % 3);
        if (how == End::Partly)
            addresses = {goal};
        // Only one that has not moved before is known to be where it was.
        if (how == End::Unchanged && addresses.size() == 2 && order.move != Move::Return)
            addresses.erase(goal);
        m_schedule.ended(order.task, how);
    }

    void expectNoAddressTwice() const
    {
        std::map<base::Ipv4, std::size_t> owners;
        for (std::size_t i = 0; i < m_cameras.size(); ++i)
            for (const base::Ipv4 address : m_cameras[i].addresses)
                EXPECT_TRUE(owners.emplace(address, i).second || haveBothHad(address, i, owners[address]))
                    << address << " may be that of " << owners[address] << " and of " << i;
    }

    /// Of two cameras that had one address before anything was done, each leaves it when it can.
    bool haveBothHad(base::Ipv4 address, std::size_t one, std::size_t other) const
    {
        return m_plan.tasks[one].before.ip.address == address &&
               m_plan.tasks[other].before.ip.address == address;
    }

    const site::Plan& m_plan;
    std::mt19937& m_random;
    site::Schedule m_schedule;
    bool m_keepsGoing;
    bool m_isStopped = false;
    bool m_hasFailed = false;
    bool m_isProven = false;
    std::vector<Camera> m_cameras;
    std::vector<Order> m_underWay;
    std::set<std::size_t> m_circlesBegun; ///< By the first task of each; who is in none is one of his own.
};

} // namespace puzzle
