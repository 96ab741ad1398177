// SPDX-License-Identifier: Apache-2.0
#include "simulator/config/ReadDescription.h"

#include "base/Zip.h"
#include "simulator/config/BuiltInDescription.h"
#include "simulator/config/HexText.h"

#include <fstream>
#include <iterator>

namespace simulator {

namespace {

namespace fs = std::filesystem;

constexpr char UsualUrl[] = "Local:{name};{address};{length}";

constexpr std::pair<const char*, DescribedFeature> Features[] = {
    {"DeviceUserID", DescribedFeature::UserName},
    {"DeviceReset", DescribedFeature::Reset},
    {"GevCurrentIPConfigurationPersistentIP", DescribedFeature::PersistentIpMode},
    {"GevCurrentIPConfigurationDHCP", DescribedFeature::DhcpMode},
    {"GevPersistentIPAddress", DescribedFeature::PersistentAddress},
};

DescriptionFile readFile(JsonObject& object, const std::string& text, const fs::path& directory)
{
    const fs::path path = directory / text;
    // A directory's bytes cannot be read, and a device's may have no end.
    std::error_code error;
    if (!fs::is_regular_file(path, error))
        object.fail("description", "cannot be read: " + path.string() + " is no file");
    std::ifstream stream(path, std::ios::binary);
    DescriptionFile file{path.filename().string(), {std::istreambuf_iterator<char>(stream), {}}};
    if (!stream)
        object.fail("description", "cannot be read: " + path.string());
    if (file.bytes.empty() || file.bytes.size() > CameraConfig::MaxDescriptionSize)
        object.fail("description", "must name a file of 1 byte to 16 MiB: " + path.string());
    return file;
}

std::string filledIn(std::string url, const std::string& name, std::size_t length)
{
    const std::pair<const char*, std::string> blanks[] = {
        {"{name}", name},
        {"{address}", hexNumber(CameraConfig::DescriptionAddress, Digits::LowerCase)},
        {"{ADDRESS}", hexNumber(CameraConfig::DescriptionAddress, Digits::UpperCase)},
        {"{length}", hexNumber(length, Digits::LowerCase)},
        {"{LENGTH}", hexNumber(length, Digits::UpperCase)},
    };
    for (const auto& [blank, text] : blanks)
        if (const std::size_t at = url.find(blank); at != std::string::npos)
            url.replace(at, std::string(blank).size(), text);
    return url;
}

} // namespace

void readDescription(JsonObject& object, const fs::path& directory, CameraConfig& camera)
{
    const auto path = object.text("description", 4096);
    const bool isToBeZipped = object.flag("descriptionZip").value_or(false);
    const auto missing = object.choices<DescribedFeature>("descriptionLeavesOut", Features);
    const std::string url = object.text("url", gvcp::reg::FirstDescriptionUrl.size).value_or(UsualUrl);
    const std::string secondUrl = object.text("secondUrl", gvcp::reg::SecondDescriptionUrl.size).value_or("");
    if (path && !missing.empty())
        object.fail("descriptionLeavesOut", "is about the built-in description, not about a file");

    DescriptionFile file =
        path ? readFile(object, *path, directory) : builtInDescription(missing, camera.resetRegister);
    if (isToBeZipped && !base::isZip(file.bytes))
        file = file.zipped();
    camera.description.url = filledIn(url, file.name, file.bytes.size());
    camera.description.secondUrl = filledIn(secondUrl, file.name, file.bytes.size());
    for (const std::string* const each : {&camera.description.url, &camera.description.secondUrl})
        if (each->size() > gvcp::reg::FirstDescriptionUrl.size)
            object.fail("url", "is too long when it is filled in: " + *each);
    file.bytes.resize((file.bytes.size() + 3) / 4 * 4);
    camera.description.file = std::make_shared<const base::Bytes>(std::move(file.bytes));
}

} // namespace simulator
