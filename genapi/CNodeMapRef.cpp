// SPDX-License-Identifier: Apache-2.0
#include "genapi/GenApi/CNodeMapRef.h"

#include "genapi/Base/GCException.h"
#include "genapi/GenApi/CNodeMapFactory.h"

namespace GenApi {

CNodeMapRef::CNodeMapRef(const GenICam::gcstring& DeviceName) : m_deviceName(DeviceName) {}

CNodeMapRef::~CNodeMapRef() = default;

void CNodeMapRef::_LoadXMLFromString(const GenICam::gcstring& XMLData)
{
    if (m_nodeMap)
        throw GenICam::RuntimeException("Node map already created", __FILE_NAME__, __LINE__);
    CNodeMapFactory factory(ContentType_Xml, XMLData.c_str(), XMLData.size());
    m_nodeMap = factory.CreateNodeMap(m_deviceName);
}

void CNodeMapRef::_Connect(IPort* pPort, const GenICam::gcstring& PortName)
{
    if (!m_nodeMap)
        throw GenICam::RuntimeException("There is no node map to connect the camera to.", __FILE_NAME__,
                                        __LINE__);
    m_nodeMap->Connect(pPort, PortName);
}

INode* CNodeMapRef::_GetNode(const GenICam::gcstring& Name) const
{
    return m_nodeMap ? m_nodeMap->GetNode(Name) : nullptr;
}

} // namespace GenApi
