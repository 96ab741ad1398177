// SPDX-License-Identifier: Apache-2.0
#include "sdk/camera/CameraMemory.h"

#include "gvcp/Registers.h"
#include "sdk/network/CameraError.h"

#include <algorithm>
#include <cstdio>

namespace sdk {

namespace {

constexpr std::size_t WordSize = 4;
constexpr std::uint64_t End = std::uint64_t{1} << 32;

constexpr std::uint64_t roundDown(std::uint64_t address)
{
    return address / WordSize * WordSize;
}

constexpr std::uint64_t roundUp(std::uint64_t address)
{
    return roundDown(address + WordSize - 1);
}

bool isRegister(std::uint64_t address, std::size_t size)
{
    return size == WordSize && address % WordSize == 0;
}

void checkRange(std::uint64_t address, std::size_t size)
{
    if (size != 0 && address < End && size <= End - address)
        return;
    char text[80];
    std::snprintf(text, sizeof text, "a camera has no %zu bytes at 0x%llX", size,
                  static_cast<unsigned long long>(address));
    throw CameraError(RZ_ERROR_PARAMETER, text);
}

} // namespace

void CameraMemory::read(std::uint64_t address, std::span<std::uint8_t> out)
{
    checkRange(address, out.size());
    if (isRegister(address, out.size())) {
        base::writeU32(out, 0, m_channel.readRegister(static_cast<std::uint32_t>(address)));
        return;
    }
    std::array<std::uint8_t, ControlChannel::MaxBlock> block{};
    for (std::size_t done = 0; done < out.size();) {
        const std::uint64_t at = address + done;
        const std::uint64_t from = roundDown(at);
        const std::uint64_t to = std::min(roundUp(address + out.size()), from + block.size());
        m_channel.readMemory(static_cast<std::uint32_t>(from), std::span(block).first(to - from));
        const std::size_t count = std::min<std::size_t>(to - at, out.size() - done);
        std::copy_n(block.begin() + static_cast<std::ptrdiff_t>(at - from), count,
                    out.begin() + static_cast<std::ptrdiff_t>(done));
        done += count;
    }
}

void CameraMemory::write(std::uint64_t address, base::ByteView data)
{
    checkRange(address, data.size());
    if (isRegister(address, data.size())) {
        m_channel.writeRegister(static_cast<std::uint32_t>(address), base::readU32(data, 0));
        return;
    }
    const std::uint64_t from = roundDown(address);
    const std::uint64_t to = roundUp(address + data.size());
    base::Bytes words(to - from);
    if (from != address)
        m_channel.readMemory(static_cast<std::uint32_t>(from), std::span(words).first(WordSize));
    // The last word, if it is written in part, and is not the first one, which has been read.
    const bool isReadAlready = from != address && words.size() == WordSize;
    if (to != address + data.size() && !isReadAlready)
        m_channel.readMemory(static_cast<std::uint32_t>(to - WordSize), std::span(words).last(WordSize));
    std::copy(data.begin(), data.end(), words.begin() + static_cast<std::ptrdiff_t>(address - from));
    writeWords(static_cast<std::uint32_t>(from), words);
}

void CameraMemory::writeWords(std::uint32_t address, base::ByteView data)
{
    for (std::size_t done = 0; done < data.size();) {
        const auto block = data.subspan(done, std::min(data.size() - done, ControlChannel::MaxBlock));
        const auto at = static_cast<std::uint32_t>(address + done);
        if (!writeBlock(at, block))
            for (std::size_t i = 0; i < block.size(); i += WordSize)
                m_channel.writeRegister(static_cast<std::uint32_t>(at + i), base::readU32(block, i));
        done += block.size();
    }
}

/// False when the camera has no WRITEMEM.
bool CameraMemory::writeBlock(std::uint32_t address, base::ByteView data)
{
    if (!canWriteMemory())
        return false;
    try {
        m_channel.writeMemory(address, data);
        return true;
    } catch (const CameraError& error) {
        if (error.status() != gvcp::Status::NotImplemented)
            throw;
        m_canWriteMemory = false;
        return false;
    }
}

bool CameraMemory::canWriteMemory()
{
    if (!m_canWriteMemory)
        m_canWriteMemory = (m_channel.findRegister(gvcp::reg::GvcpCapability).value_or(0) &
                            gvcp::Capability::WriteMemory) != 0;
    return *m_canWriteMemory;
}

} // namespace sdk
