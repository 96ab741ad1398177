// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "genapi/GenApi/IBase.h"

#include <cstdint>

namespace GenApi {

/// A number. Throws a GenICam::GenericException when the camera does not do it; with Verify, an
/// AccessException when the number may not be set now, and an OutOfRangeException unless it is within bounds,
/// a multiple of the increment above the lower one.
struct __attribute__((visibility("default"))) IInteger : virtual IBase
{
    virtual void SetValue(int64_t Value, bool Verify = true) = 0;
    virtual int64_t GetValue() const = 0;
    virtual int64_t GetMin() const = 0;
    virtual int64_t GetMax() const = 0;
    virtual int64_t GetInc() const = 0;
};

} // namespace GenApi
