// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

class QDevice;

/// Forces addresses (host order) onto the camera, until its next reset; takes up to some seconds. Empty when
/// done, else a sentence that says what failed and what may be done.
QString ForceAddress(const QDevice& device, quint32 nIp, quint32 nSubnetMask, quint32 nGateway);
