// SPDX-License-Identifier: Apache-2.0
#include "tests/ui/Surveyed.h"

namespace {

inventory::Adapter adapter()
{
    inventory::Adapter eth1;
    eth1.name = "eth1";
    eth1.index = 1;
    eth1.isUp = eth1.hasCarrier = eth1.isEthernet = true;
    eth1.addresses = {{*base::Ipv4::parse("192.0.2.5"), 24}};
    eth1.mtu = 1500;
    return eth1;
}

inventory::IpMethod methodOf(uint32_t configuration)
{
    if ((configuration & 1) != 0)
        return inventory::IpMethod::Static;
    return (configuration & 2) != 0 ? inventory::IpMethod::Dhcp : inventory::IpMethod::LinkLocal;
}

inventory::Camera cameraOf(RZ_CC_DEVICE_INFO* record, const inventory::Adapter& eth1, bool isFree)
{
    const RZ_GIGE_DEVICE_INFO& block = record->stGigEInfo;
    inventory::Camera camera;
    camera.record = record;
    const uint64_t mac = uint64_t{record->nMacHigh} << 32 | record->nMacLow;
    for (std::size_t i = 0; i < camera.mac.bytes.size(); ++i)
        camera.mac.bytes[i] = static_cast<uint8_t>(mac >> (40 - 8 * i));
    camera.model = block.szModelName;
    camera.serial = block.szSerialNumber;
    camera.userName = block.szUserDefinedName;
    camera.ip = {base::Ipv4(block.nDeviceIp), base::Ipv4(block.nDeviceSubnetMask),
                 base::Ipv4(block.nDeviceGateway)};
    camera.method = methodOf(block.nIpConfigCurrent);
    camera.adapterIndex = eth1.index;
    camera.adapterName = eth1.name;
    camera.adapterAddress = eth1.addresses.front().address;
    camera.hearing.bySocket = true;
    if (!eth1.inSubnetOf(camera.ip.address))
        return camera;
    camera.status = isFree ? inventory::Status::Free : inventory::Status::InUse;
    camera.registers = inventory::Registers::Told;
    camera.privilege = isFree ? inventory::Privilege::None : inventory::Privilege::Control;
    camera.stored = camera.ip;
    return camera;
}

} // namespace

inventory::Inventory surveyed(const SdkDouble& sdk,
                              const std::function<bool(const RZ_CC_DEVICE_INFO*)>& isFree)
{
    inventory::Inventory inventory;
    inventory.adapters = {adapter()};
    for (RZ_CC_DEVICE_INFO* const record : sdk.listed)
        inventory.cameras.push_back(cameraOf(record, inventory.adapters.front(), isFree(record)));
    return inventory;
}
