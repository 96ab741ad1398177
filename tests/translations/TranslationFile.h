// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

#include <string>
#include <vector>

/// One text of a translation file.
struct Message
{
    std::string context;
    std::string source;
    std::string translation;
    std::string state; ///< "unfinished", "obsolete", "vanished"; empty when the translation is done.
};

/// All texts of a .ts file; throws std::runtime_error when it cannot be read to its end.
std::vector<Message> readTranslationFile(const QString& path);
