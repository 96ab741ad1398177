// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "device/QDevice.h"

// Which texts are taken as a camera's static configuration. They are judged as texts: no field is compared
// with another, and octets may have leading zeros.

/// The main window's rules.
namespace MainAddressRules {

/// Whether every character is one of '0' to '9'; true for an empty text.
bool IsNumber(const QString& strText);

/// Four parts of 0 to 255, the first one of 1 to 126 or 128 to 223. A part too long for an int counts 0.
bool IsCameraAddress(const QString& strText);

/// One of the three masks that end between octets.
bool IsSubnetMask(const QString& strText);

/// As for a camera's address, but the first part may be 0 as well.
bool IsGateway(const QString& strText);

} // namespace MainAddressRules

/// The rules of the Modify IP Address dialog. It is more lenient than the main window: of the four parts only
/// the last must not be empty, and one that is no number counts 0.
namespace DialogAddressRules {

/// Parts of 0 to 255, the first one of 1 to 126 or 128 to 223.
bool IsCameraAddress(const QString& strText);

/// Parts of 0 to 255; the bits may be any.
bool IsSubnetMask(const QString& strText);

/// As for a camera's address, but the first part may be 0 as well.
bool IsGateway(const QString& strText);

/// What is offered for cameras on this adapter, as in "192.168.1.0~192.168.1.253".
QString ValidRange(const _NETWORK_INFO& adapter);

} // namespace DialogAddressRules
