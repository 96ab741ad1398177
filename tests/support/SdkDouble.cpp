// SPDX-License-Identifier: Apache-2.0
#include "tests/support/SdkDouble.h"

#include <algorithm>
#include <arpa/inet.h>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <stdexcept>
#include <thread>

namespace {

SdkDouble* s_double = nullptr;

std::string dotted(uint32_t address)
{
    const in_addr networkOrder{htonl(address)};
    char text[INET_ADDRSTRLEN];
    return inet_ntop(AF_INET, &networkOrder, text, sizeof text);
}

std::string macText(unsigned high, unsigned low)
{
    char text[18];
    std::snprintf(text, sizeof text, "%02X:%02X:%02X:%02X:%02X:%02X", (high >> 8) & 0xFF, high & 0xFF,
                  low >> 24, (low >> 16) & 0xFF, (low >> 8) & 0xFF, low & 0xFF);
    return text;
}

std::string macOf(const RZ_CC_DEVICE_INFO* record)
{
    return record ? macText(record->nMacHigh, record->nMacLow) : "none";
}

std::string settingsText(const RZ_CC_SETTINGS& settings)
{
    const auto part = [&](uint32_t bit, const std::string& text) {
        return (settings.nParts & bit) != 0 ? ", " + text : std::string();
    };
    const auto ip = [](uint32_t address, uint32_t mask, uint32_t gateway) {
        return dotted(address) + " " + dotted(mask) + " " + dotted(gateway);
    };
    return part(RZ_SETTING_METHOD, "method " + std::to_string(settings.nIpConfig)) +
           part(RZ_SETTING_ADDRESS, "address " + ip(settings.nIp, settings.nSubnetMask, settings.nGateway)) +
           part(RZ_SETTING_STORED,
                "stored " + ip(settings.nStoredIp, settings.nStoredMask, settings.nStoredGateway)) +
           part(RZ_SETTING_NAME, std::string("name ") + settings.szUserDefinedName);
}

/// As a caller of the C interface gets it, cut to the buffer.
void copyText(const std::string& text, char* buffer, unsigned bufferSize)
{
    buffer[text.copy(buffer, bufferSize - 1)] = '\0';
}

template <size_t Size>
void setText(char (&field)[Size], const std::string& text)
{
    if (text.size() >= Size)
        throw std::invalid_argument("longer than the record's field: " + text);
    std::copy(text.begin(), text.end(), field);
}

} // namespace

/// The C functions' way into the double.
struct SdkCalls
{
    static SdkDouble& current(const char* call)
    {
        if (!s_double) {
            std::fprintf(stderr, "%s: no SdkDouble exists\n", call);
            std::abort();
        }
        return *s_double;
    }

    static SdkDouble& begin(std::string call)
    {
        SdkDouble& sdk = current(call.c_str());
        sdk.note(std::move(call));
        return sdk;
    }

    static int addHandle(SdkDouble& sdk, void** handle, const RZ_CC_DEVICE_INFO* record)
    {
        const std::lock_guard lock(sdk.m_mutex);
        *handle = std::make_unique<char>().release();
        sdk.m_handles[*handle] = const_cast<RZ_CC_DEVICE_INFO*>(record);
        return RZ_OK;
    }

    static int removeHandle(SdkDouble& sdk, void* handle)
    {
        const std::lock_guard lock(sdk.m_mutex);
        if (sdk.m_handles.erase(handle) == 0)
            return RZ_ERROR_HANDLE;
        delete static_cast<char*>(handle);
        return RZ_OK;
    }

    static unsigned addChange(SdkDouble& sdk, const RZ_CC_CHANGE& change)
    {
        const std::lock_guard lock(sdk.m_mutex);
        sdk.m_changes.emplace(++sdk.m_lastChange, change);
        return sdk.m_lastChange;
    }

    /// Ends those that end now; whether there was any.
    static bool endChanges(SdkDouble& sdk, const RZ_CC_LINE_SINK& sink)
    {
        const auto underWay = [&sdk] {
            const std::lock_guard lock(sdk.m_mutex);
            return sdk.m_changes;
        }();
        bool hasEnded = false;
        for (const auto& [number, change] : underWay) {
            const auto end = sdk.change(change);
            if (!end) {
                if (sdk.stepUnderWay != 0 && sdk.m_stepsTold.insert(number).second)
                    sink.pOnStep(sink.pContext, number, sdk.stepUnderWay);
                continue;
            }
            {
                const std::lock_guard lock(sdk.m_mutex);
                sdk.m_changes.erase(number);
            }
            for (unsigned step = RZ_STEP_FORCED; step <= RZ_STEP_RESTARTED; step *= 2)
                if ((end->steps & step) != 0)
                    sink.pOnStep(sink.pContext, number, step);
            const RZ_CC_CHANGE_RESULT result{end->error, end->text.c_str(), end->steps, end->now};
            sink.pOnEnd(sink.pContext, number, &result);
            hasEnded = true;
        }
        return hasEnded;
    }

    static RZ_CC_DEVICE_INFO* recordOf(void* handle)
    {
        return s_double ? s_double->recordOf(handle) : nullptr;
    }
};

SdkDouble::SdkDouble()
    : enumerateTls([] { return RZ_TL_GIGE; }),
      enumDevices([this](RZ_CC_DEVICE_INFO_LIST& list) {
          list.nDeviceCount = static_cast<uint32_t>(listed.size());
          std::copy(listed.begin(), listed.end(), list.apDeviceInfo);
          return RZ_OK;
      }),
      isDeviceAccessible([](const RZ_CC_DEVICE_INFO*) { return true; }),
      createHandle([](const RZ_CC_DEVICE_INFO* info) { return info ? RZ_OK : RZ_ERROR_PARAMETER; }),
      forceIp([](RZ_CC_DEVICE_INFO* info, uint32_t ip, uint32_t mask, uint32_t gateway) {
          info->stGigEInfo.nDeviceIp = ip;
          info->stGigEInfo.nDeviceSubnetMask = mask;
          info->stGigEInfo.nDeviceGateway = gateway;
          return RZ_OK;
      }),
      openDevice([](RZ_CC_DEVICE_INFO*) { return RZ_OK; }),
      getGenICamXml([](RZ_CC_DEVICE_INFO*) { return RZ_OK; }),
      getTlProxy([this](RZ_CC_DEVICE_INFO*) { return port; }),
      openLook([] { return RZ_OK; }),
      look([this](unsigned, unsigned, const RZ_CC_LOOK_SINK& sink) {
          for (const int isLast : {0, 1})
              for (RZ_CC_DEVICE_INFO* const each : listed) {
                  const RZ_CC_SIGHTING seen = sighting(each);
                  sink.pOnCamera(sink.pContext, &seen, isLast);
              }
          const RZ_CC_LOOK_REPORT report{unlisted, listener, listenerPath.c_str(), notSearched.c_str()};
          sink.pOnReport(sink.pContext, &report);
          return RZ_OK;
      }),
      openLine([] { return RZ_OK; }),
      change([this](const RZ_CC_CHANGE& wanted) { return obey(wanted); }),
      getErrorText([](const RZ_CC_DEVICE_INFO*) { return std::string(); }),
      isForcedIpWaiting([](const RZ_CC_DEVICE_INFO*) { return false; }),
      getPersistentIp([](RZ_CC_DEVICE_INFO* info, unsigned& ip, unsigned& mask, unsigned& gateway) {
          ip = info->stGigEInfo.nDeviceIp;
          mask = info->stGigEInfo.nDeviceSubnetMask;
          gateway = info->stGigEInfo.nDeviceGateway;
          return RZ_OK;
      })
{
    if (s_double)
        throw std::logic_error("one SdkDouble at a time");
    s_double = this;
}

RZ_CC_SIGHTING SdkDouble::sighting(RZ_CC_DEVICE_INFO* info) const
{
    constexpr uint32_t mask = 0xFFFFFF00;
    RZ_CC_SIGHTING seen{};
    seen.stInfo = *info;
    seen.pInfo = info;
    seen.nReachable = (info->stGigEInfo.nDeviceIp & mask) == (info->stGigEInfo.nNetExportIp & mask);
    seen.nAccessible = seen.nReachable != 0 && isDeviceAccessible(info);
    seen.nHeard = RZ_HEARD_SOCKET | RZ_HEARD_UNICAST;
    seen.nSearches = seen.nSearchAnswers = 1;
    return seen;
}

SdkDouble::~SdkDouble()
{
    s_double = nullptr;
    for (const auto& handle : m_handles)
        delete static_cast<char*>(handle.first);
}

RZ_CC_DEVICE_INFO* SdkDouble::record(const Camera& camera)
{
    unsigned mac[6];
    if (std::sscanf(camera.mac.c_str(), "%2x:%2x:%2x:%2x:%2x:%2x", &mac[0], &mac[1], &mac[2], &mac[3],
                    &mac[4], &mac[5]) != 6)
        throw std::invalid_argument("no MAC address: " + camera.mac);

    RZ_CC_DEVICE_INFO record{};
    record.nMacHigh = mac[0] << 8 | mac[1];
    record.nMacLow = mac[2] << 24 | mac[3] << 16 | mac[4] << 8 | mac[5];
    record.nTransportLayer = RZ_TL_GIGE;
    RZ_GIGE_DEVICE_INFO& block = record.stGigEInfo;
    block.nIpConfigCurrent = camera.ipConfig;
    block.nDeviceIp = address(camera.ip);
    block.nDeviceSubnetMask = address(camera.mask);
    block.nDeviceGateway = address(camera.gateway);
    block.nNetExportIp = address(camera.adapter);
    setText(block.szModelName, camera.model);
    setText(block.szSerialNumber, camera.serial);
    setText(block.szUserDefinedName, camera.userName);

    const std::lock_guard lock(m_mutex);
    return &m_records.emplace_back(record);
}

uint32_t SdkDouble::address(const std::string& dotted)
{
    in_addr networkOrder{};
    if (inet_pton(AF_INET, dotted.c_str(), &networkOrder) != 1)
        throw std::invalid_argument("no address: " + dotted);
    return ntohl(networkOrder.s_addr);
}

std::vector<std::string> SdkDouble::calls() const
{
    const std::lock_guard lock(m_mutex);
    return m_calls;
}

size_t SdkDouble::livingHandles() const
{
    const std::lock_guard lock(m_mutex);
    return m_handles.size();
}

void SdkDouble::note(std::string call)
{
    const std::lock_guard lock(m_mutex);
    m_calls.push_back(std::move(call));
}

RZ_CC_DEVICE_INFO* SdkDouble::recordOf(void* handle) const
{
    const std::lock_guard lock(m_mutex);
    const auto found = m_handles.find(handle);
    return found == m_handles.end() ? nullptr : found->second;
}

SdkDouble::ChangeEnd SdkDouble::obey(const RZ_CC_CHANGE& asked)
{
    const RZ_CC_SETTINGS& wanted = asked.stWanted;
    const auto found = std::ranges::find_if(listed, [&asked](const RZ_CC_DEVICE_INFO* each) {
        return each->nMacHigh == asked.stInfo.nMacHigh && each->nMacLow == asked.stInfo.nMacLow;
    });
    if (found == listed.end())
        return {RZ_ERROR_NO_ANSWER, "it does not answer", 0, {}};
    RZ_GIGE_DEVICE_INFO& camera = (*found)->stGigEInfo;
    ChangeEnd end;
    end.now = wanted;
    if ((wanted.nParts & RZ_SETTING_ADDRESS) != 0) {
        end.steps |= RZ_STEP_FORCED;
        camera.nDeviceIp = wanted.nIp;
        camera.nDeviceSubnetMask = wanted.nSubnetMask;
        camera.nDeviceGateway = wanted.nGateway;
    }
    if ((wanted.nParts & RZ_SETTING_STORED) != 0)
        end.steps |= RZ_STEP_STORED;
    if ((wanted.nParts & RZ_SETTING_METHOD) != 0 && camera.nIpConfigCurrent != wanted.nIpConfig) {
        end.steps |= RZ_STEP_CONFIGURED | RZ_STEP_RESTARTED;
        camera.nIpConfigCurrent = wanted.nIpConfig;
    }
    if ((wanted.nParts & RZ_SETTING_NAME) != 0) {
        end.steps |= RZ_STEP_NAMED;
        std::copy(std::begin(wanted.szUserDefinedName), std::end(wanted.szUserDefinedName),
                  std::begin(camera.szUserDefinedName));
    }
    end.now.nParts |= RZ_SETTING_METHOD | RZ_SETTING_ADDRESS | RZ_SETTING_NAME;
    end.now.nIpConfig = camera.nIpConfigCurrent;
    end.now.nIp = camera.nDeviceIp;
    end.now.nSubnetMask = camera.nDeviceSubnetMask;
    end.now.nGateway = camera.nDeviceGateway;
    std::copy(std::begin(camera.szUserDefinedName), std::end(camera.szUserDefinedName),
              std::begin(end.now.szUserDefinedName));
    return end;
}

extern "C" {

unsigned RZ_CC_EnumerateTls(void)
{
    return SdkCalls::begin("EnumerateTls()").enumerateTls();
}

int RZ_CC_EnumDevices(unsigned tlMask, RZ_CC_DEVICE_INFO_LIST* list)
{
    return SdkCalls::begin("EnumDevices(" + std::to_string(tlMask) + ")").enumDevices(*list);
}

int RZ_CC_GetEnumReport(unsigned* unlisted, char* buffer, unsigned bufferSize)
{
    const SdkDouble& sdk = SdkCalls::begin("GetEnumReport()");
    *unlisted = sdk.unlisted;
    copyText(sdk.notSearched, buffer, bufferSize);
    return RZ_OK;
}

int RZ_CC_GetListener(unsigned* state, char* path, unsigned pathSize)
{
    const SdkDouble& sdk = SdkCalls::begin("GetListener()");
    *state = sdk.listener;
    copyText(sdk.listenerPath, path, pathSize);
    return RZ_OK;
}

int RZ_CC_OpenLook(void** look, const unsigned*, unsigned)
{
    SdkDouble& sdk = SdkCalls::begin("OpenLook()");
    *look = &sdk;
    return sdk.openLook();
}

int RZ_CC_Look(void* look, unsigned options, unsigned milliseconds, const RZ_CC_LOOK_SINK* sink)
{
    SdkDouble& sdk =
        SdkCalls::begin("Look(" + std::to_string(options) + ", " + std::to_string(milliseconds) + ")");
    return look == &sdk ? sdk.look(options, milliseconds, *sink) : RZ_ERROR_HANDLE;
}

int RZ_CC_CloseLook(void* look)
{
    return look == &SdkCalls::begin("CloseLook()") ? RZ_OK : RZ_ERROR_HANDLE;
}

int RZ_CC_OpenLine(void** line)
{
    SdkDouble& sdk = SdkCalls::begin("OpenLine()");
    *line = &sdk;
    return sdk.openLine();
}

int RZ_CC_BeginChange(void* line, const RZ_CC_CHANGE* change, unsigned* number)
{
    SdkDouble& sdk =
        SdkCalls::begin("BeginChange(" + macOf(&change->stInfo) + settingsText(change->stWanted) + ")");
    if (line != &sdk)
        return RZ_ERROR_HANDLE;
    *number = SdkCalls::addChange(sdk, *change);
    return RZ_OK;
}

int RZ_CC_ServeLine(void* line, unsigned milliseconds, const RZ_CC_LINE_SINK* sink)
{
    SdkDouble& sdk = SdkCalls::current("ServeLine");
    if (line != &sdk)
        return RZ_ERROR_HANDLE;
    if (!SdkCalls::endChanges(sdk, *sink))
        std::this_thread::sleep_for(std::chrono::milliseconds(std::min(milliseconds, 1U)));
    return RZ_OK;
}

int RZ_CC_CloseLine(void* line)
{
    return line == &SdkCalls::begin("CloseLine()") ? RZ_OK : RZ_ERROR_HANDLE;
}

int RZ_CC_ExpectDevice(unsigned macHigh, unsigned macLow)
{
    SdkCalls::begin("ExpectDevice(" + macText(macHigh, macLow) + ")");
    return RZ_OK;
}

bool RZ_CC_IsDeviceAccessible(const RZ_CC_DEVICE_INFO* info, unsigned accessMode)
{
    return SdkCalls::begin("IsDeviceAccessible(" + macOf(info) + ", " + std::to_string(accessMode) + ")")
        .isDeviceAccessible(info);
}

int RZ_CC_GetErrorText(const RZ_CC_DEVICE_INFO* info, char* buffer, unsigned bufferSize)
{
    copyText(SdkCalls::begin("GetErrorText(" + macOf(info) + ")").getErrorText(info), buffer, bufferSize);
    return RZ_OK;
}

int RZ_CC_CreateHandle(void** handle, const RZ_CC_DEVICE_INFO* info)
{
    SdkDouble& sdk = SdkCalls::begin("CreateHandle(" + macOf(info) + ")");
    const int result = sdk.createHandle(info);
    return result == RZ_OK ? SdkCalls::addHandle(sdk, handle, info) : result;
}

int RZ_CC_DestroyHandle(void* handle)
{
    return SdkCalls::removeHandle(SdkCalls::begin("DestroyHandle(" + macOf(SdkCalls::recordOf(handle)) + ")"),
                                  handle);
}

int RZ_CC_OpenDevice(void* handle, unsigned accessMode, unsigned short switchoverKey)
{
    RZ_CC_DEVICE_INFO* const record = SdkCalls::recordOf(handle);
    SdkDouble& sdk = SdkCalls::begin("OpenDevice(" + macOf(record) + ", " + std::to_string(accessMode) +
                                     ", " + std::to_string(switchoverKey) + ")");
    return record ? sdk.openDevice(record) : RZ_ERROR_HANDLE;
}

int RZ_XML_GetGenICamXML(void* handle, unsigned char* buffer, unsigned bufferSize, unsigned* dataLength)
{
    RZ_CC_DEVICE_INFO* const record = SdkCalls::recordOf(handle);
    SdkDouble& sdk =
        SdkCalls::begin("GetGenICamXML(" + macOf(record) + ", " + std::to_string(bufferSize) + ")");
    const int result = record ? sdk.getGenICamXml(record) : RZ_ERROR_HANDLE;
    if (result != RZ_OK)
        return result;
    std::copy_n(sdk.description.begin(), std::min<size_t>(sdk.description.size(), bufferSize), buffer);
    *dataLength = sdk.reportedLength.value_or(static_cast<unsigned>(sdk.description.size()));
    return RZ_OK;
}

void* RZ_CC_GetTlProxy(void* handle)
{
    RZ_CC_DEVICE_INFO* const record = SdkCalls::recordOf(handle);
    SdkDouble& sdk = SdkCalls::begin("GetTlProxy(" + macOf(record) + ")");
    return record ? sdk.getTlProxy(record) : nullptr;
}

int RZ_GIGE_ForceIpEx(void* handle, unsigned ip, unsigned subnetMask, unsigned gateway)
{
    RZ_CC_DEVICE_INFO* const record = SdkCalls::recordOf(handle);
    SdkDouble& sdk = SdkCalls::begin("ForceIpEx(" + macOf(record) + ", " + dotted(ip) + ", " +
                                     dotted(subnetMask) + ", " + dotted(gateway) + ")");
    return record ? sdk.forceIp(record, ip, subnetMask, gateway) : RZ_ERROR_HANDLE;
}

bool RZ_GIGE_IsForcedIpWaiting(const RZ_CC_DEVICE_INFO* info)
{
    return SdkCalls::begin("IsForcedIpWaiting(" + macOf(info) + ")").isForcedIpWaiting(info);
}

int RZ_GIGE_GetPersistentIp(void* handle, unsigned* ip, unsigned* subnetMask, unsigned* gateway)
{
    RZ_CC_DEVICE_INFO* const record = SdkCalls::recordOf(handle);
    SdkDouble& sdk = SdkCalls::begin("GetPersistentIp(" + macOf(record) + ")");
    return record ? sdk.getPersistentIp(record, *ip, *subnetMask, *gateway) : RZ_ERROR_HANDLE;
}

} // extern "C"
