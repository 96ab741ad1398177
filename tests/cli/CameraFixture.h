// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tests/cli/ProgramFixture.h"

#include <algorithm>
#include <functional>

/// Two cameras that only their MAC addresses tell apart; the commands are about the second.
class CameraFixture : public ProgramFixture
{
protected:
    static constexpr const char* Mac = "00:00:00:00:00:02";

    explicit CameraFixture(SdkDouble::Camera second)
    {
        second.mac = Mac;
        sdk.listed = {sdk.record({.mac = "00:00:00:00:00:01"}), sdk.record(second)};
    }

    cli::ExitStatus run(std::vector<std::string> words, const std::vector<std::string>& more = {})
    {
        words.insert(words.end(), more.begin(), more.end());
        return ProgramFixture::run(words);
    }

    /// From now on each search is told to `look`, by its number from 1 on, which says how many of the cameras
    /// answer.
    void atEachLook(std::function<int(int)> look)
    {
        looks = 0;
        sdk.enumDevices = [this, look = std::move(look)](RZ_CC_DEVICE_INFO_LIST& list) {
            const int count = look(++looks);
            list.nDeviceCount = static_cast<unsigned>(count);
            std::copy_n(sdk.listed.begin(), count, list.apDeviceInfo);
            return RZ_OK;
        };
    }

    RZ_GIGE_DEVICE_INFO& camera() { return sdk.listed[1]->stGigEInfo; }

    int looks = 0; ///< Since atEachLook().
};
