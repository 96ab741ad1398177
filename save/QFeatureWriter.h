// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <functional>
#include <string>

class QByteArray;
class QString;

namespace GenApi {
class CNodeMapRef;
}

/// Writes single features of a camera by name. All give false when the feature was not written; the reason
/// then stands in GetErrorText(), or is unknown and the text there an older one.
///
/// `pchAction` is what the reason for the user begins with ("Set Gateway"). One thread at a time.
class QFeatureWriter
{
public:
    /// `tell` gets every reason that is for the user, as the last thing the failing call does.
    explicit QFeatureWriter(std::function<void(const QString& strReason)> tell);

    /// Its reasons are not for the user. A feature that is missing or no boolean has none.
    bool WriteBoolean(const GenApi::CNodeMapRef& nodeMap, const char* pchName, bool bValue);

    /// To an integer: the address as DottedToDword() gives it; false without a reason when it gives none.
    bool WriteAddress(const GenApi::CNodeMapRef& nodeMap, const char* pchName, const char* pchAction,
                      const QString& strAddress);

    /// To a register, all of it: cut to its length, or filled up with zeros.
    bool WriteRegister(const GenApi::CNodeMapRef& nodeMap, const char* pchName, const char* pchAction,
                       const QByteArray& value);

    bool Execute(const GenApi::CNodeMapRef& nodeMap, const char* pchName, const char* pchAction);

    static constexpr std::size_t ErrorTextSize = 512;

    /// At most 511 bytes, longer ones are cut, and zeros up to its size; empty before the first failure.
    const char* GetErrorText() const { return m_chErrorText; }

private:
    void SetErrorText(const std::string& strText);
    bool Attempt(const char* pchAction, const std::function<bool()>& write);

    std::function<void(const QString&)> m_tell;
    char m_chErrorText[ErrorTextSize] = {};
};
