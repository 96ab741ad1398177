// SPDX-License-Identifier: Apache-2.0
// Handles, and what is done with an open camera.
#include "gvcp/Registers.h"
#include "sdk/Calls.h"
#include "sdk/description/Description.h"
#include "sdk/description/DescriptionCompletion.h"
#include "sdk/discovery/Record.h"
#include "sdk/discovery/RecordTable.h"

#include <algorithm>
#include <thread>

using namespace sdk;

namespace {

/// Closes the cameras that its thread has opened and not closed.
struct ThreadEnd
{
    ThreadEnd() = default;
    ThreadEnd(const ThreadEnd&) = delete;
    ThreadEnd& operator=(const ThreadEnd&) = delete;
    ~ThreadEnd()
    {
        // A cancellation that comes as late as this would have nowhere to unwind to.
        const base::CancellationHold hold;
        HandleTable::instance().closeOpenedBy(std::this_thread::get_id());
    }
};

/// From now on, when the calling thread ends, cameras that it has opened and not closed are closed. That
/// covers every way a thread can end but the process's own, cancellation included.
void closeCamerasWhenThisThreadEnds()
{
    const thread_local ThreadEnd end;
}

bool hasUserName(ControlChannel& channel)
{
    return (channel.findRegister(gvcp::reg::GvcpCapability).value_or(0) &
            gvcp::Capability::UserDefinedName) != 0;
}

} // namespace

int RZ_CC_CreateHandle(void** handle, const RZ_CC_DEVICE_INFO* info)
{
    if (!handle || !info)
        return RZ_ERROR_PARAMETER;
    return guarded<int>(RZ_ERROR_INTERNAL, [=] {
        *handle = HandleTable::instance().create(RecordTable::instance().copyOf(*info));
        return RZ_OK;
    });
}

int RZ_CC_DestroyHandle(void* handle)
{
    return guarded<int>(RZ_ERROR_INTERNAL, [handle] {
        return HandleTable::instance().destroy(handle) ? RZ_OK : RZ_ERROR_HANDLE;
    });
}

int RZ_CC_OpenDevice(void* handle, unsigned accessMode, unsigned short switchoverKey)
{
    if (accessMode != RZ_ACCESS_EXCLUSIVE || switchoverKey != 0)
        return RZ_ERROR_PARAMETER;
    return withCamera(handle, [](CameraHandle& camera) {
        if (!camera.address().canBeHost())
            return RZ_ERROR_PARAMETER;
        const auto adapters = adaptersTowards(camera.info());
        if (adapters.front().isBroadcast(camera.address()))
            return RZ_ERROR_PARAMETER;
        HandleTable::instance().closeCamera(camera.mac());
        closeCamerasWhenThisThreadEnds();
        camera.open(networkOn(adapters, camera.address()));
        return RZ_OK;
    });
}

int RZ_CC_GetErrorText(const RZ_CC_DEVICE_INFO* info, char* buffer, unsigned bufferSize)
{
    if (!info)
        return RZ_ERROR_PARAMETER;
    return guarded<int>(RZ_ERROR_INTERNAL, [=] {
        const auto mac = macOf(RecordTable::instance().copyOf(*info));
        return copyText(Reports::instance().failureOf(mac), buffer, bufferSize);
    });
}

int RZ_XML_GetGenICamXML(void* handle, unsigned char* buffer, unsigned bufferSize, unsigned* dataLength)
{
    if (!buffer || !dataLength)
        return RZ_ERROR_PARAMETER;
    return withCamera(handle, [=](CameraHandle& camera) {
        *dataLength = 0;
        const auto session = camera.session();
        const auto file =
            completedDescription(fetchDescription(session->channel()), hasUserName(session->channel()),
                                 session->interface(), bufferSize);
        *dataLength = static_cast<unsigned>(file.size());
        if (file.size() > bufferSize)
            return RZ_ERROR_BUFFER;
        std::copy(file.begin(), file.end(), buffer);
        return RZ_OK;
    });
}

void* RZ_CC_GetTlProxy(void* handle)
{
    return guarded<void*>(nullptr, [handle]() -> void* {
        const auto camera = HandleTable::instance().find(handle);
        return camera ? camera->port() : nullptr;
    });
}
