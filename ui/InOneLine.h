// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

/// The text with a blank for each character that would begin another line or jump to a tabulator.
QString InOneLine(QString strText);
