// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QTranslator>

/// The program's own texts in Chinese. The texts in the sources are English.
extern QTranslator m_translator;
/// The Chinese texts of Qt's own widgets.
extern QTranslator m_translatorSystem;

// A language is a number: 1 is Chinese, 0 English. Its files lie beside the program. All of it on the main
// thread, while the application object exists.

/// Reads the language that LangConfig.ini asks for (section Common, key Language); English without the file
/// or the key. True unless it could not be read.
bool GetCurLanguageVersion(int& language);

/// Loads both translations and installs (1) or removes (0) both; any other language leaves the installed ones
/// as they are. Gives 1, or 0 when a file is missing or broken, and then installs and removes nothing.
int SetLanguageVersion(int language);
