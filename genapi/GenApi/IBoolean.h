// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "genapi/GenApi/IBase.h"

namespace GenApi {

/// A switch. Throws a GenICam::GenericException when the camera does not do it; with Verify, an
/// AccessException when the switch may not be set now.
struct __attribute__((visibility("default"))) IBoolean : virtual IBase
{
    virtual void SetValue(bool Value, bool Verify = true) = 0;
    virtual bool GetValue() const = 0;
};

} // namespace GenApi
