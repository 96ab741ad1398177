// SPDX-License-Identifier: Apache-2.0
#pragma once

/// Gives the families that the windows ask for by name, "Segoe UI" and "FZShuSong-Z01S", a stand-in on a host
/// that lacks them: Open Sans, and Noto Sans CJK SC for Chinese texts, which a text in Open Sans itself gets
/// too. A host that has one of the families shows it. Open Sans comes with the program; without it and
/// without Noto the system chooses.
///
/// Call it once, on the main thread, when the QGuiApplication exists; QFontDatabase::addApplicationFont may
/// come before or after it.
void InstallFontSubstitutes();
