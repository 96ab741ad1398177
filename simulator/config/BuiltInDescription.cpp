// SPDX-License-Identifier: Apache-2.0
#include "simulator/config/BuiltInDescription.h"

#include "gvcp/Registers.h"
#include "simulator/config/HexText.h"

#include <algorithm>
#include <string>
#include <string_view>

namespace simulator {

namespace {

namespace reg = gvcp::reg;

constexpr char Begin[] = R"(<?xml version="1.0" encoding="UTF-8"?>
<RegisterDescription ModelName="FarmCamera" VendorName="Farm" ToolTip="A simulated camera"
    StandardNameSpace="GEV" SchemaMajorVersion="1" SchemaMinorVersion="1" SchemaSubMinorVersion="0"
    MajorVersion="1" MinorVersion="0" SubMinorVersion="0"
    ProductGuid="6A0F6D1E-2C41-4B3D-9E0C-5A3C8E7D1B20" VersionGuid="0F9B2C77-5D1A-4E58-8B64-3D2E9A70C415"
    xmlns="http://www.genicam.org/GenApi/Version_1_1">
)";

constexpr char End[] = R"(    <Port Name="Device" NameSpace="Standard"/>
</RegisterDescription>
)";

struct Text
{
    const char* feature;
    gvcp::TextRegister at;
};

constexpr Text Texts[] = {
    {"DeviceVendorName", reg::ManufacturerName}, {"DeviceModelName", reg::ModelName},
    {"DeviceVersion", reg::DeviceVersion},       {"DeviceManufacturerInfo", reg::ManufacturerInfo},
    {"DeviceSerialNumber", reg::SerialNumber},
};
constexpr Text UserName = {"DeviceUserID", reg::UserDefinedName};

struct Number
{
    const char* feature;
    std::uint32_t address;
    const char* access;
    const char* representation;
};

constexpr Number Numbers[] = {
    {"GevCurrentIPAddress", reg::CurrentIp, "RO", "IPV4Address"},
    {"GevCurrentSubnetMask", reg::CurrentSubnetMask, "RO", "IPV4Address"},
    {"GevCurrentDefaultGateway", reg::CurrentGateway, "RO", "IPV4Address"},
    {"GevHeartbeatTimeout", reg::HeartbeatTimeout, "RW", "PureNumber"},
};
constexpr Number PersistentNumbers[] = {
    {"GevPersistentIPAddress", reg::PersistentIp, "RW", "IPV4Address"},
    {"GevPersistentSubnetMask", reg::PersistentSubnetMask, "RW", "IPV4Address"},
    {"GevPersistentDefaultGateway", reg::PersistentGateway, "RW", "IPV4Address"},
};

std::string registerPart(std::uint32_t address, unsigned size, const char* access)
{
    return "        <Address>" + hexWord(address) + "</Address>\n        <Length>" + std::to_string(size) +
           "</Length>\n        <AccessMode>" + access + "</AccessMode>\n        <pPort>Device</pPort>\n";
}

std::string tagged(const char* tag, const std::string& name, const std::string& contents)
{
    return std::string("    <") + tag + " Name=\"" + name + "\">\n" + contents + "    </" + tag + ">\n";
}

std::string line(const char* tag, const std::string& text)
{
    return std::string("        <") + tag + '>' + text + "</" + tag + ">\n";
}

/// Collects the nodes, and the names of those that are features.
class Writer
{
public:
    void addText(const Text& text, const char* access)
    {
        addFeature(text.feature);
        m_nodes += tagged("StringReg", text.feature, registerPart(text.at.address, text.at.size, access));
    }

    void addNumber(const Number& number)
    {
        const std::string value = number.feature + std::string("Reg");
        addFeature(number.feature);
        m_nodes += tagged("Integer", number.feature,
                          line("pValue", value) + line("Representation", number.representation));
        m_nodes += tagged("IntReg", value,
                          registerPart(number.address, 4, number.access) + line("Sign", "Unsigned") +
                              line("Endianess", "BigEndian"));
    }

    /// Bit 0 is the highest, as everywhere in the standard's registers.
    void addMode(const std::string& feature, unsigned bit, const char* access)
    {
        const std::string value = feature + "Reg";
        addFeature(feature);
        m_nodes +=
            tagged("Boolean", feature, line("pValue", value) + line("OnValue", "1") + line("OffValue", "0"));
        m_nodes += tagged("MaskedIntReg", value,
                          registerPart(reg::CurrentIpConfig, 4, access) + line("Bit", std::to_string(bit)) +
                              line("Sign", "Unsigned") + line("Endianess", "BigEndian"));
    }

    void addReset(std::uint32_t address)
    {
        addFeature("DeviceReset");
        m_nodes +=
            tagged("Command", "DeviceReset", line("pValue", "DeviceResetReg") + line("CommandValue", "1"));
        m_nodes += tagged("IntReg", "DeviceResetReg",
                          registerPart(address, 4, "WO") + line("Sign", "Unsigned") +
                              line("Endianess", "BigEndian"));
    }

    std::string finish() const
    {
        return Begin + tagged("Category", "Root", line("pFeature", "DeviceControl")) +
               tagged("Category", "DeviceControl", m_features) + m_nodes + End;
    }

private:
    void addFeature(const std::string& name) { m_features += line("pFeature", name); }

    std::string m_features;
    std::string m_nodes;
};

} // namespace

DescriptionFile builtInDescription(const std::vector<DescribedFeature>& missing, std::uint32_t resetRegister)
{
    const auto has = [&missing](DescribedFeature feature) {
        return std::find(missing.begin(), missing.end(), feature) == missing.end();
    };
    Writer writer;
    for (const Text& text : Texts)
        writer.addText(text, "RO");
    if (has(DescribedFeature::UserName))
        writer.addText(UserName, "RW");
    if (has(DescribedFeature::Reset))
        writer.addReset(resetRegister);
    writer.addMode("GevCurrentIPConfigurationLLA", 29, "RO");
    if (has(DescribedFeature::DhcpMode))
        writer.addMode("GevCurrentIPConfigurationDHCP", 30, "RW");
    if (has(DescribedFeature::PersistentIpMode))
        writer.addMode("GevCurrentIPConfigurationPersistentIP", 31, "RW");
    for (const Number& number : Numbers)
        writer.addNumber(number);
    if (has(DescribedFeature::PersistentAddress))
        for (const Number& number : PersistentNumbers)
            writer.addNumber(number);
    const std::string text = writer.finish();
    return {"FarmCamera_1_0_0.xml", {text.begin(), text.end()}};
}

} // namespace simulator
