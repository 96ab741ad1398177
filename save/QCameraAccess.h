// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdlib>
#include <memory>

struct RZ_CC_DEVICE_INFO;

namespace GenApi {
class CNodeMapRef;
}

/// One camera at a time: the SDK's handle on it and, once it is loaded, its node map. Both are given back by
/// Release() or at the latest by the destructor.
///
/// One thread at a time.
class QCameraAccess
{
public:
    QCameraAccess();
    QCameraAccess(const QCameraAccess&) = delete;
    QCameraAccess& operator=(const QCameraAccess&) = delete;
    ~QCameraAccess();

    /// Makes a handle on this camera, in place of one that is still there. False for a null record, or when
    /// the SDK gives none.
    bool Create(const RZ_CC_DEVICE_INFO* pDeviceInfo);

    /// Gives the handle back, should there be one.
    void Destroy();

    /// Opens the camera exclusively and makes its node map from its own description. False on any failure,
    /// with a line on the debug output; what is made by then stays until Release().
    bool Load();

    /// Gives the handle back and deletes the node map. May be called at any time.
    void Release();

    /// The SDK's; null when there is none.
    void* GetHandle() const { return m_pHandle; }

    /// Null when there is none.
    GenApi::CNodeMapRef* GetNodeMap() const { return m_pNodeMap.get(); }

private:
    struct Freer
    {
        void operator()(unsigned char* pchBuffer) const { std::free(pchBuffer); }
    };

    void* m_pHandle = nullptr;
    std::unique_ptr<GenApi::CNodeMapRef> m_pNodeMap;
    std::unique_ptr<unsigned char, Freer> m_pchXMLBuf; ///< For the description; null if there was no memory.
};
