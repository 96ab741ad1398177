// SPDX-License-Identifier: Apache-2.0
#include "save/QFeatureWriter.h"

#include "genapi/GenApi/GenApi.h"
#include "save/DottedText.h"

#include <QString>

#include <algorithm>
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

std::string inWords(const GenICam::GenericException& e)
{
    return std::string("what:") + e.what() + " SourceFileName:" + e.GetSourceFileName();
}

std::string inWords(int nCode)
{
    return "0x" + QString::number(static_cast<unsigned>(nCode), 16).toStdString();
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
        SetErrorText(inWords(e));
    } catch (int nCode) {
        SetErrorText("Error code:" + inWords(nCode));
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

void QFeatureWriter::SetErrorText(const std::string& strText)
{
    std::fill_n(m_chErrorText, ErrorTextSize, '\0');
    strText.copy(m_chErrorText, ErrorTextSize - 1);
}

bool QFeatureWriter::Attempt(const char* pchAction, const std::function<bool()>& write)
{
    try {
        return write();
    } catch (const GenICam::GenericException& e) {
        SetErrorText(std::string(pchAction) + " Error: " + inWords(e));
    } catch (int nCode) {
        SetErrorText(std::string(pchAction) + " Error: code " + inWords(nCode));
    } catch (const abi::__forced_unwind&) {
        throw;
    } catch (...) {
        return false;
    }
    m_tell(QString(m_chErrorText));
    return false;
}
