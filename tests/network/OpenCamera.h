// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "genapi/GenApi/IPort.h"
#include "sdk/RzCameraSdk.h"
#include "tests/network/Site.h"

#include <string>

/// A handle that a program on the site's host has opened, until the end of the scope.
class OpenCamera
{
public:
    OpenCamera(const Site& site, const RZ_CC_DEVICE_INFO& camera);
    OpenCamera(const OpenCamera&) = delete;
    OpenCamera& operator=(const OpenCamera&) = delete;
    ~OpenCamera();

    /// What opening it gave.
    int result() const { return m_result; }
    void* handle() const { return m_handle; }
    GenApi::IPort* port() const;

    /// Fails the test when there is none.
    std::string description() const;
    int descriptionResult() const;

    /// A register as the camera's big-endian number; the port's exceptions pass.
    unsigned read(unsigned address) const;
    void write(unsigned address, unsigned value) const;

private:
    void* m_handle = nullptr;
    int m_result = -1;
};
