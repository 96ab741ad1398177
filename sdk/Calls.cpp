// SPDX-License-Identifier: Apache-2.0
#include "sdk/Calls.h"

#include "sdk/network/LinuxNetwork.h"

#include <algorithm>

namespace sdk {

int copyText(const std::string& text, char* buffer, unsigned bufferSize)
{
    if (!buffer || bufferSize == 0)
        return RZ_ERROR_PARAMETER;
    const std::size_t length = std::min<std::size_t>(text.size(), bufferSize - 1);
    std::copy_n(text.begin(), length, buffer);
    buffer[length] = '\0';
    return RZ_OK;
}

std::string joined(const std::vector<std::string>& texts)
{
    std::string all;
    for (const std::string& text : texts)
        all += (all.empty() ? "" : "; ") + text;
    return all;
}

std::vector<Adapter> adaptersTowards(const RZ_CC_DEVICE_INFO& camera)
{
    const RZ_GIGE_DEVICE_INFO& info = camera.stGigEInfo;
    auto adapters = hostAdapters();
    const auto found = std::find_if(adapters.begin(), adapters.end(), [&info](const Adapter& adapter) {
        if (info.nNetExportIndex != 0)
            return adapter.index == info.nNetExportIndex;
        return std::any_of(
            adapter.addresses.begin(), adapter.addresses.end(),
            [&info](const AdapterAddress& own) { return own.address.number() == info.nNetExportIp; });
    });
    if (found == adapters.end())
        throw CameraError(RZ_ERROR_NETWORK, "the adapter that heard it is gone");
    std::rotate(adapters.begin(), found, found + 1);
    return adapters;
}

std::unique_ptr<Network> networkOn(const std::vector<Adapter>& adapters, std::optional<base::Ipv4> onlyCamera)
{
    auto network = std::make_unique<LinuxNetwork>(adapters, LinuxNetwork::Purpose{onlyCamera, false});
    if (network->adapters().empty() || network->adapters().front().index != adapters.front().index)
        throw CameraError(RZ_ERROR_NETWORK, "its adapter cannot be used: " + joined(network->failures()));
    return network;
}

} // namespace sdk
