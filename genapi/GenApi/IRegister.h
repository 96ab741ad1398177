// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "genapi/GenApi/IBase.h"

#include <cstdint>

namespace GenApi {

/// Bytes as they stand in the camera. Both transfers take the whole register: any other Length is an
/// InvalidArgumentException. They throw a GenICam::GenericException when the camera does not do it; with
/// Verify, Set throws an AccessException when the register may not be written now.
struct __attribute__((visibility("default"))) IRegister : virtual IBase
{
    virtual void Set(const uint8_t* pBuffer, int64_t Length, bool Verify = true) = 0;
    virtual void Get(uint8_t* pBuffer, int64_t Length) const = 0;
    virtual int64_t GetLength() const = 0; ///< In bytes.
};

} // namespace GenApi
