// SPDX-License-Identifier: Apache-2.0
#include "tests/sdk/Zip.h"

#include <stdexcept>
#include <zip.h>

gvcp::Bytes zipped(const std::vector<ArchivedText>& files)
{
    zip_source_t* const target = zip_source_buffer_create(nullptr, 0, 0, nullptr);
    zip_source_keep(target);
    zip_t* const archive = zip_open_from_source(target, ZIP_TRUNCATE, nullptr);
    for (const ArchivedText& file : files) {
        zip_source_t* const content = zip_source_buffer(archive, file.content.data(), file.content.size(), 0);
        if (zip_file_add(archive, file.name.c_str(), content, 0) < 0)
            throw std::runtime_error(zip_strerror(archive));
    }
    if (zip_close(archive) != 0)
        throw std::runtime_error(zip_strerror(archive));

    zip_source_open(target);
    zip_stat_t about;
    zip_source_stat(target, &about);
    gvcp::Bytes bytes(about.size);
    const auto size = zip_source_read(target, bytes.data(), bytes.size());
    zip_source_close(target);
    zip_source_free(target);
    if (size != static_cast<zip_int64_t>(bytes.size()))
        throw std::runtime_error("cannot read the archive back");
    return bytes;
}
