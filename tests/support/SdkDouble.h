// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "sdk/RzCameraSdk.h"

#include <deque>
#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace GenApi {
struct IPort;
}

/// Stands behind the SDK's C interface in place of the SDK: the test says what each call gives, and reads
/// what was called, in order and with its arguments. The calls go to the SdkDouble that exists; without one
/// they abort.
///
/// Calls may come from any thread. What a test sets, it sets while no call can be on its way.
class SdkDouble
{
public:
    /// What a record says, as texts; the defaults are a camera in the subnet 192.0.2.0/24, which is no real
    /// host's.
    struct Camera
    {
        std::string mac = "00:1A:2B:3C:4D:5E";
        std::string ip = "192.0.2.20";
        std::string mask = "255.255.255.0";
        std::string gateway = "0.0.0.0";
        std::string model = "Model";
        std::string serial = "Serial";
        std::string userName = "Name";
        uint32_t ipConfig = 0;
        std::string adapter = "192.0.2.5";
    };

    /// How a change ends.
    struct ChangeEnd
    {
        int error = RZ_OK;
        std::string text;
        uint32_t steps = 0;
        RZ_CC_SETTINGS now{};
    };

    SdkDouble();
    SdkDouble(const SdkDouble&) = delete;
    SdkDouble& operator=(const SdkDouble&) = delete;
    ~SdkDouble();

    /// A new record, valid as long as the double.
    RZ_CC_DEVICE_INFO* record(const Camera& camera);
    static uint32_t address(const std::string& dotted);

    /// As a look finds the camera with nothing more to tell of it: reachable in its adapter's /24, and
    /// accessible as isDeviceAccessible says.
    RZ_CC_SIGHTING sighting(RZ_CC_DEVICE_INFO* info) const;

    /// What the default change() does: the listed camera of that MAC gets what is wanted; all steps that this
    /// takes.
    ChangeEnd obey(const RZ_CC_CHANGE& asked);

    /// What enumerations list, unless enumDevices is set to something else.
    std::vector<RZ_CC_DEVICE_INFO*> listed;

    // What the calls do, after they were noted; called without any lock.
    std::function<unsigned()> enumerateTls;
    std::function<int(RZ_CC_DEVICE_INFO_LIST&)> enumDevices;
    std::function<bool(const RZ_CC_DEVICE_INFO*)> isDeviceAccessible;
    std::function<int(const RZ_CC_DEVICE_INFO*)> createHandle;
    /// With a living handle's record; an unknown handle gives RZ_ERROR_HANDLE without asking.
    std::function<int(RZ_CC_DEVICE_INFO*, uint32_t ip, uint32_t mask, uint32_t gateway)> forceIp;
    std::function<int(RZ_CC_DEVICE_INFO*)> openDevice;
    /// Its result, and the two things below.
    std::function<int(RZ_CC_DEVICE_INFO*)> getGenICamXml;
    std::function<GenApi::IPort*(RZ_CC_DEVICE_INFO*)> getTlProxy;
    std::function<int()> openLook;
    /// Tells the sink what the look finds: unless it is set to something else, what is listed.
    std::function<int(unsigned options, unsigned milliseconds, const RZ_CC_LOOK_SINK&)> look;
    std::function<int()> openLine;
    /// What becomes of a change, once the line is served: unless it is set to something else, its camera is
    /// as was wanted, in the list too. Nothing: it stays under way.
    std::function<std::optional<ChangeEnd>(const RZ_CC_CHANGE&)> change;
    /// An RZ_STEP that changes which stay under way report, once each; 0 for none.
    unsigned stepUnderWay = 0;
    std::function<std::string(const RZ_CC_DEVICE_INFO*)> getErrorText;
    std::function<bool(const RZ_CC_DEVICE_INFO*)> isForcedIpWaiting;
    /// With a living handle's record.
    std::function<int(RZ_CC_DEVICE_INFO*, unsigned& ip, unsigned& mask, unsigned& gateway)> getPersistentIp;

    // What enumerations report to have left out.
    unsigned unlisted = 0;
    std::string notSearched;
    RZ_LISTENER listener = RZ_LISTENER_HEARS; ///< How it fared in them.
    std::string listenerPath = "/usr/libexec/ip-configurator-hear";

    std::string description; ///< Is copied into the caller's buffer, as much of it as fits.
    /// What is reported as its length, when that is not the truth.
    std::optional<unsigned> reportedLength;
    GenApi::IPort* port = nullptr; ///< What getTlProxy gives unless it is set to something else.

    /// The calls so far: "EnumDevices(1)", "ExpectDevice(00:1A:2B:3C:4D:5E)",
    /// "IsDeviceAccessible(00:1A:2B:3C:4D:5E, 1)",
    /// "ForceIpEx(00:1A:2B:3C:4D:5E, 192.168.1.20, 255.255.255.0, 0.0.0.0)". A handle shows as its camera's
    /// MAC; "Look(1, 5000)"; "OpenDevice(00:1A:2B:3C:4D:5E, 1, 0)", "GetGenICamXML(00:1A:2B:3C:4D:5E,
    /// 3145728)"; "BeginChange(00:1A:2B:3C:4D:5E, method 1, address 192.168.1.20 255.255.255.0 0.0.0.0,
    /// stored 192.168.1.20 255.255.255.0 0.0.0.0, name left)" with the parts that are meant. Serving is not
    /// noted: how often it is called is the caller's affair.
    std::vector<std::string> calls() const;
    /// Handles made and not destroyed yet.
    size_t livingHandles() const;

private:
    friend struct SdkCalls;

    void note(std::string call);
    RZ_CC_DEVICE_INFO* recordOf(void* handle) const;

    mutable std::mutex m_mutex; ///< Guards what follows.
    std::deque<RZ_CC_DEVICE_INFO> m_records;
    std::map<void*, RZ_CC_DEVICE_INFO*> m_handles;
    std::vector<std::string> m_calls;
    std::map<unsigned, RZ_CC_CHANGE> m_changes; ///< Under way, by their numbers.
    std::set<unsigned> m_stepsTold;             ///< Of changes whose step under way has been reported.
    unsigned m_lastChange = 0;
};
