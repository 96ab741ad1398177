// SPDX-License-Identifier: Apache-2.0
#include "genapi/GenApi/CNodeMapFactory.h"

#include "base/CancellationHold.h"
#include "genapi/DescriptionUnpacker.h"
#include "genapi/NodeMap.h"

namespace GenApi {

CNodeMapFactory::CNodeMapFactory(EContentType_t, const void* pData, std::size_t Size, ECacheUsage_t, bool)
{
    const base::CancellationHold hold;
    m_text = genapi::unpackDescription({static_cast<const char*>(pData), Size});
}

std::unique_ptr<INodeMap> CNodeMapFactory::CreateNodeMap(const GenICam::gcstring& DeviceName,
                                                         bool DestroyDescription)
{
    return std::make_unique<genapi::NodeMap>(DeviceName,
                                             DestroyDescription ? std::exchange(m_text, {}) : m_text);
}

} // namespace GenApi
