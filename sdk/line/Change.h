// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "sdk/RzCameraSdk.h"
#include "sdk/line/Dialog.h"

#include <functional>
#include <string>

namespace sdk {

/// One camera on its way to the settings that are wanted, and the proof that it has them. Everything happens
/// while the line is served; none of it waits.
class Change
{
public:
    /// Told on the thread that serves the line.
    using OnStep = std::function<void(RZ_STEP step)>;

    /// The line outlives it.
    Change(Line& line, const RZ_CC_CHANGE& order, OnStep onStep);
    Change(const Change&) = delete;
    Change& operator=(const Change&) = delete;
    ~Change() = default;

    void start() { m_story.start(); }
    bool hasEnded() const { return m_story.hasEnded(); }
    /// Once it has ended. The text belongs to this object.
    RZ_CC_CHANGE_RESULT result() const;

private:
    /// What is wrong.
    struct Differences
    {
        bool name = false;
        bool method = false;
        bool stored = false;

        bool any() const { return name || method || stored; }
    };

    bool isMeant(RZ_SETTING part) const { return (m_order.stWanted.nParts & part) != 0; }
    bool isAsWanted(const Sighting& seen) const;
    void requirePossible() const;
    void begin(RZ_STEP step);

    // The story, in its order. Each throws CameraError.
    Task<Nothing> tell();
    Task<Nothing> carryOut();
    Task<Sighting> find(Clock::duration time);
    Task<Sighting> force(Sighting seen);
    Task<bool> write();
    Task<Nothing> writeUnderControl(unsigned interface, Differences wrong);
    Task<Nothing> store(unsigned interface);
    Task<Nothing> restart();
    Task<Nothing> confirm();
    Task<Nothing> findOutWhatItHas();
    Task<Nothing> readStoredInReach();
    Task<Nothing> pause(Clock::duration time);

    bool isInReach(base::Ipv4 address) const;
    void note(const Sighting& seen);
    void note(const base::IpSettings& stored);

    Line& m_line;
    const RZ_CC_CHANGE m_order;
    const base::MacAddress m_mac;
    const OnStep m_onStep;
    Dialog m_camera;
    unsigned m_steps = 0;
    RZ_ERROR m_error = RZ_OK;
    std::string m_text;
    RZ_CC_SETTINGS m_now{};
    Task<Nothing> m_story;
};

} // namespace sdk
