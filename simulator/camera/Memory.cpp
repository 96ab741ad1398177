// SPDX-License-Identifier: Apache-2.0
#include "simulator/camera/Memory.h"

#include <algorithm>
#include <utility>

namespace simulator {

using gvcp::Status;

void Memory::add(std::uint32_t address, std::size_t size, Access access)
{
    for (std::size_t done = 0; done < size; done += 4)
        m_registers.try_emplace(static_cast<std::uint32_t>(address + done), Register{0, access});
}

void Memory::addFile(std::uint32_t address, std::shared_ptr<const base::Bytes> file)
{
    m_fileAddress = address;
    m_file = std::move(file);
}

Status Memory::read(std::uint32_t address, std::span<std::uint8_t> out) const
{
    if (address % 4 != 0 || out.size() % 4 != 0)
        return Status::BadAlignment;
    for (std::size_t done = 0; done < out.size(); done += 4) {
        const auto at = static_cast<std::uint32_t>(address + done);
        if (const auto found = m_registers.find(at); found != m_registers.end()) {
            if (found->second.access == Access::WriteOnly)
                return Status::AccessDenied;
            base::writeU32(out, done, found->second.value);
        } else if (isInFile(at)) {
            base::writeU32(out, done, base::readU32(*m_file, at - m_fileAddress));
        } else {
            return Status::InvalidAddress;
        }
    }
    return Status::Success;
}

Status Memory::mayWrite(std::uint32_t address, std::size_t size) const
{
    if (address % 4 != 0 || size % 4 != 0)
        return Status::BadAlignment;
    for (std::size_t done = 0; done < size; done += 4) {
        const auto at = static_cast<std::uint32_t>(address + done);
        const auto found = m_registers.find(at);
        if (found == m_registers.end() && !isInFile(at))
            return Status::InvalidAddress;
        if (found == m_registers.end() || found->second.access == Access::ReadOnly)
            return Status::WriteProtect;
    }
    return Status::Success;
}

std::uint32_t Memory::word(std::uint32_t address) const
{
    return m_registers.at(address).value;
}

void Memory::setWord(std::uint32_t address, std::uint32_t value)
{
    m_registers.at(address).value = value;
}

void Memory::setBytes(std::uint32_t address, base::ByteView bytes)
{
    for (std::size_t done = 0; done < bytes.size(); done += 4)
        setWord(static_cast<std::uint32_t>(address + done), base::readU32(bytes, done));
}

bool Memory::isInFile(std::uint32_t address) const
{
    return m_file && address >= m_fileAddress && address - m_fileAddress < m_file->size();
}

} // namespace simulator
