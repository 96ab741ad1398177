// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "genapi/Base/GCException.h"
#include "genapi/GenApi/IBase.h"

#include <cstdint>

namespace GenApi {

/// A camera's registers as a node map reaches them: any address, any length above 0. Both calls throw a
/// GenICam::GenericException whose text names address and cause when the camera did not do it.
struct __attribute__((visibility("default"))) IPort : virtual IBase
{
    virtual void Read(void* pBuffer, int64_t Address, int64_t Length) = 0;
    virtual void Write(const void* pBuffer, int64_t Address, int64_t Length) = 0;
};

} // namespace GenApi
