// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "base/Bytes.h"

#include <optional>
#include <vector>

/// Payloads of the commands on a camera's memory. READREG and WRITEREG work on 32-bit registers; READMEM and
/// WRITEMEM on blocks whose address and length are multiples of 4, which the parsers leave to the camera to
/// judge.
namespace gvcp {

inline constexpr std::size_t MaxMemoryBlock = 536;

/// READREG carries the registers' addresses, its acknowledge their values. Parsing gives nothing unless the
/// payload is one or more whole words.
base::Bytes encodeWords(const std::vector<std::uint32_t>& words);
std::optional<std::vector<std::uint32_t>> parseWords(base::ByteView payload);

struct RegisterValue
{
    std::uint32_t address = 0;
    std::uint32_t value = 0;

    bool operator==(const RegisterValue&) const = default;
};

/// WRITEREG.
base::Bytes encodeRegisterValues(const std::vector<RegisterValue>& values);
std::optional<std::vector<RegisterValue>> parseRegisterValues(base::ByteView payload);

struct MemoryRange
{
    std::uint32_t address = 0;
    std::uint16_t count = 0; ///< Bytes.

    bool operator==(const MemoryRange&) const = default;
};

/// READMEM.
base::Bytes encodeMemoryRange(const MemoryRange& range);
std::optional<MemoryRange> parseMemoryRange(base::ByteView payload);

struct MemoryBlock
{
    std::uint32_t address = 0;
    base::ByteView data; ///< Points into the bytes it was parsed from.
};

/// READMEM's acknowledge and WRITEMEM. Parsing gives nothing for a block without data or over MaxMemoryBlock.
base::Bytes encodeMemoryBlock(const MemoryBlock& block);
std::optional<MemoryBlock> parseMemoryBlock(base::ByteView payload);

/// WRITEREG's and WRITEMEM's acknowledge: how many registers were written, or which one failed.
base::Bytes encodeWriteResult(std::uint16_t index);

} // namespace gvcp
