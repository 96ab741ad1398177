// SPDX-License-Identifier: Apache-2.0
#pragma once

class QString;

/// "a.b.c.d" as a number of 32 bits with their sign extended: from 128.0.0.0 on, the upper half is all ones.
/// A part that is no number counts 0, one above 255 spills over. False, and no value, without exactly four
/// parts.
bool DottedToDword(const QString& strText, unsigned long& nValue);
