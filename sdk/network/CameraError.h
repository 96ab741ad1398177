// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "gvcp/Packet.h"
#include "sdk/RzCameraSdk.h"

#include <stdexcept>
#include <string>

namespace sdk {

/// What goes wrong with an open camera, as a code and as a sentence. Never leaves the library.
class CameraError : public std::runtime_error
{
public:
    CameraError(RZ_ERROR code, const std::string& sentence) : std::runtime_error(sentence), m_code(code) {}
    /// The camera refused a command with this status.
    CameraError(gvcp::Status status, const std::string& sentence)
        : std::runtime_error(sentence),
          m_code(status == gvcp::Status::AccessDenied ? RZ_ERROR_ACCESS_DENIED : RZ_ERROR_REFUSED),
          m_status(status)
    {}

    RZ_ERROR code() const { return m_code; }
    /// The camera's; Status::Success when it said nothing of the kind.
    gvcp::Status status() const { return m_status; }

private:
    RZ_ERROR m_code;
    gvcp::Status m_status = gvcp::Status::Success;
};

} // namespace sdk
