// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "device/QDevice.h"

#include <optional>

/// Which controls of the main window are in use.
struct Editability
{
    bool bAddress = false;
    bool bMask = false;
    bool bGateway = false;
    bool bRadios = false;
    bool bUserName = false;
    bool bSave = false;
    bool bModifyIp = false;

    bool operator==(const Editability&) const = default;
};

/// What a camera's status and the kind of address that is chosen for it allow. Nothing for a camera without a
/// known status, where everything stays as it is.
std::optional<Editability> EditabilityOf(std::optional<CameraStatus> status, IpConfigType chosen);
