// SPDX-License-Identifier: Apache-2.0
#include "save/ErrorText.h"

#include <algorithm>
#include <cstdarg>
#include <cstdio>

void ErrorText::Format(const char* pchFormat, ...)
{
    std::fill_n(m_chText, Size, '\0');
    va_list arguments;
    va_start(arguments, pchFormat);
    std::vsnprintf(m_chText, Size, pchFormat, arguments);
    va_end(arguments);
}
