// SPDX-License-Identifier: Apache-2.0
#include "tests/network/Sdk.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <linux/capability.h>
#include <net/ethernet.h>
#include <netinet/in.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <thread>
#include <unistd.h>

namespace {

/// Takes CAP_NET_RAW from the calling thread alone, and from whatever it starts.
void dropRawCapability()
{
    ASSERT_EQ(prctl(PR_CAPBSET_DROP, CAP_NET_RAW, 0, 0, 0), 0);
    __user_cap_header_struct header{_LINUX_CAPABILITY_VERSION_3, 0};
    __user_cap_data_struct data[2]{};
    ASSERT_EQ(syscall(SYS_capget, &header, data), 0);
    data[0].effective &= ~(1u << CAP_NET_RAW);
    data[0].permitted &= ~(1u << CAP_NET_RAW);
    ASSERT_EQ(syscall(SYS_capset, &header, data), 0);
    ASSERT_EQ(socket(AF_PACKET, SOCK_DGRAM, htons(ETHERTYPE_IP)), -1) << "the privilege is still there";
    ASSERT_EQ(errno, EPERM);
}

} // namespace

std::vector<const RZ_CC_DEVICE_INFO*> enumerate(const Site& site)
{
    const lab::Visit visit(site.host());
    RZ_CC_DEVICE_INFO_LIST list{};
    EXPECT_EQ(RZ_CC_EnumDevices(RZ_TL_GIGE, &list), RZ_OK);
    return {list.apDeviceInfo, list.apDeviceInfo + list.nDeviceCount};
}

std::vector<const RZ_CC_DEVICE_INFO*> enumerateUnprivileged(const Site& site)
{
    std::vector<const RZ_CC_DEVICE_INFO*> records;
    std::thread([&] {
        dropRawCapability();
        records = enumerate(site);
    }).join();
    return records;
}

std::vector<RZ_CC_SIGHTING> look(const Site& site)
{
    const lab::Visit visit(site.host());
    std::vector<RZ_CC_SIGHTING> seen;
    void* look = nullptr;
    EXPECT_EQ(RZ_CC_OpenLook(&look, nullptr, 0), RZ_OK);
    const RZ_CC_LOOK_SINK sink{&seen,
                               [](void* context, const RZ_CC_SIGHTING* camera, int isLast) {
                                   if (isLast != 0)
                                       static_cast<std::vector<RZ_CC_SIGHTING>*>(context)->push_back(*camera);
                               },
                               [](void*, const RZ_CC_ARRIVAL*) {}, [](void*, const RZ_CC_LOOK_REPORT*) {},
                               nullptr};
    EXPECT_EQ(RZ_CC_Look(look, 0, 0, &sink), RZ_OK);
    EXPECT_EQ(RZ_CC_CloseLook(look), RZ_OK);
    return seen;
}

std::string macText(const RZ_CC_DEVICE_INFO& info)
{
    char text[18];
    std::snprintf(text, sizeof text, "%02X:%02X:%02X:%02X:%02X:%02X", info.nMacHigh >> 8 & 0xFF,
                  info.nMacHigh & 0xFF, info.nMacLow >> 24, info.nMacLow >> 16 & 0xFF,
                  info.nMacLow >> 8 & 0xFF, info.nMacLow & 0xFF);
    return text;
}

std::set<std::string> macTexts(const std::vector<const RZ_CC_DEVICE_INFO*>& records)
{
    std::set<std::string> texts;
    for (const auto* record : records)
        texts.insert(macText(*record));
    return texts;
}

const RZ_CC_DEVICE_INFO* recordOf(const std::vector<const RZ_CC_DEVICE_INFO*>& records,
                                  const std::string& mac, base::Ipv4 adapterAddress)
{
    const auto found = std::find_if(records.begin(), records.end(), [&](const auto* record) {
        return macText(*record) == mac &&
               (adapterAddress.isUnspecified() || record->stGigEInfo.nNetExportIp == adapterAddress.number());
    });
    return found == records.end() ? nullptr : *found;
}

base::Ipv4 addressIn(const RZ_CC_DEVICE_INFO& record)
{
    return base::Ipv4(record.stGigEInfo.nDeviceIp);
}

int force(const Site& site, const RZ_CC_DEVICE_INFO& camera, base::Ipv4 address, base::Ipv4 mask,
          base::Ipv4 gateway)
{
    const lab::Visit visit(site.host());
    void* handle = nullptr;
    EXPECT_EQ(RZ_CC_CreateHandle(&handle, &camera), RZ_OK);
    const int result = RZ_GIGE_ForceIpEx(handle, address.number(), mask.number(), gateway.number());
    EXPECT_EQ(RZ_CC_DestroyHandle(handle), RZ_OK);
    return result;
}
