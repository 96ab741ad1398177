// SPDX-License-Identifier: Apache-2.0
// What the headers that the tests share are compiled with (tests/CMakeLists.txt).
