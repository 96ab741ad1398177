// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tests/cli/ProgramFixture.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdlib.h>

/// Two cameras that are as the site file says, in a folder of the test's own.
class LineFixture : public ProgramFixture
{
protected:
    LineFixture()
    {
        char name[] = "/tmp/line-XXXXXX";
        folder = ::mkdtemp(name);
        path = folder / "line.yaml";
        sdk.listed = {camera({.mac = "02:00:00:00:00:01", .ip = "192.0.2.21", .userName = "left"}),
                      camera({.mac = "02:00:00:00:00:02", .ip = "192.0.2.22", .userName = "right"})};
        sdk.look = [this](unsigned, unsigned, const RZ_CC_LOOK_SINK& sink) {
            ++looks;
            for (const int isLast : {0, 1})
                for (RZ_CC_DEVICE_INFO* const each : sdk.listed) {
                    const RZ_CC_SIGHTING seen = sighting(each);
                    sink.pOnCamera(sink.pContext, &seen, isLast);
                }
            const RZ_CC_LOOK_REPORT report{0, RZ_LISTENER_HEARS, "", sdk.notSearched.c_str()};
            sink.pOnReport(sink.pContext, &report);
            return RZ_OK;
        };
        write(siteText());
    }

    ~LineFixture() override { std::filesystem::remove_all(folder); }

    RZ_CC_DEVICE_INFO* camera(SdkDouble::Camera which)
    {
        which.ipConfig = 5;
        return sdk.record(which);
    }

    /// In reach; it has stored the address that it has.
    RZ_CC_SIGHTING sighting(RZ_CC_DEVICE_INFO* camera) const
    {
        RZ_CC_SIGHTING seen = sdk.sighting(camera);
        seen.nRegisters = RZ_REGISTERS_TOLD;
        seen.nTold = RZ_TOLD_STORED | RZ_TOLD_PRIVILEGE;
        seen.nStoredIp = camera->stGigEInfo.nDeviceIp;
        seen.nStoredMask = camera->stGigEInfo.nDeviceSubnetMask;
        seen.nStoredGateway = camera->stGigEInfo.nDeviceGateway;
        return seen;
    }

    static std::string siteText(const std::string& left = "192.0.2.21",
                                const std::string& right = "192.0.2.22")
    {
        return "version: 1\n"
               "defaults: {mode: static, mask: 255.255.255.0, gateway: none}\n"
               "cameras:\n"
               "  left: {match: {mac: \"02:00:00:00:00:01\"}, address: " +
               left +
               "}\n"
               "  right: {match: {mac: \"02:00:00:00:00:02\"}, address: " +
               right + "}\n";
    }

    void write(const std::string& text) const { std::ofstream(path) << text; }

    std::string written() const
    {
        std::ifstream file(path);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    /// The changes that were begun.
    std::vector<std::string> changes() const
    {
        std::vector<std::string> calls;
        for (const std::string& call : sdk.calls())
            if (call.rfind("BeginChange", 0) == 0)
                calls.push_back(call);
        return calls;
    }

    std::filesystem::path folder;
    std::string path;
    int looks = 0;
};
