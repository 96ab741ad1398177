// SPDX-License-Identifier: Apache-2.0
#include "inventory/Watch.h"

#include <algorithm>

namespace inventory {
namespace {

using namespace std::chrono_literals;

/// Whether it is certain that this is how the camera is: it is in reach, and said itself whether it is free.
bool isCertain(const Camera& camera)
{
    return camera.status != Status::Unreachable && camera.registers != Registers::Silent;
}

WatchEvent eventOf(const Camera& camera)
{
    WatchEvent event;
    event.mac = camera.mac;
    event.address = camera.ip.address;
    event.status = camera.status;
    event.adapterName = camera.adapterName;
    event.model = camera.model;
    event.userName = camera.userName;
    return event;
}

} // namespace

void Watch::see(const Camera& camera, Time now)
{
    if (camera.status != Status::Unreachable)
        return take(camera, now);
    const auto known = m_cameras.find(camera.mac);
    if (known != m_cameras.end() && !known->second.isGone)
        known->second.heard = now;
}

void Watch::see(const std::vector<Camera>& cameras, Time now)
{
    std::map<base::MacAddress, const Camera*> best;
    for (const Camera& camera : cameras) {
        const Camera*& seen = best[camera.mac];
        if (!seen || seen->status == Status::Unreachable)
            seen = &camera;
    }
    for (const auto& [mac, camera] : best)
        take(*camera, now);
}

void Watch::endLook(Time now)
{
    m_lookBegin = now;
    for (auto& [mac, known] : m_cameras) {
        if (known.isGone || now - known.heard < Patience)
            continue;
        known.isGone = true;
        WatchEvent event = known.last;
        event.status.reset();
        tell(WatchEvent::Kind::Gone, std::move(event));
    }
}

void Watch::take(const Camera& camera, Time now)
{
    auto known = m_cameras.find(camera.mac);
    if (known == m_cameras.end()) {
        if (!makeRoomForCamera()) {
            ++m_untold;
            return;
        }
        known = m_cameras.try_emplace(camera.mac).first;
        known->second.isGone = true;
    }
    if (known->second.isGone)
        greet(camera, known->second, now);
    else
        compare(camera, known->second, now);
}

void Watch::greet(const Camera& camera, Known& known, Time now)
{
    known = {eventOf(camera), now, now};
    m_devices.erase(camera.mac);
    tell(m_lookBegin ? WatchEvent::Kind::Appeared : WatchEvent::Kind::Present, known.last);
}

void Watch::compare(const Camera& camera, Known& known, Time now)
{
    // At the end of a look it is told once more what was heard in its course.
    if (known.heard < m_lookBegin.value_or(Time::min()))
        known.heard = now;
    if (isCertain(camera))
        known.confirmed = now;
    const WatchEvent before = std::exchange(known.last, eventOf(camera));
    const bool hasMoved = known.last.address != before.address;
    // One answer that gets lost changes nothing.
    if (!isCertain(camera) && !hasMoved && now - known.confirmed < Patience) {
        known.last.status = before.status;
        known.last.adapterName = before.adapterName;
    }
    if (hasMoved)
        tell(WatchEvent::Kind::Address, known.last);
    if (known.last.status != before.status)
        tell(WatchEvent::Kind::Status, known.last);
}

void Watch::hear(const Arrival& arrival, const std::vector<Adapter>& adapters, Time now)
{
    const bool asks = arrival.kind == Arrival::Kind::DhcpRequest || arrival.kind == Arrival::Kind::Probe;
    // This computer hears itself where two of its adapters are on one switch.
    if (!asks || std::ranges::find(adapters, arrival.mac, &Adapter::mac) != adapters.end())
        return;
    const auto device = m_devices.find(arrival.mac);
    if (device != m_devices.end() && now - device->second < Quiet) {
        device->second = now;
        return;
    }
    if ((device == m_devices.end() && !makeRoomForDevice(now)) || !mayTellOfDevice(now)) {
        ++m_untold;
        return;
    }
    m_devices[arrival.mac] = now;

    WatchEvent event;
    const auto camera = m_cameras.find(arrival.mac);
    if (camera != m_cameras.end())
        event = camera->second.last;
    event.mac = arrival.mac;
    event.status.reset();
    event.address = arrival.address.isUnspecified() ? std::nullopt : std::optional(arrival.address);
    const auto adapter = std::ranges::find(adapters, arrival.adapterIndex, &Adapter::index);
    event.adapterName = adapter == adapters.end() ? std::string() : adapter->name;
    tell(WatchEvent::Kind::AsksForAddress, std::move(event));
}

/// Whether one more can be remembered, those that are gone being forgotten.
bool Watch::makeRoomForCamera()
{
    if (m_cameras.size() >= MaxCameras)
        std::erase_if(m_cameras, [](const auto& each) { return each.second.isGone; });
    return m_cameras.size() < MaxCameras;
}

bool Watch::makeRoomForDevice(Time now)
{
    if (m_devices.size() >= MaxDevices)
        std::erase_if(m_devices, [now](const auto& each) { return now - each.second >= Quiet; });
    return m_devices.size() < MaxDevices;
}

bool Watch::mayTellOfDevice(Time now)
{
    if (now - m_second >= 1s) {
        m_second = now;
        m_asking = 0;
    }
    return m_asking++ < MaxAskingPerSecond;
}

void Watch::tell(WatchEvent::Kind kind, WatchEvent event) const
{
    event.kind = kind;
    m_tell(event);
}

} // namespace inventory
