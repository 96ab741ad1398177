// SPDX-License-Identifier: Apache-2.0
#include "inventory/Look.h"

#include "base/Bytes.h"
#include "inventory/Neighbours.h"
#include "sdk/RzCameraSdk.h"

#include <algorithm>
#include <cstring>
#include <fstream>
#include <sstream>
#include <system_error>

namespace inventory {
namespace {

/// Whoever floods a network with announcements gets no more memory than this for one look.
constexpr std::size_t MaxArrivals = 4096;

base::MacAddress macOf(std::uint32_t high, std::uint32_t low)
{
    base::MacAddress mac;
    base::writeU16(mac.bytes, 0, static_cast<std::uint16_t>(high));
    base::writeU32(mac.bytes, 2, low);
    return mac;
}

/// A record's text, which ends with a NUL or with its field.
template <std::size_t Size>
std::string textOf(const char (&field)[Size])
{
    return {field, ::strnlen(field, Size)};
}

template <typename T>
std::optional<T> ifTold(const RZ_CC_SIGHTING& sighting, unsigned bit, T value)
{
    return (sighting.nTold & bit) != 0 ? std::optional(std::move(value)) : std::nullopt;
}

Endpoint endpoint(std::uint32_t address, std::uint32_t port)
{
    return {base::Ipv4(address), static_cast<std::uint16_t>(port)};
}

// Bits of nIpConfigOptions and nIpConfigCurrent.
constexpr std::uint32_t Persistent = 1;
constexpr std::uint32_t Dhcp = 2;
constexpr std::uint32_t AllMethods = 7;

IpMethod methodOf(std::uint32_t configuration)
{
    return (configuration & Persistent) != 0 ? IpMethod::Static
           : (configuration & Dhcp) != 0     ? IpMethod::Dhcp
                                             : IpMethod::LinkLocal;
}

std::optional<Privilege> privilegeOf(const RZ_CC_SIGHTING& sighting)
{
    constexpr std::uint32_t exclusive = 1;
    constexpr std::uint32_t control = 2;
    // Who refuses every register is held exclusively; nobody else does.
    if (sighting.nRegisters == RZ_REGISTERS_REFUSED)
        return Privilege::Exclusive;
    if ((sighting.nTold & RZ_TOLD_PRIVILEGE) == 0)
        return std::nullopt;
    return (sighting.nPrivilege & exclusive) != 0 ? Privilege::Exclusive
           : (sighting.nPrivilege & control) != 0 ? Privilege::Control
                                                  : Privilege::None;
}

Camera cameraOf(const RZ_CC_SIGHTING& sighting, const std::vector<Adapter>& adapters)
{
    const RZ_CC_DEVICE_INFO& record = sighting.stInfo;
    const RZ_GIGE_DEVICE_INFO& info = record.stGigEInfo;
    Camera camera;
    camera.record = sighting.pInfo;
    camera.mac = macOf(record.nMacHigh, record.nMacLow);
    camera.vendor = textOf(info.szManufacturerName);
    camera.model = textOf(info.szModelName);
    camera.version = textOf(info.szDeviceVersion);
    camera.serial = textOf(info.szSerialNumber);
    camera.userName = textOf(info.szUserDefinedName);
    camera.ip = {base::Ipv4(info.nDeviceIp), base::Ipv4(info.nDeviceSubnetMask),
                 base::Ipv4(info.nDeviceGateway)};
    camera.method = methodOf(info.nIpConfigCurrent);
    const bool tellsOptions = (info.nIpConfigOptions & AllMethods) != 0;
    camera.canBeStatic = !tellsOptions || (info.nIpConfigOptions & Persistent) != 0;
    camera.canUseDhcp = !tellsOptions || (info.nIpConfigOptions & Dhcp) != 0;
    camera.adapterIndex = info.nNetExportIndex;
    const auto adapter = std::ranges::find(adapters, info.nNetExportIndex, &Adapter::index);
    if (adapter != adapters.end())
        camera.adapterName = adapter->name;
    camera.adapterAddress = base::Ipv4(info.nNetExportIp);

    camera.status = sighting.nReachable == 0    ? Status::Unreachable
                    : sighting.nAccessible != 0 ? Status::Free
                                                : Status::InUse;
    camera.hearing = {.bySocket = (sighting.nHeard & RZ_HEARD_SOCKET) != 0,
                      .byListener = (sighting.nHeard & RZ_HEARD_LISTENER) != 0,
                      .byUnicast = (sighting.nHeard & RZ_HEARD_UNICAST) != 0,
                      .byBroadcast = (sighting.nHeard & RZ_HEARD_BROADCAST) != 0,
                      .searches = sighting.nSearches,
                      .answers = sighting.nSearchAnswers,
                      .questions = sighting.nQuestions,
                      .replies = sighting.nReplies};
    camera.registers = static_cast<Registers>(sighting.nRegisters);
    camera.privilege = privilegeOf(sighting);
    camera.holder = ifTold(sighting, RZ_TOLD_HOLDER, endpoint(sighting.nHolderIp, sighting.nHolderPort));
    camera.heartbeatTimeout =
        ifTold(sighting, RZ_TOLD_HEARTBEAT_TIMEOUT, std::chrono::milliseconds(sighting.nHeartbeatTimeout));
    camera.isHeartbeatOff = ifTold(sighting, RZ_TOLD_HEARTBEAT_OFF, sighting.nHeartbeatOff != 0);
    camera.linkSpeed = ifTold(sighting, RZ_TOLD_LINK_SPEED, unsigned{sighting.nLinkSpeed});
    camera.stored = ifTold(sighting, RZ_TOLD_STORED,
                           base::IpSettings{base::Ipv4(sighting.nStoredIp), base::Ipv4(sighting.nStoredMask),
                                            base::Ipv4(sighting.nStoredGateway)});
    camera.stream = ifTold(sighting, RZ_TOLD_STREAM, endpoint(sighting.nStreamIp, sighting.nStreamPort));
    return camera;
}

static_assert(static_cast<int>(Registers::NotAsked) == RZ_REGISTERS_NOT_ASKED);
static_assert(static_cast<int>(Registers::Silent) == RZ_REGISTERS_SILENT);
static_assert(static_cast<int>(Registers::Refused) == RZ_REGISTERS_REFUSED);
static_assert(static_cast<int>(Registers::Told) == RZ_REGISTERS_TOLD);
static_assert(static_cast<int>(Registers::OthersTold) == RZ_REGISTERS_OTHER_CAMERA);
static_assert(static_cast<int>(Arrival::Kind::Probe) == RZ_ARRIVAL_PROBE);
static_assert(static_cast<int>(Arrival::Kind::Announcement) == RZ_ARRIVAL_ANNOUNCEMENT);
static_assert(static_cast<int>(Arrival::Kind::Speech) == RZ_ARRIVAL_SPEECH);
static_assert(static_cast<int>(Arrival::Kind::DhcpRequest) == RZ_ARRIVAL_DHCP);
static_assert(static_cast<int>(Listener::Hears) == RZ_LISTENER_HEARS);
static_assert(static_cast<int>(Listener::Missing) == RZ_LISTENER_MISSING);
static_assert(static_cast<int>(Listener::Forbidden) == RZ_LISTENER_FORBIDDEN);
static_assert(static_cast<int>(Listener::Unprivileged) == RZ_LISTENER_UNPRIVILEGED);
static_assert(static_cast<int>(Listener::Failed) == RZ_LISTENER_FAILED);

/// The calling thread's network's, since it was made; 0 when the kernel does not tell.
std::uint64_t reversePathDrops()
{
    std::ifstream file("/proc/thread-self/net/netstat");
    std::string names;
    std::string values;
    // Two lines for each group: what it counts, and how much of that.
    while (std::getline(file, names) && std::getline(file, values)) {
        std::istringstream eachName(names);
        std::istringstream eachValue(values);
        for (std::string name, value; eachName >> name && eachValue >> value;)
            if (name == "IPReversePathFilter")
                return std::stoull(value);
    }
    return 0;
}

/// What the sink is given of a look under way.
struct Collection
{
    const Look::Plan& plan;
    Inventory& inventory;

    static void onCamera(void* context, const RZ_CC_SIGHTING* sighting, int isLast)
    {
        const auto& self = *static_cast<Collection*>(context);
        Camera camera = cameraOf(*sighting, self.inventory.adapters);
        if (isLast == 0)
            self.plan.onCamera(camera);
        else
            self.inventory.cameras.push_back(std::move(camera));
    }

    static void onArrival(void* context, const RZ_CC_ARRIVAL* said)
    {
        const auto& self = *static_cast<Collection*>(context);
        const Arrival arrival{static_cast<Arrival::Kind>(said->nKind), said->nAdapterIndex,
                              macOf(said->nMacHigh, said->nMacLow), base::Ipv4(said->nIp)};
        if (self.inventory.arrivals.size() < MaxArrivals)
            self.inventory.arrivals.push_back(arrival);
        self.plan.onArrival(arrival);
    }

    static int isOver(void* context) { return static_cast<Collection*>(context)->plan.isOver() ? 1 : 0; }

    static void onReport(void* context, const RZ_CC_LOOK_REPORT* report)
    {
        Inventory& inventory = static_cast<Collection*>(context)->inventory;
        inventory.unlisted = report->nUnlisted;
        inventory.listener = static_cast<Listener>(report->nListener);
        inventory.listenerProgram = report->szListener;
        inventory.notSearched = report->szNotSearched;
    }
};

/// Those that cameras may be on, though nobody has given them an address.
std::vector<unsigned> withoutAddress(const std::vector<Adapter>& adapters)
{
    std::vector<unsigned> result;
    for (const Adapter& adapter : adapters)
        if (adapter.isUp && adapter.isEthernet && adapter.addresses.empty() && adapter.master == 0)
            result.push_back(adapter.index);
    return result;
}

[[noreturn]] void fail(const std::string& why)
{
    throw std::system_error(std::make_error_code(std::errc::network_unreachable), why);
}

} // namespace

Look::Look() : m_adapters(hostAdapters())
{
    const std::vector<unsigned> others = withoutAddress(m_adapters);
    if (RZ_CC_OpenLook(&m_look, others.data(), static_cast<unsigned>(others.size())) != RZ_OK)
        fail("the network adapters");
}

Look::~Look()
{
    RZ_CC_CloseLook(m_look);
}

Inventory Look::once(const Plan& plan)
{
    Inventory inventory;
    inventory.adapters = m_adapters;
    Collection collection{plan, inventory};
    const RZ_CC_LOOK_SINK sink{&collection, &Collection::onCamera, &Collection::onArrival,
                               &Collection::onReport, &Collection::isOver};
    const std::uint64_t dropsBefore = reversePathDrops();
    if (RZ_CC_Look(m_look, plan.countsLosses ? RZ_LOOK_COUNT_LOSSES : 0,
                   static_cast<unsigned>(plan.time.count()), &sink) != RZ_OK)
        fail(inventory.notSearched);
    inventory.reversePathDrops = reversePathDrops() - dropsBefore;
    inventory.neighbours = neighbours();
    findConflicts(inventory);
    return inventory;
}

bool Look::isCurrent() const
{
    return hostAdapters() == m_adapters;
}

} // namespace inventory
