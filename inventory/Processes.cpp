// SPDX-License-Identifier: Apache-2.0
#include "inventory/Processes.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <fstream>
#include <pwd.h>
#include <sstream>
#include <string_view>
#include <system_error>

namespace inventory {
namespace {

namespace fs = std::filesystem;

/// Longer ones tell nobody more.
constexpr std::size_t MaxCommandLine = 4096;

std::string readUpTo(const fs::path& path, std::size_t size)
{
    std::string text(size, '\0');
    std::ifstream file(path, std::ios::binary);
    file.read(text.data(), static_cast<std::streamsize>(size));
    text.resize(static_cast<std::size_t>(file.gcount()));
    return text;
}

/// The whole text as a number.
template <typename Number>
std::optional<Number> number(std::string_view text)
{
    Number value{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    return error == std::errc() && end == text.data() + text.size() ? std::optional(value) : std::nullopt;
}

/// "socket:[4026]" is the socket 4026.
std::optional<std::uint64_t> socketOf(const std::string& link)
{
    constexpr std::string_view prefix = "socket:[";
    if (!link.starts_with(prefix) || !link.ends_with(']'))
        return std::nullopt;
    return number<std::uint64_t>(
        std::string_view(link).substr(prefix.size(), link.size() - prefix.size() - 1));
}

} // namespace

std::string userName(unsigned userId)
{
    std::array<char, 4096> buffer{};
    passwd entry{};
    passwd* found = nullptr;
    if (::getpwuid_r(userId, &entry, buffer.data(), buffer.size(), &found) == 0 && found)
        return found->pw_name;
    return std::to_string(userId);
}

std::map<std::uint64_t, std::vector<int>> Processes::bySocket() const
{
    std::map<std::uint64_t, std::vector<int>> result;
    // Processes come and go meanwhile, and most are not this user's: whatever cannot be read is left out.
    std::error_code ignored;
    for (fs::directory_iterator each(m_proc, ignored), end; !ignored && each != end;
         each.increment(ignored)) {
        const auto pid = number<int>(each->path().filename().string());
        if (!pid)
            continue;
        std::error_code unreadable;
        for (fs::directory_iterator file(each->path() / "fd", unreadable); !unreadable && file != end;
             file.increment(unreadable)) {
            std::error_code closed;
            const auto socket = socketOf(fs::read_symlink(file->path(), closed).string());
            if (!socket)
                continue;
            std::vector<int>& owners = result[*socket];
            if (owners.empty() || owners.back() != *pid)
                owners.push_back(*pid);
        }
    }
    return result;
}

std::optional<Process> Processes::process(int pid) const
{
    const std::string user = status(pid, "Uid:");
    if (user.empty())
        return std::nullopt;
    const fs::path directory = m_proc / std::to_string(pid);
    Process process;
    process.pid = pid;
    process.name = readUpTo(directory / "comm", 64);
    if (process.name.ends_with('\n'))
        process.name.pop_back();
    process.user = userName(number<unsigned>(user.substr(0, user.find('\t'))).value_or(0));
    process.commandLine = readUpTo(directory / "cmdline", MaxCommandLine);
    // Each argument ends with a NUL.
    while (process.commandLine.ends_with('\0'))
        process.commandLine.pop_back();
    std::ranges::replace(process.commandLine, '\0', ' ');
    return process;
}

int Processes::parentOf(int pid) const
{
    return number<int>(status(pid, "PPid:")).value_or(0);
}

std::string Processes::status(int pid, const std::string& label) const
{
    std::ifstream file(m_proc / std::to_string(pid) / "status");
    for (std::string line; std::getline(file, line);)
        if (line.starts_with(label))
            return line.substr(std::min(line.size(), label.size() + 1));
    return {};
}

} // namespace inventory
