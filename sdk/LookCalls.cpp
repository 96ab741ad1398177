// SPDX-License-Identifier: Apache-2.0
// What there is on the networks, and what it tells of itself without being opened.
#include "sdk/Calls.h"
#include "sdk/OpenThings.h"
#include "sdk/discovery/Enumeration.h"
#include "sdk/discovery/Record.h"
#include "sdk/discovery/RecordTable.h"
#include "sdk/network/LinuxNetwork.h"
#include "sdk/network/ListenerPath.h"

#include <iterator>
#include <system_error>

using namespace sdk;

namespace {

/// To each camera, when losses are counted.
constexpr unsigned LossQuestions = 20;

/// Adapters that stay open from one look to the next.
class OpenLook
{
public:
    explicit OpenLook(const std::vector<unsigned>& withoutAddress)
        : m_adapters(hostAdaptersAnd(withoutAddress)),
          m_network(m_adapters, {std::nullopt, true})
    {}

    int look(unsigned options, unsigned milliseconds, const RZ_CC_LOOK_SINK& sink);

private:
    RZ_CC_DEVICE_INFO* recordOf(const FoundCamera& camera)
    {
        return RecordTable::instance().record(camera, m_network.adapters()[camera.adapter], m_network.now());
    }
    void tell(const FoundCamera& camera, RZ_CC_DEVICE_INFO* record, int isLast, const RZ_CC_LOOK_SINK& sink)
    {
        RZ_CC_SIGHTING sighting = camera.sighting;
        sighting.stInfo = sdk::recordOf(camera, m_network.adapters()[camera.adapter]);
        sighting.pInfo = record;
        sink.pOnCamera(sink.pContext, &sighting, isLast);
    }
    void tell(const Arrival& arrival, const RZ_CC_LOOK_SINK& sink) const
    {
        const auto& mac = arrival.mac.bytes;
        const RZ_CC_ARRIVAL told{static_cast<std::uint32_t>(arrival.kind),
                                 m_network.adapters()[arrival.adapter].index, base::readU16(mac, 0),
                                 base::readU32(mac, 2), arrival.address.number()};
        sink.pOnArrival(sink.pContext, &told);
    }

    const std::vector<Adapter> m_adapters;
    LinuxNetwork m_network;
    RequestIds m_ids;
};

int OpenLook::look(unsigned options, unsigned milliseconds, const RZ_CC_LOOK_SINK& sink)
{
    const RecordTable& records = RecordTable::instance();
    LookPlan plan;
    plan.time = std::chrono::milliseconds(milliseconds);
    plan.lossQuestions = (options & RZ_LOOK_COUNT_LOSSES) != 0 ? LossQuestions : 0;
    plan.onCamera = [&](const FoundCamera& camera) {
        if (RZ_CC_DEVICE_INFO* const record = recordOf(camera))
            tell(camera, record, 0, sink);
    };
    plan.onArrival = [&](const Arrival& arrival) { tell(arrival, sink); };
    if (sink.pIsOver)
        plan.isOver = [&] { return sink.pIsOver(sink.pContext) != 0; };
    const auto found = lookForCameras(
        m_network, m_ids,
        [&records](const base::MacAddress& mac, const Adapter& adapter) {
            return records.knows(mac, adapter.index);
        },
        plan);

    unsigned unlisted = 0;
    for (const FoundCamera& camera : found.cameras) {
        if (RZ_CC_DEVICE_INFO* const record = recordOf(camera))
            tell(camera, record, 1, sink);
        else
            ++unlisted;
    }
    auto failures = m_network.failures();
    std::copy(found.failures.begin(), found.failures.end(), std::back_inserter(failures));
    const std::string notSearched = joined(failures);
    const RZ_CC_LOOK_REPORT report{unlisted, static_cast<std::uint32_t>(m_network.listening()), ListenerPath,
                                   notSearched.c_str()};
    sink.pOnReport(sink.pContext, &report);
    return failures.size() < m_adapters.size() || m_adapters.empty() ? RZ_OK : RZ_ERROR_NETWORK;
}

using OpenLooks = OpenThings<OpenLook>;

} // namespace

int RZ_CC_OpenLook(void** look, const unsigned* withoutAddress, unsigned count)
{
    if (!look || (!withoutAddress && count > 0))
        return RZ_ERROR_PARAMETER;
    return guarded<int>(RZ_ERROR_INTERNAL, [=]() -> int {
        try {
            const std::vector<unsigned> others(withoutAddress, withoutAddress + count);
            *look = OpenLooks::instance().add(std::make_shared<OpenLook>(others));
            return RZ_OK;
        } catch (const std::system_error&) {
            return RZ_ERROR_NETWORK;
        }
    });
}

int RZ_CC_Look(void* look, unsigned options, unsigned milliseconds, const RZ_CC_LOOK_SINK* sink)
{
    if (!sink || !sink->pOnCamera || !sink->pOnArrival || !sink->pOnReport)
        return RZ_ERROR_PARAMETER;
    return guarded<int>(RZ_ERROR_INTERNAL, [=]() -> int {
        const auto open = OpenLooks::instance().find(look);
        return open ? open->look(options, milliseconds, *sink) : int{RZ_ERROR_HANDLE};
    });
}

int RZ_CC_CloseLook(void* look)
{
    // The adapters are closed outside of the lock: their listeners are waited for.
    return guarded<int>(RZ_ERROR_INTERNAL,
                        [=]() -> int { return OpenLooks::instance().take(look) ? RZ_OK : RZ_ERROR_HANDLE; });
}
