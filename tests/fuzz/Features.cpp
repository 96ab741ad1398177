// SPDX-License-Identifier: Apache-2.0
#include "tests/fuzz/Features.h"

#include <cstdlib>
#include <functional>
#include <glib.h>
#include <vector>

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

} // namespace

void useFeatures(const INodeMap& map)
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

void abortOnComplaints()
{
    g_log_set_default_handler(abortOn, nullptr);
}
