// SPDX-License-Identifier: Apache-2.0
#include "gvcp/Memory.h"

#include <algorithm>

namespace gvcp {

base::Bytes encodeWords(const std::vector<std::uint32_t>& words)
{
    base::Bytes payload(words.size() * 4);
    for (std::size_t i = 0; i < words.size(); ++i)
        base::writeU32(payload, i * 4, words[i]);
    return payload;
}

std::optional<std::vector<std::uint32_t>> parseWords(base::ByteView payload)
{
    if (payload.empty() || payload.size() % 4 != 0)
        return std::nullopt;
    std::vector<std::uint32_t> words(payload.size() / 4);
    for (std::size_t i = 0; i < words.size(); ++i)
        words[i] = base::readU32(payload, i * 4);
    return words;
}

base::Bytes encodeRegisterValues(const std::vector<RegisterValue>& values)
{
    base::Bytes payload(values.size() * 8);
    for (std::size_t i = 0; i < values.size(); ++i) {
        base::writeU32(payload, i * 8, values[i].address);
        base::writeU32(payload, i * 8 + 4, values[i].value);
    }
    return payload;
}

std::optional<std::vector<RegisterValue>> parseRegisterValues(base::ByteView payload)
{
    if (payload.empty() || payload.size() % 8 != 0)
        return std::nullopt;
    std::vector<RegisterValue> values(payload.size() / 8);
    for (std::size_t i = 0; i < values.size(); ++i)
        values[i] = {base::readU32(payload, i * 8), base::readU32(payload, i * 8 + 4)};
    return values;
}

base::Bytes encodeMemoryRange(const MemoryRange& range)
{
    base::Bytes payload(8);
    base::writeU32(payload, 0, range.address);
    base::writeU16(payload, 6, range.count);
    return payload;
}

std::optional<MemoryRange> parseMemoryRange(base::ByteView payload)
{
    if (payload.size() != 8)
        return std::nullopt;
    return MemoryRange{base::readU32(payload, 0), base::readU16(payload, 6)};
}

base::Bytes encodeMemoryBlock(const MemoryBlock& block)
{
    base::Bytes payload(4 + block.data.size());
    base::writeU32(payload, 0, block.address);
    std::copy(block.data.begin(), block.data.end(), payload.begin() + 4);
    return payload;
}

std::optional<MemoryBlock> parseMemoryBlock(base::ByteView payload)
{
    if (payload.size() <= 4 || payload.size() > 4 + MaxMemoryBlock)
        return std::nullopt;
    return MemoryBlock{base::readU32(payload, 0), payload.subspan(4)};
}

base::Bytes encodeWriteResult(std::uint16_t index)
{
    base::Bytes payload(4);
    base::writeU16(payload, 2, index);
    return payload;
}

} // namespace gvcp
