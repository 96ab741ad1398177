// SPDX-License-Identifier: Apache-2.0
#include "base/Zip.h"

#include <array>
#include <memory>
#include <zip.h>

namespace base {

namespace {

using Archive = std::unique_ptr<zip_t, decltype(&zip_discard)>;
using ArchivedFile = std::unique_ptr<zip_file_t, decltype(&zip_fclose)>;

/// What libzip writes an error to.
struct ZipError
{
    ZipError() { zip_error_init(&error); }
    ZipError(const ZipError&) = delete;
    ZipError& operator=(const ZipError&) = delete;
    ~ZipError() { zip_error_fini(&error); }

    zip_error_t error{};
};

std::string damage(zip_error_t* error)
{
    return std::string("is damaged (") + zip_error_strerror(error) + ")";
}

Archive openArchive(ByteView bytes, zip_error_t* error)
{
    zip_source_t* const source = zip_source_buffer_create(bytes.data(), bytes.size(), 0, error);
    if (!source)
        return {nullptr, &zip_discard};
    Archive archive(zip_open_from_source(source, ZIP_RDONLY, error), &zip_discard);
    // The source became the archive's only if there is one.
    if (!archive)
        zip_source_free(source);
    return archive;
}

/// Reads up to the end, where libzip compares the checksum. Returns the fault.
std::string readAll(zip_t* archive, std::size_t maxSize, Bytes& content)
{
    const ArchivedFile file(zip_fopen_index(archive, 0, 0), &zip_fclose);
    if (!file)
        return damage(zip_get_error(archive));
    std::array<std::uint8_t, 65536> block;
    for (;;) {
        const zip_int64_t size = zip_fread(file.get(), block.data(), block.size());
        if (size < 0)
            return damage(zip_file_get_error(file.get()));
        if (size == 0)
            return {};
        if (content.size() + static_cast<std::size_t>(size) > maxSize)
            return "holds more than " + std::to_string(maxSize) + " bytes";
        content.insert(content.end(), block.begin(), block.begin() + size);
    }
}

/// Returns the fault.
std::string unpack(ByteView bytes, std::size_t maxSize, Unzipped& result)
{
    ZipError status;
    const Archive archive = openArchive(bytes, &status.error);
    if (!archive)
        return damage(&status.error);
    result.fileCount = static_cast<std::uint64_t>(zip_get_num_entries(archive.get(), 0));
    if (result.fileCount == 0)
        return "holds no file";
    zip_stat_t entry;
    zip_stat_init(&entry);
    if (zip_stat_index(archive.get(), 0, ZIP_FL_ENC_RAW, &entry) != 0)
        return damage(zip_get_error(archive.get()));
    result.name = entry.name ? entry.name : "";
    if ((entry.valid & ZIP_STAT_ENCRYPTION_METHOD) != 0 && entry.encryption_method != ZIP_EM_NONE)
        return "is encrypted";
    if (std::string fault = readAll(archive.get(), maxSize, result.content); !fault.empty())
        return fault;
    const bool isAsSaid = (entry.valid & ZIP_STAT_SIZE) != 0 && entry.size == result.content.size();
    return isAsSaid ? "" : "holds another number of bytes than it says";
}

} // namespace

bool isZip(ByteView file)
{
    constexpr std::array<std::uint8_t, 4> Mark{'P', 'K', 3, 4};
    return file.size() >= Mark.size() && std::equal(Mark.begin(), Mark.end(), file.begin());
}

Unzipped unzip(ByteView archive, std::size_t maxSize)
{
    Unzipped result;
    result.fault = unpack(archive, maxSize, result);
    if (!result.fault.empty())
        result.content.clear();
    return result;
}

} // namespace base
