// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "inventory/Inventory.h"

#include <chrono>
#include <cstddef>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace inventory {

/// Something that has changed on the networks. What is not known has no value, an unknown adapter no name.
struct WatchEvent
{
    enum class Kind
    {
        Present,       ///< A camera that was there at the start.
        Appeared,      ///< A camera that was not there, or had gone.
        Gone,          ///< A camera that has not answered for Watch::Patience.
        Address,       ///< A camera that has another address.
        Status,        ///< A camera whose status is another one.
        AsksForAddress ///< Some device, maybe a camera, that would like an address: `address`, if it says so.
    };
    Kind kind = Kind::Present;
    base::MacAddress mac;
    std::optional<base::Ipv4> address;
    std::optional<inventory::Status> status;
    std::string adapterName;
    std::optional<std::string> model; ///< These two are hostile.
    std::optional<std::string> userName;

    bool operator==(const WatchEvent&) const = default;
};

/// Makes events of what looks find, one after the other. A camera is its MAC: on two adapters it is one, as
/// the adapter that reaches it has it. Remembers a bounded number of cameras and devices. Has no clock: the
/// times are the caller's, and never go back.
class Watch
{
public:
    using Time = std::chrono::steady_clock::time_point;

    /// So long a camera may leave questions unanswered before it counts as gone, or its status as unknown.
    static constexpr std::chrono::seconds Patience{10};
    /// A device that asks for an address again and again is told of once, until it has been quiet for so
    /// long. A DHCP client that nobody answers asks about once a minute in the end.
    static constexpr std::chrono::seconds Quiet{90};
    static constexpr std::size_t MaxCameras = 4096;
    static constexpr std::size_t MaxDevices = 1024;
    /// Devices that ask for an address, within a second.
    static constexpr unsigned MaxAskingPerSecond = 100;

    explicit Watch(std::function<void(const WatchEvent&)> tell) : m_tell(std::move(tell)) {}

    /// As soon as it is heard, during a look. One out of reach waits for the end of the look: another adapter
    /// may reach it.
    void see(const Camera& camera, Time now);
    void hear(const Arrival& arrival, const std::vector<Adapter>& adapters, Time now);
    /// What the look found in all.
    void see(const std::vector<Camera>& cameras, Time now);
    /// It has given all cameras the time to answer: who did not, may be gone.
    void endLook(Time now);

    /// How often since the last call a camera or a device was not told of, as there were too many.
    unsigned takeUntold() { return std::exchange(m_untold, 0); }
    /// Of how many cameras and devices something is known.
    std::size_t remembered() const { return m_cameras.size() + m_devices.size(); }

private:
    struct Known
    {
        WatchEvent last; ///< Its values, as they were told last.
        Time heard;
        Time confirmed; ///< When it was last certain whether it is free.
        bool isGone = false;
    };

    void take(const Camera& camera, Time now);
    void greet(const Camera& camera, Known& known, Time now);
    void compare(const Camera& camera, Known& known, Time now);
    bool makeRoomForCamera();
    bool makeRoomForDevice(Time now);
    bool mayTellOfDevice(Time now);
    void tell(WatchEvent::Kind kind, WatchEvent event) const;

    std::function<void(const WatchEvent&)> m_tell;
    std::map<base::MacAddress, Known> m_cameras;
    std::map<base::MacAddress, Time> m_devices; ///< That asked for an address, and when last.
    std::optional<Time> m_lookBegin;            ///< Of the look after the first.
    Time m_second{};                            ///< When the present second began, of which
    unsigned m_asking = 0;                      ///< so many devices were told.
    unsigned m_untold = 0;
};

} // namespace inventory
