// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "base/MacAddress.h"
#include "sdk/RzCameraSdk.h"

#include <map>
#include <mutex>
#include <string>

namespace sdk {

/// What the process's latest enumeration left out.
struct EnumReport
{
    unsigned unlisted = 0;   ///< Cameras that answered and for which the list had no room.
    std::string notSearched; ///< The adapters, each with its reason; or why nothing was searched.
    RZ_LISTENER listener = RZ_LISTENER_HEARS; ///< Of the first adapter on which not all is well.
};

/// What there is to say of a call beyond its error code, for callers that ask afterwards. Any thread.
class Reports
{
public:
    /// The process's own.
    static Reports& instance();

    void setEnumeration(EnumReport report);
    EnumReport enumeration() const;

    /// Of the latest call on that camera; empty when it went well.
    void setFailure(const base::MacAddress& camera, const std::string& text);
    std::string failureOf(const base::MacAddress& camera) const;

private:
    mutable std::mutex m_mutex; ///< Guards what follows.
    EnumReport m_enumeration;
    std::map<base::MacAddress, std::string> m_failures;
};

} // namespace sdk
