// SPDX-License-Identifier: Apache-2.0
#pragma once

class QString;

/// Which texts the main window takes as a camera's static configuration. They are judged as texts: no field
/// is compared with another, and octets may have leading zeros.
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
