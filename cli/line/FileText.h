// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "base/FileDescriptor.h"

#include <string>
#include <string_view>

namespace cli {

/// The file's first bytes, `limit` of them at most. Throws std::system_error.
std::string readText(const std::string& path, std::size_t limit);

/// Puts another text into a file, in one step: whoever reads it has the old one or the new one, also after a
/// power cut. It keeps its mode, and its owner where the user may say so; a symbolic link goes on pointing to
/// it.
class FileReplacement
{
public:
    /// Makes the file that is to take its place, so that what can fail does so now. Throws
    /// std::system_error.
    explicit FileReplacement(const std::string& path);
    FileReplacement(const FileReplacement&) = delete;
    FileReplacement& operator=(const FileReplacement&) = delete;
    /// Without commit() nothing has happened.
    ~FileReplacement();

    /// Once. Throws std::system_error; then the file is as it was.
    void commit(std::string_view text);

private:
    FileReplacement() = default;

    std::string m_path; ///< Of the file itself, whatever links lead there.
    std::string m_new;  ///< Empty when there is none left.
    base::FileDescriptor m_file;
};

} // namespace cli
