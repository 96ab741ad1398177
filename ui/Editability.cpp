// SPDX-License-Identifier: Apache-2.0
#include "ui/Editability.h"

std::optional<Editability> EditabilityOf(std::optional<CameraStatus> status, IpConfigType chosen)
{
    if (!status)
        return std::nullopt;
    const bool bStaticIp = chosen == IpConfigType::Static;
    switch (*status) {
    case CameraStatus::Free:
        return Editability{.bAddress = bStaticIp,
                           .bMask = bStaticIp,
                           .bGateway = bStaticIp,
                           .bRadios = true,
                           .bUserName = true,
                           .bSave = true,
                           .bModifyIp = true};
    case CameraStatus::Unreachable:
        // Intended, odd as it is: a static address may be changed here as well as in the dialog.
        return Editability{.bAddress = bStaticIp, .bSave = bStaticIp, .bModifyIp = true};
    case CameraStatus::InUse:
        return Editability{};
    }
    return std::nullopt;
}
