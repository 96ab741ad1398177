// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace sdk {

/// The listener's file. No setting and no environment changes it: who could choose it would choose what the
/// process believes to have heard.
extern const char* const ListenerPath;

} // namespace sdk
