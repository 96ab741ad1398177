// SPDX-License-Identifier: Apache-2.0
#include "genapi/DescriptionUnpacker.h"

#include "base/Zip.h"
#include "genapi/Refusal.h"

namespace genapi {
namespace {

base::ByteView bytesOf(std::string_view data)
{
    return {reinterpret_cast<const std::uint8_t*>(data.data()), data.size()};
}

std::string unpackZip(base::ByteView data)
{
    const base::Unzipped file = base::unzip(data, MaxDescriptionSize);
    if (!file.fault.empty())
        refuseDescription("its zip " + file.fault);
    if (file.fileCount != 1)
        refuseDescription("its zip holds " + std::to_string(file.fileCount) + " files instead of one");
    if (file.name.empty() || file.name.find_first_of("/\\") != file.name.npos || file.name == "..")
        refuseDescription("the file in its zip has a folder in its name");
    return {file.content.begin(), file.content.end()};
}

} // namespace

std::string unpackDescription(std::string_view data)
{
    if (base::isZip(bytesOf(data)))
        return unpackZip(bytesOf(data));
    if (data.size() > MaxDescriptionSize)
        refuseDescription("it has more than " + std::to_string(MaxDescriptionSize) + " bytes");
    return std::string(data);
}

} // namespace genapi
