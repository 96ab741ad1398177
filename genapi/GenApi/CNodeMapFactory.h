// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "genapi/GenApi/INodeMap.h"

#include <cstddef>
#include <memory>
#include <string>

namespace GenApi {

enum EContentType_t
{
    ContentType_Xml = 0 ///< Plain or zipped: the first bytes tell.
};

enum ECacheUsage_t
{
    CacheUsage_Automatic = 0 ///< Nothing is cached: every read asks the camera.
};

/// Makes node maps of a camera's description, which may be anything at all: what is no good description, or
/// could harm this process, throws a GenICam::RuntimeException that says why.
class CNodeMapFactory
{
public:
    /// Unpacks where need be and copies, so that the data may go afterwards. Texts for people (tooltips and
    /// the like) are never loaded.
    CNodeMapFactory(EContentType_t ContentType, const void* pData, std::size_t Size,
                    ECacheUsage_t CacheUsage = CacheUsage_Automatic, bool SuppressStringsOnLoad = false);

    /// With DestroyDescription the copy goes to the map's making, and the factory can make no other.
    std::unique_ptr<INodeMap> CreateNodeMap(const GenICam::gcstring& DeviceName = "Device",
                                            bool DestroyDescription = true);

private:
    std::string m_text;
};

} // namespace GenApi
