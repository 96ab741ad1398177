// SPDX-License-Identifier: Apache-2.0
#include "save/QCameraAccess.h"

#include "genapi/GenApi/GenApi.h"
#include "save/Termination.h"
#include "sdk/RzCameraSdk.h"

#include <QDebug>

#include <cstring>
#include <cxxabi.h>
#include <utility>

namespace {

constexpr unsigned XmlBufferSize = 3 * 1024 * 1024;
constexpr char DeviceName[] = "Device"; ///< By convention the name of a description's port, too.

} // namespace

QCameraAccess::QCameraAccess() : m_pchXMLBuf(static_cast<unsigned char*>(std::malloc(XmlBufferSize))) {}

QCameraAccess::~QCameraAccess()
{
    // Not Release(): its order is the other way round.
    m_pNodeMap.reset();
    m_pchXMLBuf.reset();
    Destroy();
}

bool QCameraAccess::Create(const RZ_CC_DEVICE_INFO* pDeviceInfo)
{
    if (!pDeviceInfo)
        return false;
    Destroy();
    return RZ_CC_CreateHandle(&m_pHandle, pDeviceInfo) == RZ_OK;
}

void QCameraAccess::Destroy()
{
    if (m_pHandle)
        RZ_CC_DestroyHandle(std::exchange(m_pHandle, nullptr));
}

bool QCameraAccess::Load()
{
    if (!m_pchXMLBuf) {
        qDebug() << "NULL == m_pchXMLBuf";
        return false;
    }
    if (const int nError = RZ_CC_OpenDevice(m_pHandle, RZ_ACCESS_EXCLUSIVE, 0); nError != RZ_OK) {
        qDebug() << "open device fail" << nError;
        return false;
    }
    TerminationPoint();

    std::memset(m_pchXMLBuf.get(), 0, XmlBufferSize);
    unsigned nXmlLength = 0;
    if (RZ_XML_GetGenICamXML(m_pHandle, m_pchXMLBuf.get(), XmlBufferSize, &nXmlLength) != RZ_OK ||
        nXmlLength > XmlBufferSize) {
        qDebug() << "RZ_XML_GetGenICamXML";
        return false;
    }
    TerminationPoint();

    auto* const pPort = static_cast<GenApi::IPort*>(RZ_CC_GetTlProxy(m_pHandle));
    if (!pPort) {
        qDebug() << "RZ_CC_GetTlProxy";
        return false;
    }

    try {
        const GenICam::gcstring xml(reinterpret_cast<const char*>(m_pchXMLBuf.get()), nXmlLength);
        m_pNodeMap = std::make_unique<GenApi::CNodeMapRef>(DeviceName);
        m_pNodeMap->_LoadXMLFromString(xml);
        m_pNodeMap->_Connect(pPort, DeviceName);
    } catch (const abi::__forced_unwind&) {
        throw;
    } catch (...) {
        qDebug() << "catch";
        return false;
    }
    return true;
}

void QCameraAccess::Release()
{
    Destroy();
    m_pNodeMap.reset();
}
