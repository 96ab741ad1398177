// SPDX-License-Identifier: Apache-2.0
// Compiled for the build folder, and once more for the library that is installed.
#include "sdk/network/ListenerPath.h"

namespace sdk {

const char* const ListenerPath = LISTENER_PATH;

} // namespace sdk
