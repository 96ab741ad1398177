// SPDX-License-Identifier: Apache-2.0
#include "genapi/DescriptionUnpacker.h"

#include "genapi/Refusal.h"

#include <memory>
#include <zip.h>

using namespace std::string_literals;

namespace genapi {
namespace {

struct Closer
{
    void operator()(zip_t* archive) const { zip_discard(archive); }
    void operator()(zip_file_t* file) const { zip_fclose(file); }
};

/// What libzip writes an error to.
struct ZipError
{
    ZipError() { zip_error_init(&error); }
    ZipError(const ZipError&) = delete;
    ZipError& operator=(const ZipError&) = delete;
    ~ZipError() { zip_error_fini(&error); }

    zip_error_t error{};
};

[[noreturn]] void refuseZip(zip_error_t* error)
{
    refuseDescription("its zip is damaged ("s + zip_error_strerror(error) + ")");
}

std::unique_ptr<zip_t, Closer> openZip(std::string_view data)
{
    ZipError status;
    zip_source_t* source = zip_source_buffer_create(data.data(), data.size(), 0, &status.error);
    if (!source)
        refuseZip(&status.error);
    std::unique_ptr<zip_t, Closer> archive(zip_open_from_source(source, ZIP_RDONLY, &status.error));
    if (!archive) {
        zip_source_free(source); // An opened archive would own it.
        refuseZip(&status.error);
    }
    return archive;
}

void checkEntry(const zip_stat_t& entry)
{
    const std::string_view name = entry.name ? entry.name : "";
    if (name.empty() || name.find_first_of("/\\") != name.npos || name == "..")
        refuseDescription("the file in its zip has a folder in its name");
    if ((entry.valid & ZIP_STAT_ENCRYPTION_METHOD) != 0 && entry.encryption_method != ZIP_EM_NONE)
        refuseDescription("its zip is encrypted");
    if ((entry.valid & ZIP_STAT_SIZE) == 0 || entry.size > MaxDescriptionSize)
        refuseDescription("its zip holds more than " + std::to_string(MaxDescriptionSize) + " bytes");
}

std::string unpackZip(std::string_view data)
{
    const auto archive = openZip(data);
    if (const auto count = zip_get_num_entries(archive.get(), 0); count != 1)
        refuseDescription("its zip holds " + std::to_string(count) + " files instead of one");
    zip_stat_t entry;
    zip_stat_init(&entry);
    if (zip_stat_index(archive.get(), 0, ZIP_FL_ENC_RAW, &entry) != 0)
        refuseZip(zip_get_error(archive.get()));
    checkEntry(entry);

    const std::unique_ptr<zip_file_t, Closer> file(zip_fopen_index(archive.get(), 0, 0));
    if (!file)
        refuseZip(zip_get_error(archive.get()));
    // One byte more than announced is asked for: only that read meets the end, where the checksum is
    // compared.
    std::string text(entry.size + 1, '\0');
    std::size_t size = 0;
    while (size < text.size()) {
        const auto count = zip_fread(file.get(), text.data() + size, text.size() - size);
        if (count < 0)
            refuseZip(zip_file_get_error(file.get()));
        if (count == 0)
            break;
        size += static_cast<std::size_t>(count);
    }
    if (size != entry.size)
        refuseDescription("its zip holds another number of bytes than it says");
    text.resize(size);
    return text;
}

} // namespace

std::string unpackDescription(std::string_view data)
{
    if (data.starts_with("PK\x03\x04"))
        return unpackZip(data);
    if (data.size() > MaxDescriptionSize)
        refuseDescription("it has more than " + std::to_string(MaxDescriptionSize) + " bytes");
    return std::string(data);
}

} // namespace genapi
