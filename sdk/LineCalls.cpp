// SPDX-License-Identifier: Apache-2.0
// Changes of many cameras, side by side.
#include "sdk/Calls.h"
#include "sdk/OpenThings.h"
#include "sdk/discovery/Record.h"
#include "sdk/line/Change.h"
#include "sdk/network/LinuxNetwork.h"

#include <algorithm>
#include <map>
#include <system_error>

using namespace sdk;

namespace {

class OpenLine
{
public:
    OpenLine() : m_network(hostAdapters()), m_line(m_network) {}

    /// Nothing when this camera is being changed already.
    std::optional<unsigned> begin(const RZ_CC_CHANGE& order)
    {
        const base::MacAddress mac = macOf(order.stInfo);
        if (std::ranges::any_of(m_changes, [&mac](const auto& each) { return each.second.mac == mac; }))
            return std::nullopt;
        const unsigned number = ++m_last;
        m_changes.try_emplace(number, m_line, order, mac, [this, number](RZ_STEP step) {
            m_sink->pOnStep(m_sink->pContext, number, step);
        });
        return number;
    }

    void serve(std::chrono::milliseconds time, const RZ_CC_LINE_SINK& sink)
    {
        m_sink = &sink;
        for (auto& [number, each] : m_changes)
            if (!std::exchange(each.isStarted, true))
                each.change.start();
        m_line.serve(m_network.now() + time, [this] {
            return std::ranges::any_of(m_changes,
                                       [](const auto& each) { return each.second.change.hasEnded(); });
        });
        for (auto each = m_changes.begin(); each != m_changes.end();) {
            if (!each->second.change.hasEnded()) {
                ++each;
                continue;
            }
            const auto ended = m_changes.extract(each++);
            const RZ_CC_CHANGE_RESULT result = ended.mapped().change.result();
            sink.pOnEnd(sink.pContext, ended.key(), &result);
        }
    }

private:
    struct UnderWay
    {
        UnderWay(Line& line, const RZ_CC_CHANGE& order, const base::MacAddress& camera, Change::OnStep onStep)
            : mac(camera),
              change(line, order, std::move(onStep))
        {}

        base::MacAddress mac;
        Change change;
        bool isStarted = false;
    };

    LinuxNetwork m_network;
    Line m_line;
    std::map<unsigned, UnderWay> m_changes; ///< By number.
    unsigned m_last = 0;
    const RZ_CC_LINE_SINK* m_sink = nullptr; ///< While they are served.
};

using OpenLines = OpenThings<OpenLine>;

} // namespace

int RZ_CC_OpenLine(void** line)
{
    if (!line)
        return RZ_ERROR_PARAMETER;
    return guarded<int>(RZ_ERROR_INTERNAL, [=]() -> int {
        try {
            *line = OpenLines::instance().add(std::make_shared<OpenLine>());
            return RZ_OK;
        } catch (const std::system_error&) {
            return RZ_ERROR_NETWORK;
        }
    });
}

int RZ_CC_BeginChange(void* line, const RZ_CC_CHANGE* change, unsigned* number)
{
    if (!change || !number)
        return RZ_ERROR_PARAMETER;
    return guarded<int>(RZ_ERROR_INTERNAL, [=]() -> int {
        const auto open = OpenLines::instance().find(line);
        if (!open)
            return RZ_ERROR_HANDLE;
        HandleTable::instance().closeCamera(macOf(change->stInfo));
        const auto begun = open->begin(*change);
        *number = begun.value_or(0);
        return begun ? RZ_OK : RZ_ERROR_PARAMETER;
    });
}

int RZ_CC_ServeLine(void* line, unsigned milliseconds, const RZ_CC_LINE_SINK* sink)
{
    if (!sink || !sink->pOnStep || !sink->pOnEnd)
        return RZ_ERROR_PARAMETER;
    return guarded<int>(RZ_ERROR_INTERNAL, [=]() -> int {
        const auto open = OpenLines::instance().find(line);
        if (!open)
            return RZ_ERROR_HANDLE;
        open->serve(std::chrono::milliseconds(milliseconds), *sink);
        return RZ_OK;
    });
}

int RZ_CC_CloseLine(void* line)
{
    // The adapters are closed outside of the lock: their listeners are waited for.
    return guarded<int>(RZ_ERROR_INTERNAL,
                        [=]() -> int { return OpenLines::instance().take(line) ? RZ_OK : RZ_ERROR_HANDLE; });
}
