// SPDX-License-Identifier: Apache-2.0
#include "tests/genapi/MemoryPort.h"

#include <sstream>

namespace {

/// Counts on from the largest address there is to the smallest.
int64_t byteAddress(int64_t address, std::size_t offset)
{
    return static_cast<int64_t>(static_cast<uint64_t>(address) + offset);
}

} // namespace

void MemoryPort::Read(void* buffer, int64_t address, int64_t length)
{
    note('R', address, length);
    const auto data = bytes(address, length);
    std::copy(data.begin(), data.end(), static_cast<uint8_t*>(buffer));
}

void MemoryPort::Write(const void* buffer, int64_t address, int64_t length)
{
    note('W', address, length);
    const auto* data = static_cast<const uint8_t*>(buffer);
    put(address, {data, data + length});
}

void MemoryPort::put(int64_t address, const std::vector<uint8_t>& bytes)
{
    for (std::size_t i = 0; i < bytes.size(); ++i)
        m_bytes[byteAddress(address, i)] = bytes[i];
}

std::vector<uint8_t> MemoryPort::bytes(int64_t address, int64_t length) const
{
    std::vector<uint8_t> data(static_cast<std::size_t>(length));
    for (std::size_t i = 0; i < data.size(); ++i) {
        const auto found = m_bytes.find(byteAddress(address, i));
        data[i] = found == m_bytes.end() ? uint8_t{0} : found->second;
    }
    return data;
}

void MemoryPort::note(char kind, int64_t address, int64_t length)
{
    const bool fails = accesses.size() >= m_failing;
    std::ostringstream text;
    text << kind << ' ' << std::hex << address << std::dec << '+' << length;
    accesses.push_back(text.str());
    if (fails)
        throw GenICam::RuntimeException("the cable is out", __FILE_NAME__, __LINE__);
}
