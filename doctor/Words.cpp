// SPDX-License-Identifier: Apache-2.0
#include "doctor/Words.h"

namespace doctor {

std::string nameOf(const inventory::Camera& camera)
{
    const std::string mac = camera.mac.toText();
    return camera.model.empty() ? mac : camera.model + " (" + mac + ")";
}

std::string textOf(const base::IpSettings& settings)
{
    const std::string text = settings.address.toText() + ", mask " + settings.mask.toText();
    return settings.gateway.isUnspecified() ? text : text + ", gateway " + settings.gateway.toText();
}

std::string listed(const std::vector<std::string>& words)
{
    constexpr std::size_t enough = 8;
    std::string text;
    for (std::size_t i = 0; i < words.size(); ++i) {
        // The last of a list is not worth less than its number.
        if (i == enough && words.size() > enough + 1)
            return text + " ... (+" + std::to_string(words.size() - enough) + ")";
        text += (i == 0 ? "" : ", ") + words[i];
    }
    return text;
}

std::string quoted(const std::string& word)
{
    constexpr const char* plain = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789/._-+=:";
    if (!word.empty() && word.find_first_not_of(plain) == std::string::npos)
        return word;
    std::string result = "'";
    for (const char each : word)
        result += each == '\'' ? std::string("'\\''") : std::string(1, each);
    return result + "'";
}

} // namespace doctor
