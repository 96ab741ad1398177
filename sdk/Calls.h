// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "base/CancellationHold.h"
#include "sdk/HandleTable.h"
#include "sdk/Reports.h"
#include "sdk/RzCameraSdk.h"
#include "sdk/network/CameraError.h"
#include "sdk/network/Network.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

/// What the calls of the C interface have in common. They themselves stand in ...Calls.cpp, by subject.
namespace sdk {

/// Every call of the C interface goes through this: no cancellation on the way, and no exception gets out.
template <typename Result, typename Call>
Result guarded(Result onException, Call call) noexcept
{
    const base::CancellationHold hold;
    try {
        return call();
    } catch (...) { // No forced unwinding comes this way while cancellation is held off.
        return onException;
    }
}

/// Passes the call the camera that the handle stands for, and notes how it ended.
template <typename Call>
int withCamera(void* handle, Call call) noexcept
{
    return guarded<int>(RZ_ERROR_INTERNAL, [&]() -> int {
        const auto camera = HandleTable::instance().find(handle);
        if (!camera)
            return RZ_ERROR_HANDLE;
        try {
            const int result = call(*camera);
            Reports::instance().setFailure(camera->mac(), {});
            return result;
        } catch (const CameraError& error) {
            Reports::instance().setFailure(camera->mac(), error.what());
            return error.code();
        }
    });
}

/// Cut to the buffer's size, with its NUL.
int copyText(const std::string& text, char* buffer, unsigned bufferSize);

/// "one; two".
std::string joined(const std::vector<std::string>& texts);

/// All adapters, first the one that heard the camera: commands go out on it, and answers may come in on any.
/// Throws CameraError when it is gone.
std::vector<Adapter> adaptersTowards(const RZ_CC_DEVICE_INFO& camera);

/// Throws CameraError when the first of the adapters cannot be used. A network for one camera alone says
/// which.
std::unique_ptr<Network> networkOn(const std::vector<Adapter>& adapters,
                                   std::optional<base::Ipv4> onlyCamera = std::nullopt);

} // namespace sdk
