// SPDX-License-Identifier: Apache-2.0
#include "tests/genapi/MemoryPort.h"

#include <sstream>

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
    for (const auto byte : bytes)
        m_bytes[address++] = byte;
}

std::vector<uint8_t> MemoryPort::bytes(int64_t address, int64_t length) const
{
    std::vector<uint8_t> data;
    for (; length > 0; --length, ++address) {
        const auto found = m_bytes.find(address);
        data.push_back(found == m_bytes.end() ? uint8_t{0} : found->second);
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
