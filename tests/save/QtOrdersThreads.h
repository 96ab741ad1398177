// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gtest/gtest.h>

/// For tests in which one save's thread comes after another's by Qt's mutexes alone.
#ifdef __SANITIZE_THREAD__
#define SKIP_WHERE_QT_ORDERS_THREADS() GTEST_SKIP() << "thread sanitizer does not see what Qt locks"
#else
#define SKIP_WHERE_QT_ORDERS_THREADS()
#endif
