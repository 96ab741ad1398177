// SPDX-License-Identifier: Apache-2.0
#include "sdk/description/Description.h"

#include "gvcp/Registers.h"
#include "sdk/camera/CameraMemory.h"
#include "sdk/description/DescriptionUrl.h"
#include "sdk/network/CameraError.h"

namespace sdk {

namespace {

base::Bytes fetchFrom(ControlChannel& channel, const gvcp::TextRegister& urlRegister)
{
    CameraMemory memory(channel);
    base::Bytes text(urlRegister.size);
    memory.read(urlRegister.address, text);
    const auto url = parseDescriptionUrl({reinterpret_cast<const char*>(text.data()), text.size()});
    if (!url)
        throw CameraError(RZ_ERROR_DESCRIPTION, "the camera names no description file");
    if (!url->isLocal)
        throw CameraError(RZ_ERROR_DESCRIPTION_ELSEWHERE, "the description is not in the camera");
    if (url->length > RZ_MAX_DESCRIPTION)
        throw CameraError(RZ_ERROR_BUFFER, "the description is too long");
    base::Bytes file(url->length);
    memory.read(url->address, file);
    return file;
}

} // namespace

base::Bytes fetchDescription(ControlChannel& channel)
{
    try {
        return fetchFrom(channel, gvcp::reg::FirstDescriptionUrl);
    } catch (const CameraError& first) {
        // There is nothing more to hear from a camera that is gone.
        if (first.code() == RZ_ERROR_NO_ANSWER || first.code() == RZ_ERROR_NETWORK ||
            first.code() == RZ_ERROR_NOT_OPEN)
            throw;
        try {
            return fetchFrom(channel, gvcp::reg::SecondDescriptionUrl);
        } catch (const CameraError& second) {
            // Throws the reason that says more: often there simply is no second URL.
            if (second.code() == RZ_ERROR_DESCRIPTION)
                throw first;
            throw;
        }
    }
}

} // namespace sdk
