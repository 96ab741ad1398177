// SPDX-License-Identifier: Apache-2.0
#include "save/QFeatureWriter.h"

#include "genapi/GenApi/GenApi.h"
#include "save/DottedText.h"

#include <QString>

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <cxxabi.h>
#include <utility>
#include <vector>

namespace {

template <typename Interface>
Interface* find(const GenApi::CNodeMapRef& nodeMap, const char* pchName)
{
    return dynamic_cast<Interface*>(nodeMap._GetNode(pchName));
}

/// Throws the code 0 when the feature is missing or of another kind.
template <typename Interface>
Interface& get(const GenApi::CNodeMapRef& nodeMap, const char* pchName)
{
    auto* const pFeature = find<Interface>(nodeMap, pchName);
    if (!pFeature)
        throw 0;
    return *pFeature;
}

} // namespace

QFeatureWriter::QFeatureWriter(std::function<void(const QString&)> tell) : m_tell(std::move(tell)) {}

bool QFeatureWriter::WriteBoolean(const GenApi::CNodeMapRef& nodeMap, const char* pchName, bool bValue)
{
    try {
        auto* const pFeature = find<GenApi::IBoolean>(nodeMap, pchName);
        if (!pFeature)
            return false;
        pFeature->SetValue(bValue, true);
        return true;
    } catch (const GenICam::GenericException& e) {
        SetErrorText("what:%s SourceFileName:%s", e.what(), e.GetSourceFileName());
    } catch (int nCode) {
        SetErrorText("Error code:0x%x", static_cast<unsigned>(nCode));
    } catch (const abi::__forced_unwind&) {
        throw;
    } catch (...) {
        SetErrorText("Unknow error.");
    }
    return false;
}

bool QFeatureWriter::WriteAddress(const GenApi::CNodeMapRef& nodeMap, const char* pchName,
                                  const char* pchAction, const QString& strAddress)
{
    return Attempt(pchAction, [&] {
        auto& feature = get<GenApi::IInteger>(nodeMap, pchName);
        unsigned long nAddress = 0;
        if (!DottedToDword(strAddress, nAddress))
            return false;
        feature.SetValue(static_cast<qint64>(nAddress), true);
        return true;
    });
}

bool QFeatureWriter::WriteRegister(const GenApi::CNodeMapRef& nodeMap, const char* pchName,
                                   const char* pchAction, const QByteArray& value)
{
    return Attempt(pchAction, [&] {
        auto& feature = get<GenApi::IRegister>(nodeMap, pchName);
        // The node map takes no description with an unreasonable length.
        std::vector<quint8> bytes(static_cast<std::size_t>(feature.GetLength()));
        std::copy_n(value.begin(),
                    std::min<std::size_t>(bytes.size(), static_cast<std::size_t>(value.size())),
                    bytes.begin());
        feature.Set(bytes.data(), static_cast<qint64>(bytes.size()), true);
        return true;
    });
}

bool QFeatureWriter::Execute(const GenApi::CNodeMapRef& nodeMap, const char* pchName, const char* pchAction)
{
    return Attempt(pchAction, [&] {
        get<GenApi::ICommand>(nodeMap, pchName).Execute(true);
        return true;
    });
}

void QFeatureWriter::SetErrorText(const char* pchFormat, ...)
{
    std::fill_n(m_chErrorText, ErrorTextSize, '\0');
    va_list arguments;
    va_start(arguments, pchFormat);
    std::vsnprintf(m_chErrorText, ErrorTextSize, pchFormat, arguments);
    va_end(arguments);
}

bool QFeatureWriter::Attempt(const char* pchAction, const std::function<bool()>& write)
{
    try {
        return write();
    } catch (const GenICam::GenericException& e) {
        SetErrorText("%s Error: what:%s SourceFileName:%s", pchAction, e.what(), e.GetSourceFileName());
    } catch (int nCode) {
        SetErrorText("%s Error: code 0x%x", pchAction, static_cast<unsigned>(nCode));
    } catch (const abi::__forced_unwind&) {
        throw;
    } catch (...) {
        return false;
    }
    m_tell(QString(m_chErrorText));
    return false;
}
