// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace sdk {

/// From now on, when the calling thread ends, cameras that it has opened and not closed are closed. That
/// covers every way a thread can end but the process's own, cancellation included.
void closeCamerasWhenThisThreadEnds();

} // namespace sdk
