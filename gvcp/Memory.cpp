// SPDX-License-Identifier: Apache-2.0
#include "gvcp/Memory.h"

#include <algorithm>

namespace gvcp {

Bytes encodeWords(const std::vector<std::uint32_t>& words)
{
    Bytes payload(words.size() * 4);
    for (std::size_t i = 0; i < words.size(); ++i)
        writeU32(payload, i * 4, words[i]);
    return payload;
}

std::optional<std::vector<std::uint32_t>> parseWords(ByteView payload)
{
    if (payload.empty() || payload.size() % 4 != 0)
        return std::nullopt;
    std::vector<std::uint32_t> words(payload.size() / 4);
    for (std::size_t i = 0; i < words.size(); ++i)
        words[i] = readU32(payload, i * 4);
    return words;
}

Bytes encodeRegisterValues(const std::vector<RegisterValue>& values)
{
    Bytes payload(values.size() * 8);
    for (std::size_t i = 0; i < values.size(); ++i) {
        writeU32(payload, i * 8, values[i].address);
        writeU32(payload, i * 8 + 4, values[i].value);
    }
    return payload;
}

std::optional<std::vector<RegisterValue>> parseRegisterValues(ByteView payload)
{
    if (payload.empty() || payload.size() % 8 != 0)
        return std::nullopt;
    std::vector<RegisterValue> values(payload.size() / 8);
    for (std::size_t i = 0; i < values.size(); ++i)
        values[i] = {readU32(payload, i * 8), readU32(payload, i * 8 + 4)};
    return values;
}

Bytes encodeMemoryRange(const MemoryRange& range)
{
    Bytes payload(8);
    writeU32(payload, 0, range.address);
    writeU16(payload, 6, range.count);
    return payload;
}

std::optional<MemoryRange> parseMemoryRange(ByteView payload)
{
    if (payload.size() != 8)
        return std::nullopt;
    return MemoryRange{readU32(payload, 0), readU16(payload, 6)};
}

Bytes encodeMemoryBlock(const MemoryBlock& block)
{
    Bytes payload(4 + block.data.size());
    writeU32(payload, 0, block.address);
    std::copy(block.data.begin(), block.data.end(), payload.begin() + 4);
    return payload;
}

std::optional<MemoryBlock> parseMemoryBlock(ByteView payload)
{
    if (payload.size() <= 4 || payload.size() > 4 + MaxMemoryBlock)
        return std::nullopt;
    return MemoryBlock{readU32(payload, 0), payload.subspan(4)};
}

Bytes encodeWriteResult(std::uint16_t index)
{
    Bytes payload(4);
    writeU16(payload, 2, index);
    return payload;
}

} // namespace gvcp
