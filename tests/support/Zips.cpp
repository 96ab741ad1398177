// SPDX-License-Identifier: Apache-2.0
#include "tests/support/Zips.h"

#include <stdexcept>
#include <zip.h>

std::string zipOf(const std::vector<std::pair<std::string, std::string>>& files, bool isEncrypted)
{
    zip_source_t* target = zip_source_buffer_create(nullptr, 0, 0, nullptr);
    zip_source_keep(target);
    zip_t* archive = zip_open_from_source(target, ZIP_CREATE | ZIP_TRUNCATE, nullptr);
    for (const auto& [name, content] : files) {
        zip_source_t* source = zip_source_buffer(archive, content.data(), content.size(), 0);
        const auto index = static_cast<zip_uint64_t>(zip_file_add(archive, name.c_str(), source, 0));
        if (isEncrypted)
            zip_file_set_encryption(archive, index, ZIP_EM_AES_256, "secret");
    }
    if (zip_close(archive) != 0)
        throw std::runtime_error("no zip made");
    zip_stat_t status;
    zip_stat_init(&status);
    zip_source_stat(target, &status);
    std::string data(status.size, '\0');
    zip_source_open(target);
    zip_source_read(target, data.data(), data.size());
    zip_source_close(target);
    zip_source_free(target);
    return data;
}
