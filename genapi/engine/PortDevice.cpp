// SPDX-License-Identifier: Apache-2.0
#include "genapi/engine/PortDevice.h"

#include "genapi/engine/Complaints.h"

#include <algorithm>
#include <sstream>
#include <utility>

// The engine's object system wants C names and structures.
struct GenapiPortDevice
{
    ArvDevice parent;
    genapi::PortDevice::Access* access;
};

struct GenapiPortDeviceClass
{
    ArvDeviceClass parent;
};

G_DEFINE_TYPE(GenapiPortDevice, genapi_port_device, ARV_TYPE_DEVICE) // NOLINT

namespace {

/// Runs one access; false and an error when the port did not do it.
template <typename Transfer>
gboolean transfer(ArvDevice* device, const char* what, guint64 address, guint32 size, GError** error,
                  Transfer call) noexcept
{
    auto& access = *reinterpret_cast<GenapiPortDevice*>(device)->access;
    std::string cause;
    try {
        if (access.port) {
            const genapi::Complaints::Pause pause;
            call(*access.port);
            return TRUE;
        }
        cause = "no camera is connected";
    } catch (const std::exception& exception) {
        cause = exception.what();
    } catch (...) { // Not the unwinding of a cancelled thread, which is held off around the engine.
        cause = "unknown error";
    }
    std::ostringstream text;
    text << what << ' ' << size << " bytes at 0x" << std::hex << address << " failed: " << cause;
    if (access.failure.empty())
        access.failure = text.str();
    g_set_error_literal(error, ARV_DEVICE_ERROR, ARV_DEVICE_ERROR_TRANSFER_ERROR, text.str().c_str());
    return FALSE;
}

gboolean readMemory(ArvDevice* device, guint64 address, guint32 size, void* buffer, GError** error)
{
    auto* bytes = static_cast<std::uint8_t*>(buffer);
    // After some failed reads the engine uses the bytes all the same.
    std::fill_n(bytes, size, std::uint8_t{0});
    return transfer(device, "reading", address, size, error,
                    [&](GenApi::IPort& port) { port.Read(bytes, static_cast<std::int64_t>(address), size); });
}

gboolean writeMemory(ArvDevice* device, guint64 address, guint32 size, void* buffer, GError** error)
{
    return transfer(device, "writing", address, size, error, [&](GenApi::IPort& port) {
        port.Write(buffer, static_cast<std::int64_t>(address), size);
    });
}

} // namespace

static void genapi_port_device_init(GenapiPortDevice*) {}

static void genapi_port_device_class_init(GenapiPortDeviceClass* type)
{
    // Single registers the engine reads only from devices of its own kinds, never from this one.
    type->parent.read_memory = readMemory;
    type->parent.write_memory = writeMemory;
}

namespace genapi {

PortDevice::PortDevice()
    : m_device(static_cast<ArvDevice*>(g_object_new(genapi_port_device_get_type(), nullptr)))
{
    reinterpret_cast<GenapiPortDevice*>(m_device.get())->access = &m_access;
}

std::string PortDevice::takeFailure()
{
    return std::exchange(m_access.failure, {});
}

} // namespace genapi
