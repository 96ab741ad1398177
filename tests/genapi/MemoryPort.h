// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "genapi/GenApi/IPort.h"

#include <map>
#include <string>
#include <vector>

/// A camera that is nothing but bytes: all zero at first, each access written down, one of them failing if
/// wanted.
class MemoryPort : public GenApi::IPort
{
public:
    GenApi::EAccessMode GetAccessMode() const override { return GenApi::RW; }
    void Read(void* buffer, int64_t address, int64_t length) override;
    void Write(const void* buffer, int64_t address, int64_t length) override;

    void put(int64_t address, const std::vector<uint8_t>& bytes);
    std::vector<uint8_t> bytes(int64_t address, int64_t length) const;

    /// Lets the access with that number, counted from now and 0, and all that follow fail.
    void failFrom(std::size_t access) { m_failing = accesses.size() + access; }

    std::vector<std::string> accesses; ///< "R 14+4", "W 20+4": kind, hexadecimal address, length.

private:
    void note(char kind, int64_t address, int64_t length);

    std::map<int64_t, uint8_t> m_bytes;
    std::size_t m_failing = static_cast<std::size_t>(-1);
};
