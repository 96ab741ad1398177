// SPDX-License-Identifier: Apache-2.0
#include "simulator/config/DescriptionFile.h"

#include <filesystem>
#include <memory>
#include <stdexcept>
#include <zip.h>

namespace simulator {

namespace {

struct SourceFree
{
    void operator()(zip_source_t* source) const { zip_source_free(source); }
};
struct Discard
{
    void operator()(zip_t* archive) const { zip_discard(archive); }
};
using Source = std::unique_ptr<zip_source_t, SourceFree>;
using Archive = std::unique_ptr<zip_t, Discard>;

void require(bool isDone)
{
    if (!isDone)
        throw std::runtime_error("cannot make a zip archive");
}

base::Bytes readAll(zip_source_t* source)
{
    zip_stat_t state;
    require(zip_source_stat(source, &state) == 0 && zip_source_open(source) == 0);
    base::Bytes bytes(state.size);
    const auto size = zip_source_read(source, bytes.data(), bytes.size());
    zip_source_close(source);
    require(size == static_cast<zip_int64_t>(bytes.size()));
    return bytes;
}

} // namespace

DescriptionFile DescriptionFile::zipped() const
{
    const Source target(zip_source_buffer_create(nullptr, 0, 0, nullptr));
    require(target != nullptr);
    Archive archive(zip_open_from_source(target.get(), ZIP_TRUNCATE, nullptr));
    require(archive != nullptr);
    zip_source_keep(target.get()); // The archive has taken it over; its bytes are wanted afterwards.

    Source contents(zip_source_buffer(archive.get(), bytes.data(), bytes.size(), 0));
    require(contents && zip_file_add(archive.get(), name.c_str(), contents.get(), ZIP_FL_ENC_UTF_8) >= 0);
    [[maybe_unused]] zip_source_t* const owned = contents.release(); // by the archive
    require(zip_close(archive.get()) == 0);
    [[maybe_unused]] zip_t* const closed = archive.release();
    return {std::filesystem::path(name).replace_extension(".zip").string(), readAll(target.get())};
}

} // namespace simulator
