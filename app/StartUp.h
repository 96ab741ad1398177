// SPDX-License-Identifier: Apache-2.0
#pragma once

class QString;

// The steps between the application object and its window. All of it on the main thread.

/// Makes the font in the file the application's, at 13 points; without it, the family "Segoe UI" or what
/// stands in for it on this host, at the host's size. Tells the debug log which of the two.
void InstallApplicationFont(const QString& strFile);

/// Chinese or English, as LangConfig.ini says and, over it, the first argument: CH or ENG.
void ChooseLanguage(int argc, const char* const* argv);

/// Lets Qt look for plug-ins in the folder "plugins" of the working directory too. It sets no codec.
void InitializeCodec();
