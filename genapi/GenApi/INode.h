// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "genapi/Base/GCString.h"
#include "genapi/GenApi/IBase.h"

namespace GenApi {

/// A feature of the camera or a part of one. Belongs to its node map; used on one thread at a time.
///
/// GetAccessMode asks the camera where locks and availability depend on it, and throws as all access does.
struct __attribute__((visibility("default"))) INode : virtual IBase
{
    virtual GenICam::gcstring GetName() const = 0;
};

} // namespace GenApi
