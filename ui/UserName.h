// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

/// A camera keeps 15 bytes of a name. A longer one (in UTF-8) loses the rest, and what is left is read as
/// Latin-1, whatever it was.
QString CutUserName(const QString& strName);
