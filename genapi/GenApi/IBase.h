// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace GenApi {

/// What may be done with a node or a port now, as SFNC and GenApi name it.
enum EAccessMode
{
    NI,
    NA,
    WO,
    RO,
    RW
};

/// The root of all interfaces: an object is asked for another of its interfaces by dynamic_cast through this.
struct __attribute__((visibility("default"))) IBase
{
    virtual ~IBase() = default;

    virtual EAccessMode GetAccessMode() const = 0;
};

} // namespace GenApi
