// SPDX-License-Identifier: Apache-2.0
#include "sdk/Reports.h"

namespace sdk {

Reports& Reports::instance()
{
    static Reports* const reports = new Reports;
    return *reports;
}

void Reports::setEnumeration(EnumReport report)
{
    const std::lock_guard lock(m_mutex);
    m_enumeration = std::move(report);
}

EnumReport Reports::enumeration() const
{
    const std::lock_guard lock(m_mutex);
    return m_enumeration;
}

void Reports::setFailure(const base::MacAddress& camera, const std::string& text)
{
    const std::lock_guard lock(m_mutex);
    if (text.empty())
        m_failures.erase(camera);
    else
        m_failures[camera] = text;
}

std::string Reports::failureOf(const base::MacAddress& camera) const
{
    const std::lock_guard lock(m_mutex);
    const auto found = m_failures.find(camera);
    return found == m_failures.end() ? std::string() : found->second;
}

} // namespace sdk
