// SPDX-License-Identifier: Apache-2.0
#pragma once

/// A sanitizer takes memory of its own and many times the time, of the simulated cameras too, which are one
/// process for each farm.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
inline constexpr bool IsSanitized = true;
#else
inline constexpr bool IsSanitized = false;
#endif
