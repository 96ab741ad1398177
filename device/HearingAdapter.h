// SPDX-License-Identifier: Apache-2.0
#pragma once

class QDevice;

/// The index of the host's adapter that heard the camera; 0 when it is gone.
int HearingAdapterIndex(const QDevice& device);
