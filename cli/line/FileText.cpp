// SPDX-License-Identifier: Apache-2.0
#include "cli/line/FileText.h"

#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <memory>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace cli {
namespace {

[[noreturn]] void fail(const std::string& what)
{
    throw std::system_error(errno, std::generic_category(), what);
}

std::string realPath(const std::string& path)
{
    const std::unique_ptr<char, decltype(&std::free)> real(::realpath(path.c_str(), nullptr), &std::free);
    if (!real)
        fail(path);
    return real.get();
}

std::string folderOf(const std::string& realPath)
{
    return realPath.substr(0, realPath.rfind('/') + 1);
}

} // namespace

std::string readText(const std::string& path, std::size_t limit)
{
    const base::FileDescriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
    if (!file)
        fail(path);
    std::string text(limit, '\0');
    std::size_t length = 0;
    while (length < limit) {
        const ssize_t count = ::read(file.get(), text.data() + length, limit - length);
        if (count == -1 && errno == EINTR)
            continue;
        if (count == -1)
            fail(path);
        if (count == 0)
            break;
        length += static_cast<std::size_t>(count);
    }
    text.resize(length);
    return text;
}

// Once the other constructor is through, the destructor removes what this one leaves.
FileReplacement::FileReplacement(const std::string& path) : FileReplacement()
{
    m_path = realPath(path);
    // Whoever may write into the folder could replace a file that he may not write.
    struct stat old
    {};
    if (::access(m_path.c_str(), W_OK) != 0 || ::stat(m_path.c_str(), &old) != 0)
        fail(m_path);
    if (!S_ISREG(old.st_mode))
        throw std::system_error(std::make_error_code(std::errc::invalid_argument), m_path);
    std::string name = folderOf(m_path) + ".ip-configurator-XXXXXX";
    m_file = base::FileDescriptor(::mkostemp(name.data(), O_CLOEXEC));
    if (!m_file)
        fail("a file in " + folderOf(m_path));
    m_new = name;
    if (::fchown(m_file.get(), old.st_uid, old.st_gid) != 0 && errno != EPERM)
        fail(m_path);
    if (::fchmod(m_file.get(), old.st_mode & 07777) != 0)
        fail(m_path);
}

FileReplacement::~FileReplacement()
{
    if (!m_new.empty())
        ::unlink(m_new.c_str());
}

void FileReplacement::commit(std::string_view text)
{
    while (!text.empty()) {
        const ssize_t count = ::write(m_file.get(), text.data(), text.size());
        if (count == -1 && errno == EINTR)
            continue;
        if (count == -1)
            fail(m_path);
        text.remove_prefix(static_cast<std::size_t>(count));
    }
    if (::fsync(m_file.get()) != 0 || ::rename(m_new.c_str(), m_path.c_str()) != 0)
        fail(m_path);
    m_new.clear();
    const base::FileDescriptor folder(::open(folderOf(m_path).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (folder)
        ::fsync(folder.get());
}

} // namespace cli
