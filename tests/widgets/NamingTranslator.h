// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tests/support/InstalledTranslator.h"

/// While it lives, every text is translated: into the context that it was asked for in, and itself.
struct NamingTranslator : InstalledTranslator
{
    NamingTranslator()
        : InstalledTranslator(
              [](const QString& context, const QString& text) { return context + ": " + text; })
    {}
};
