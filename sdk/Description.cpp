// SPDX-License-Identifier: Apache-2.0
#include "sdk/Description.h"

#include "gvcp/Registers.h"
#include "sdk/CameraError.h"
#include "sdk/CameraMemory.h"
#include "sdk/DescriptionUrl.h"

namespace sdk {

namespace {

constexpr std::size_t UrlSize = 512;

gvcp::Bytes fetchFrom(ControlChannel& channel, std::uint32_t urlRegister)
{
    CameraMemory memory(channel);
    gvcp::Bytes text(UrlSize);
    memory.read(urlRegister, text);
    const auto url = parseDescriptionUrl({reinterpret_cast<const char*>(text.data()), text.size()});
    if (!url)
        throw CameraError(RZ_ERROR_DESCRIPTION, "the camera names no description file");
    if (!url->isLocal)
        throw CameraError(RZ_ERROR_DESCRIPTION_ELSEWHERE, "the description is not in the camera");
    if (url->length > RZ_MAX_DESCRIPTION)
        throw CameraError(RZ_ERROR_BUFFER, "the description is too long");
    gvcp::Bytes file(url->length);
    memory.read(url->address, file);
    return file;
}

} // namespace

gvcp::Bytes fetchDescription(ControlChannel& channel)
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
            // Of the two reasons the one that says more: often there simply is no second URL.
            if (second.code() == RZ_ERROR_DESCRIPTION)
                throw first;
            throw;
        }
    }
}

} // namespace sdk
