// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tests/support/InstalledTranslator.h"

/// Puts every text in angle brackets, as long as it lives. Needs an application object.
struct MarkingTranslator : InstalledTranslator
{
    MarkingTranslator()
        : InstalledTranslator([](const QString&, const QString& text) { return "<" + text + ">"; })
    {}
};
