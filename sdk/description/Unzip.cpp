// SPDX-License-Identifier: Apache-2.0
#include "sdk/description/Unzip.h"

#include <algorithm>
#include <array>
#include <memory>
#include <zip.h>

namespace sdk {

namespace {

using Archive = std::unique_ptr<zip_t, decltype(&zip_discard)>;
using ArchivedFile = std::unique_ptr<zip_file_t, decltype(&zip_fclose)>;

Archive openArchive(base::ByteView bytes)
{
    zip_source_t* const source = zip_source_buffer_create(bytes.data(), bytes.size(), 0, nullptr);
    if (!source)
        return {nullptr, &zip_discard};
    Archive archive(zip_open_from_source(source, ZIP_RDONLY, nullptr), &zip_discard);
    // The source became the archive's only if there is one.
    if (!archive)
        zip_source_free(source);
    return archive;
}

} // namespace

bool isZip(base::ByteView file)
{
    constexpr std::array<std::uint8_t, 4> Mark{'P', 'K', 3, 4};
    return file.size() >= Mark.size() && std::equal(Mark.begin(), Mark.end(), file.begin());
}

std::optional<base::Bytes> unzip(base::ByteView archive, std::size_t maxSize)
{
    const Archive opened = openArchive(archive);
    if (!opened)
        return std::nullopt;
    const ArchivedFile file(zip_fopen_index(opened.get(), 0, 0), &zip_fclose);
    if (!file)
        return std::nullopt;

    base::Bytes content;
    std::array<std::uint8_t, 65536> block;
    for (;;) {
        const zip_int64_t size = zip_fread(file.get(), block.data(), block.size());
        if (size < 0 || content.size() + static_cast<std::size_t>(size) > maxSize)
            return std::nullopt;
        if (size == 0)
            return content;
        content.insert(content.end(), block.begin(), block.begin() + size);
    }
}

} // namespace sdk
