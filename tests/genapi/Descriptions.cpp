// SPDX-License-Identifier: Apache-2.0
#include "tests/genapi/Descriptions.h"

#include <glib.h>
#include <gtest/gtest.h>

namespace {

/// Whatever is complained of outside a call into the engine is a mistake here.
void failOn(const gchar* domain, GLogLevelFlags level, const gchar* message, gpointer)
{
    g_log_default_handler(domain, level, message, nullptr);
    if ((level & (G_LOG_LEVEL_CRITICAL | G_LOG_LEVEL_WARNING)) != 0)
        ADD_FAILURE() << message;
}

class QuietEngine : public testing::Environment
{
public:
    void SetUp() override { restoreHandlerOfTests(); }
};

[[maybe_unused]] const auto* const quietEngine = testing::AddGlobalTestEnvironment(new QuietEngine);

} // namespace

void restoreHandlerOfTests()
{
    g_log_set_default_handler(failOn, nullptr);
}

std::string description(const std::string& nodes, const std::string& schemaMinor)
{
    return "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n"
           "<RegisterDescription ModelName=\"Model\" VendorName=\"Vendor\" SchemaMajorVersion=\"1\" "
           "SchemaMinorVersion=\"" +
           schemaMinor +
           "\" SchemaSubMinorVersion=\"0\" xmlns=\"http://www.genicam.org/GenApi/Version_1_1\">\n" + nodes +
           "<Port Name=\"Device\"/>\n</RegisterDescription>\n";
}

std::string element(const std::string& name, const std::string& text)
{
    return "<" + name + ">" + text + "</" + name + ">";
}

std::string registerNode(const std::string& kind, const std::string& name, const std::string& address,
                         const std::string& length, const std::string& properties,
                         const std::string& accessMode)
{
    return "<" + kind + " Name=\"" + name + "\">" + element("Address", address) + element("Length", length) +
           element("AccessMode", accessMode) + element("pPort", "Device") + properties + "</" + kind + ">\n";
}

std::unique_ptr<GenApi::INodeMap> load(const std::string& data)
{
    return GenApi::CNodeMapFactory(GenApi::ContentType_Xml, data.data(), data.size()).CreateNodeMap();
}

std::string refusalOf(const std::string& data)
{
    try {
        load(data);
    } catch (const GenICam::RuntimeException& exception) {
        return exception.what();
    }
    return {};
}
