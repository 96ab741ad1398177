// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "base/Bytes.h"

#include <random>
#include <vector>

namespace simulator {

/// What goes out along with each genuine DISCOVERY answer.
enum class NoiseKind
{
    Truncated,
    Oversized,
    Foreign,
    Duplicate,
    Random,
    WrongId
};

/// Datagrams of this kind to go with a DISCOVERY acknowledge; none is longer than an Ethernet frame carries.
std::vector<base::Bytes> makeNoise(NoiseKind kind, base::ByteView acknowledge, std::mt19937& random);

/// The acknowledge as another camera would send it: each `index` has a MAC of its own, always the same one,
/// and an address in the genuine camera's subnet.
base::Bytes forgeAnswer(base::ByteView acknowledge, std::uint32_t index);

} // namespace simulator
