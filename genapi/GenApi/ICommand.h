// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "genapi/GenApi/IBase.h"

namespace GenApi {

/// Something the camera can be told to do. Execute does not wait for the camera to finish; it throws a
/// GenICam::GenericException when the camera did not take the command; with Verify, an AccessException when
/// it may not be given now.
struct __attribute__((visibility("default"))) ICommand : virtual IBase
{
    virtual void Execute(bool Verify = true) = 0;
};

} // namespace GenApi
