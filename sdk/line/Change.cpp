// SPDX-License-Identifier: Apache-2.0
#include "sdk/line/Change.h"

#include "gvcp/Registers.h"
#include "sdk/addressing/IpRestart.h"
#include "sdk/discovery/Record.h"
#include "sdk/line/Settings.h"

#include <algorithm>
#include <cstring>

namespace sdk {

namespace {

using namespace std::chrono_literals;

/// A camera that is silent for so long is gone.
constexpr auto TimeToAnswer = 4s;
constexpr int MaxForcings = 2;
/// One that still has the address that it had, so long after it was told to restart, has not heard that.
constexpr auto TimeToObey = 10s;
/// One that leaves so many questions unanswered has been away: it may be given the same address again.
constexpr auto TimeOfAbsence = 400ms;
/// One that has been as wanted for so long will stay so.
constexpr auto TimeToSettle = 1s;
constexpr auto TimeBetweenLooks = 200ms;

RZ_CC_DEVICE_INFO recordOfSeen(const Sighting& seen, const Adapter& adapter)
{
    FoundCamera found;
    found.identity = seen.identity;
    return recordOf(found, adapter);
}

} // namespace

Change::Change(Line& line, const RZ_CC_CHANGE& order, OnStep onStep)
    : m_line(line),
      m_order(order),
      m_mac(macOf(order.stInfo)),
      m_onStep(std::move(onStep)),
      m_camera(line, m_mac),
      m_story(tell())
{}

RZ_CC_CHANGE_RESULT Change::result() const
{
    return {m_error, m_text.c_str(), m_steps, m_now};
}

void Change::begin(RZ_STEP step)
{
    m_steps |= step;
    m_onStep(step);
}

/// A camera in the adapter's subnet can be talked to; another one perhaps.
bool Change::isInReach(base::Ipv4 address) const
{
    return m_line.network().adapters()[m_camera.seen().adapter].inSubnetOf(address) != nullptr;
}

void Change::note(const Sighting& seen)
{
    m_camera.follow(seen);
    const RZ_GIGE_DEVICE_INFO info = recordOfSeen(seen, m_line.network().adapters()[seen.adapter]).stGigEInfo;
    m_now.nParts |= RZ_SETTING_METHOD | RZ_SETTING_ADDRESS | RZ_SETTING_NAME;
    m_now.nIpConfig = info.nIpConfigCurrent;
    m_now.nIp = info.nDeviceIp;
    m_now.nSubnetMask = info.nDeviceSubnetMask;
    m_now.nGateway = info.nDeviceGateway;
    std::copy(std::begin(info.szUserDefinedName), std::end(info.szUserDefinedName),
              std::begin(m_now.szUserDefinedName));
}

void Change::note(const base::IpSettings& stored)
{
    m_now.nParts |= RZ_SETTING_STORED;
    m_now.nStoredIp = stored.address.number();
    m_now.nStoredMask = stored.mask.number();
    m_now.nStoredGateway = stored.gateway.number();
}

void Change::requirePossible() const
{
    const std::uint32_t options = m_order.stInfo.stGigEInfo.nIpConfigOptions;
    const std::uint32_t method = methodOf(m_order.stWanted.nIpConfig);
    const bool isPersistent = isMeant(RZ_SETTING_METHOD) && method == gvcp::IpConfig::Persistent;
    if (isPersistent && (options & gvcp::IpConfig::Persistent) == 0)
        throw CameraError(RZ_ERROR_REFUSED, "it cannot store an address");
    if (isMeant(RZ_SETTING_METHOD) && method == gvcp::IpConfig::Dhcp && (options & gvcp::IpConfig::Dhcp) == 0)
        throw CameraError(RZ_ERROR_REFUSED, "it cannot ask a DHCP server for an address");
}

Task<Nothing> Change::tell()
{
    try {
        co_await carryOut();
    } catch (const CameraError& error) {
        m_error = error.code();
        m_text = error.what();
    } catch (const std::exception& error) {
        m_error = RZ_ERROR_INTERNAL;
        m_text = error.what();
    }
    if (m_error != RZ_OK) {
        try {
            co_await findOutWhatItHas();
        } catch (const std::exception&) {
            // What it did not tell is not known.
            co_return {};
        }
    }
    co_return {};
}

Task<Nothing> Change::carryOut()
{
    requirePossible();
    note(co_await find(TimeToAnswer));
    const base::IpSettings before = m_camera.seen().identity.ip;
    const base::IpSettings wanted = addressOf(m_order.stWanted);
    const bool isMoved = isMeant(RZ_SETTING_ADDRESS) && before != wanted;
    if (isInReach(before.address))
        co_await m_camera.requireFree();
    // As long as it is in reach.
    const bool isLeaving = isMoved && isInReach(before.address) && !isInReach(wanted.address);
    bool isToRestart = isLeaving && co_await write();
    if (isMoved)
        note(co_await force(m_camera.seen()));
    if (!isLeaving)
        isToRestart = co_await write();
    if (isToRestart)
        co_await restart();
    co_await confirm();
    co_return {};
}

Task<Sighting> Change::find(Clock::duration time)
{
    Search search(m_line, m_mac, m_order.stInfo.stGigEInfo.nNetExportIndex, m_line.network().now() + time,
                  [](const Sighting&) { return true; });
    co_await m_line.wait(search);
    if (!search.found())
        throw CameraError(RZ_ERROR_NO_ANSWER, "it does not answer");
    co_return *search.found();
}

Task<Sighting> Change::force(Sighting seen)
{
    begin(RZ_STEP_FORCED);
    const gvcp::ForceIp wanted{.mac = m_mac, .ip = addressOf(m_order.stWanted)};
    for (int i = 0; i < MaxForcings; ++i) {
        Forcing forcing(m_line, wanted, seen, m_order.stInfo.stGigEInfo.nNetExportIndex);
        co_await m_line.wait(forcing);
        if (forcing.search().found())
            co_return *forcing.search().found();
        if (forcing.isRefused())
            throw CameraError(forcing.answer()->status,
                              "forcing " + wanted.ip.address.toText() + ": the camera refuses");
        if (!forcing.search().last())
            throw CameraError(RZ_ERROR_NO_ANSWER,
                              "forcing " + wanted.ip.address.toText() + ": it does not answer any more");
        note(seen = *forcing.search().last());
    }
    throw CameraError(RZ_ERROR_REFUSED,
                      "forcing " + textOf(wanted.ip) + ": it has " + textOf(seen.identity.ip) + " instead");
}

/// What differs, under control; whether the camera is to obtain its address anew.
Task<bool> Change::write()
{
    const RZ_CC_SETTINGS& wanted = m_order.stWanted;
    Differences wrong;
    wrong.name = isMeant(RZ_SETTING_NAME) && !haveSameName(m_now, wanted);
    wrong.method = isMeant(RZ_SETTING_METHOD) && methodOf(m_now.nIpConfig) != methodOf(wanted.nIpConfig);
    if (!wrong.any() && !isMeant(RZ_SETTING_STORED))
        co_return false;

    const unsigned interface = co_await m_camera.findInterface();
    if (isMeant(RZ_SETTING_STORED)) {
        note(co_await m_camera.readStored(interface));
        wrong.stored = storedOf(m_now) != storedOf(wanted);
    }
    if (!wrong.any())
        co_return false;

    std::exception_ptr failure;
    bool isSilent = false;
    try {
        co_await writeUnderControl(interface, wrong);
    } catch (const CameraError& error) {
        failure = std::current_exception();
        isSilent = error.code() == RZ_ERROR_NO_ANSWER;
    }
    co_await m_camera.giveControlBack(isSilent);
    if (failure)
        std::rethrow_exception(failure);
    co_return wrong.method;
}

Task<Nothing> Change::writeUnderControl(unsigned interface, Differences wrong)
{
    co_await m_camera.takeControl();
    const unsigned present = co_await m_camera.findInterface();
    if (present != interface)
        throw CameraError(RZ_ERROR_OTHER_CAMERA, "another camera answers at its address");
    if (wrong.stored)
        co_await store(interface);
    if (wrong.name) {
        begin(RZ_STEP_NAMED);
        const char* const name = m_order.stWanted.szUserDefinedName;
        co_await m_camera.writeName({name, strnlen(name, sizeof m_order.stWanted.szUserDefinedName)});
    }
    // The last, as it has to be followed by the restart.
    if (wrong.method) {
        const std::uint32_t ipConfig = co_await m_camera.readIpConfig(interface);
        begin(RZ_STEP_CONFIGURED);
        constexpr std::uint32_t methods = gvcp::IpConfig::Persistent | gvcp::IpConfig::Dhcp;
        co_await m_camera.writeIpConfig(interface,
                                        (ipConfig & ~methods) | (m_order.stWanted.nIpConfig & methods));
    }
    co_return {};
}

Task<Nothing> Change::store(unsigned interface)
{
    begin(RZ_STEP_STORED);
    const base::IpSettings wanted = storedOf(m_order.stWanted);
    m_now.nParts &= ~static_cast<std::uint32_t>(RZ_SETTING_STORED);
    co_await m_camera.writeStored(interface, storedOf(m_now), wanted);
    note(co_await m_camera.readStored(interface));
    if (storedOf(m_now) != wanted)
        throw CameraError(RZ_ERROR_NOT_STORED, "it acknowledged the address and did not store it");
    co_return {};
}

Task<Nothing> Change::pause(Clock::duration time)
{
    Search none(m_line, m_mac, 0, m_line.network().now() + time, [](const Sighting&) { return false; });
    co_await m_line.wait(none);
    co_return {};
}

bool Change::isAsWanted(const Sighting& seen) const
{
    const std::uint32_t method = methodOf(m_order.stWanted.nIpConfig);
    if (methodOf(seen.identity.ipConfigCurrent) != method)
        return false;
    if (method == gvcp::IpConfig::LinkLocal)
        return seen.identity.ip.address.isLinkLocal();
    return !isMeant(RZ_SETTING_ADDRESS) || seen.identity.ip == addressOf(m_order.stWanted);
}

/// Has it obtain its address anew, and waits until it has.
Task<Nothing> Change::restart()
{
    const Sighting before = m_camera.seen();
    const Network& network = m_line.network();
    const auto end = network.now() + std::chrono::milliseconds(m_order.nPatience);
    const bool isStatic = methodOf(m_order.stWanted.nIpConfig) == gvcp::IpConfig::Persistent;
    begin(RZ_STEP_RESTARTED);
    for (int order = 0; order < 2; ++order) {
        Command command(m_line,
                        ipRestartPlan(m_line.network(), before.adapter, m_mac, before.identity.ip.address));
        co_await m_line.wait(command);
        requireRestarted(command.exchange(), m_mac);

        const auto ordered = network.now();
        // One that has the same address, and was never away, cannot be told from one that did not restart.
        bool hasMoved = isStatic;
        std::optional<Clock::time_point> settled;
        while (network.now() < end && (hasMoved || network.now() - ordered < TimeToObey)) {
            const auto asked = network.now();
            Search look(m_line, m_mac, m_order.stInfo.stGigEInfo.nNetExportIndex,
                        std::min(end, network.now() + 1s), [](const Sighting&) { return true; });
            co_await m_line.wait(look);
            if (!look.found()) {
                hasMoved = true;
                settled.reset();
                continue;
            }
            note(*look.found());
            const Sighting& seen = m_camera.seen();
            hasMoved =
                hasMoved || seen.identity.ip != before.identity.ip || seen.asked - asked >= TimeOfAbsence;
            if (!hasMoved || !isAsWanted(seen))
                settled.reset();
            else if (!settled)
                settled = network.now();
            else if (network.now() - *settled >= TimeToSettle)
                co_return {};
            co_await pause(TimeBetweenLooks);
        }
        if (hasMoved)
            break;
    }
    throw CameraError(RZ_ERROR_NO_ANSWER, "restarting its address: it did not come back as " +
                                              nameOf(methodOf(m_order.stWanted.nIpConfig)) + " in time");
}

/// Everything that is meant, once more from the camera.
Task<Nothing> Change::confirm()
{
    note(co_await find(TimeToAnswer));
    const RZ_CC_SETTINGS& wanted = m_order.stWanted;
    if (isMeant(RZ_SETTING_METHOD) && methodOf(m_now.nIpConfig) != methodOf(wanted.nIpConfig))
        throw CameraError(RZ_ERROR_REFUSED, "it obtains its address by " + nameOf(methodOf(m_now.nIpConfig)) +
                                                " and not by " + nameOf(methodOf(wanted.nIpConfig)));
    if (isMeant(RZ_SETTING_ADDRESS) && addressOf(m_now) != addressOf(wanted))
        throw CameraError(RZ_ERROR_REFUSED,
                          "it has " + textOf(addressOf(m_now)) + " and not " + textOf(addressOf(wanted)));
    if (isMeant(RZ_SETTING_NAME) && !haveSameName(m_now, wanted))
        throw CameraError(RZ_ERROR_REFUSED, "it is not called as it was told");
    if (!isMeant(RZ_SETTING_STORED))
        co_return {};
    co_await readStoredInReach();
    if (storedOf(m_now) != storedOf(wanted))
        throw CameraError(RZ_ERROR_NOT_STORED, "it has stored " + textOf(storedOf(m_now)) + " and not " +
                                                   textOf(storedOf(wanted)));
    co_return {};
}

Task<Nothing> Change::findOutWhatItHas()
{
    m_now = {};
    note(co_await find(TimeToAnswer));
    co_await readStoredInReach();
    co_return {};
}

/// After a restart it may be out of reach; then what it said under control is the latest.
Task<Nothing> Change::readStoredInReach()
{
    if (isInReach(m_camera.seen().identity.ip.address)) {
        const unsigned interface = co_await m_camera.findInterface();
        note(co_await m_camera.readStored(interface));
    }
    co_return {};
}

} // namespace sdk
