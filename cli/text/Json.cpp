// SPDX-License-Identifier: Apache-2.0
#include "cli/text/Json.h"

namespace cli {
namespace {

std::string text(const Json& json, int indentation)
{
    return json.dump(indentation, ' ', true, Json::error_handler_t::replace) + '\n';
}

} // namespace

Json orNull(const std::string& text)
{
    return text.empty() ? Json() : Json(text);
}

std::string jsonText(const Json& json)
{
    return text(json, 2);
}

std::string jsonLine(const Json& json)
{
    return text(json, -1);
}

} // namespace cli
