// SPDX-License-Identifier: Apache-2.0
// Loads bytes of any kind as a camera's description and uses the features that the tool uses. `scripts/fuzz`
// runs it with libFuzzer; the test suite replays the corpus. The engine may complain (GLib's criticals and
// warnings) in a call, which then fails as any other; a complaint that nobody hears is a fault.
#include "genapi/GenApi/GenApi.h"
#include "tests/genapi/MemoryPort.h"

#include <cstdlib>
#include <functional>
#include <glib.h>

using namespace GenApi;

namespace {

void abortOn(const gchar* domain, GLogLevelFlags level, const gchar* message, gpointer)
{
    g_log_default_handler(domain, level, message, nullptr);
    if ((level & (G_LOG_LEVEL_CRITICAL | G_LOG_LEVEL_WARNING)) != 0)
        std::abort();
}

template <typename Interface>
void use(const INodeMap& map, const char* name, const std::function<void(Interface&)>& action)
{
    auto* node = dynamic_cast<Interface*>(static_cast<IBase*>(map.GetNode(name)));
    if (!node)
        return;
    try {
        action(*node);
    } catch (const GenICam::GenericException&) {
        return; // A feature may be unusable, but must say so in this way.
    }
}

void useAll(const INodeMap& map)
{
    for (const char* name : {"GevCurrentIPConfigurationPersistentIP", "GevCurrentIPConfigurationDHCP",
                             "DeviceUserID", "DeviceReset", "GevPersistentSubnetMask"}) {
        use<IBoolean>(map, name, [](IBoolean& node) { node.SetValue(!node.GetValue(), true); });
        use<IInteger>(map, name, [](IInteger& node) { node.SetValue(node.GetValue(), true); });
        use<IInteger>(map, name, [](IInteger& node) { node.SetValue(-1062731519, false); });
        use<ICommand>(map, name, [](ICommand& node) { node.Execute(true); });
        use<IRegister>(map, name, [](IRegister& node) {
            std::vector<uint8_t> data(static_cast<std::size_t>(node.GetLength()));
            node.Get(data.data(), node.GetLength());
            node.Set(data.data(), node.GetLength(), true);
        });
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    g_log_set_default_handler(abortOn, nullptr);
    try {
        const auto map = CNodeMapFactory(ContentType_Xml, data, size).CreateNodeMap();
        MemoryPort port;
        port.put(0, {0x80, 0,    0,    0,    0, 0, 0, 0, 0xFF, 0xFF, 0xFF, 0xFF,
                     0xFF, 0xFF, 0xFF, 0xFF, 0, 0, 0, 7, 0,    0,    0,    6});
        map->Connect(&port, "Device");
        useAll(*map);
    } catch (const GenICam::RuntimeException&) {
        return 0; // Refused.
    }
    return 0;
}
