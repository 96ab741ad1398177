// SPDX-License-Identifier: Apache-2.0
#include "tests/support/CameraDescriptions.h"

namespace descriptions {
namespace {

// No objects: who asks may be initialized before this file.
const char PersistentIp[] = "GevCurrentIPConfigurationPersistentIP";
const char Dhcp[] = "GevCurrentIPConfigurationDHCP";

// Registers of the makers' own that conditions are about.
constexpr std::uint32_t Present = 0xB000;
constexpr std::uint32_t Locked = 0xB004;

constexpr char bigEndian[] = "<Sign>Unsigned</Sign><Endianess>BigEndian</Endianess>";
constexpr char littleEndian[] = "<Sign>Unsigned</Sign><Endianess>LittleEndian</Endianess>";

std::string node(const std::string& kind, const std::string& name, const std::string& properties)
{
    return "  <" + kind + " Name=\"" + name + "\" NameSpace=\"Standard\">\n    " + properties + "\n  </" +
           kind + ">\n";
}

/// What all registers have, but for where they are.
std::string access(const std::string& mode = "RW", const std::string& length = "4")
{
    return "<Length>" + length + "</Length><AccessMode>" + mode +
           "</AccessMode><pPort>Device</pPort><Cachable>NoCache</Cachable>";
}

std::string at(const std::string& address)
{
    return "<Address>" + address + "</Address>";
}

std::string boolean(const std::string& name, const std::string& target, const std::string& properties = {})
{
    return node("Boolean", name,
                "<ToolTip>Switches this way to an address on.</ToolTip><Visibility>Beginner</Visibility>" +
                    properties + "<pValue>" + target + "</pValue>");
}

/// Both booleans with the same properties, each on a bit of its own of the register that the address names.
std::string modesOn(const std::string& address, const std::string& ofBooleans = {},
                    const std::string& ofBits = bigEndian, const std::string& persistentBit = "<Bit>31</Bit>",
                    const std::string& dhcpBit = "<Bit>30</Bit>")
{
    return boolean(PersistentIp, "PersistentIPBit", ofBooleans) +
           node("MaskedIntReg", "PersistentIPBit", address + access() + persistentBit + ofBits) +
           boolean(Dhcp, "DHCPBit", ofBooleans) +
           node("MaskedIntReg", "DHCPBit", address + access() + dhcpBit + ofBits);
}

std::string number(const std::string& name, const std::string& value)
{
    return node("Integer", name, "<Visibility>Invisible</Visibility><Value>" + value + "</Value>");
}

std::string formula(const std::string& name, const std::string& variable, const std::string& target,
                    const std::string& text)
{
    return node("IntSwissKnife", name,
                "<pVariable Name=\"" + variable + "\">" + target + "</pVariable><Formula>" + text +
                    "</Formula>");
}

std::string condition(const std::string& name, std::uint32_t address)
{
    return node("IntReg", name, at(std::to_string(address)) + access("RO") + bigEndian);
}

std::string structure()
{
    return "  <StructReg Comment=\"GevIPConfiguration\">\n    " + at("0x0014") + access() + bigEndian +
           "\n    <StructEntry Name=\"LLABit\"><AccessMode>RO</AccessMode><Bit>29</Bit></StructEntry>"
           "\n    <StructEntry Name=\"DHCPBit\"><Bit>30</Bit></StructEntry>"
           "\n    <StructEntry Name=\"PersistentIPBit\"><LSB>31</LSB><MSB>31</MSB></StructEntry>"
           "\n  </StructReg>\n";
}

constexpr char usualValues[] = "<OnValue>1</OnValue><OffValue>0</OffValue>";
std::string selector()
{
    return number("GevInterfaceSelector", "0");
}

std::string withOwnValues(const std::string& name, const std::string& bit)
{
    return node("Boolean", name,
                "<pValue>" + name + "Value</pValue><OnValue>0x2</OnValue><OffValue>010</OffValue>") +
           node("IntConverter", name + "Value",
                "<FormulaTo>(FROM = 2) ? 1 : 0</FormulaTo><FormulaFrom>(TO = 1) ? 2 : "
                "10</FormulaFrom><pValue>" +
                    name + "Number</pValue>") +
           node("Integer", name + "Number", "<pValue>" + name + "Bit</pValue><Min>0</Min><Max>1</Max>") +
           node("MaskedIntReg", name + "Bit", at("0x14") + access() + "<Bit>" + bit + "</Bit>" + bigEndian);
}

std::string reset(const std::string& properties, const std::string& target)
{
    return node("Command", "DeviceReset",
                "<ToolTip>Restarts the "
                "camera.</ToolTip><Visibility>Guru</Visibility><pValue>ResetReg</pValue>" +
                    properties + "<PollingTime>100</PollingTime>") +
           target;
}

std::string resetAt(const std::string& address, const std::string& mode = "RW",
                    const std::string& order = bigEndian)
{
    return node("IntReg", "ResetReg", at(address) + access(mode) + order);
}

std::string resetBit(const std::string& address, const std::string& bits, const std::string& mode,
                     const std::string& order = bigEndian)
{
    return node("MaskedIntReg", "ResetReg", at(address) + access(mode) + bits + order);
}

constexpr char one[] = "<CommandValue>1</CommandValue>";

std::string nameRegister(const std::string& name, const std::string& properties = {},
                         const std::string& mode = "RW")
{
    return node("StringReg", name,
                "<ToolTip>The camera's name.</ToolTip>" + properties + at("0x000000E8") + access(mode, "16"));
}

std::string string(const std::string& name, const std::string& target, const std::string& properties = {})
{
    return node("String", name,
                "<DisplayName>Name</DisplayName>" + properties + "<pValue>" + target + "</pValue>");
}

std::string capability()
{
    return node("MaskedIntReg", "HasUserName", at("0x0934") + access("RO") + "<Bit>0</Bit>" + bigEndian);
}

/// A feature as there are hundreds in a file, on a register that no camera here has.
std::string feature(int number)
{
    const std::string name = "Custom" + std::to_string(number);
    return node("Integer", name,
                "<ToolTip>Sets the value number " + std::to_string(number) +
                    ".</ToolTip><Description>What it does is said in the "
                    "manual.</Description><DisplayName>Custom " +
                    std::to_string(number) +
                    "</DisplayName><Visibility>Expert</Visibility><pIsLocked>TLParamsLocked"
                    "</pIsLocked><pValue>" +
                    name + "Reg</pValue><Min>0</Min><pMax>" + name +
                    "Max</pMax><Representation>Linear</Representation>") +
           node("IntReg", name + "Reg", at(std::to_string(0x20000000 + 8 * number)) + access() + bigEndian) +
           formula(name + "Max", "NOW", name + "Reg", "(NOW &gt; 0xFF) ? 0xFFFF : 0xFF");
}

} // namespace

const std::vector<Modes>& allModes()
{
    static const std::vector<Modes> all{
        {"MaskedRegisters", modesOn(at("0x00000014"), usualValues), {}},
        {"FirstAndLastBit",
         modesOn(at("20"), {}, bigEndian, "<LSB>31</LSB><MSB>31</MSB>", "<LSB>30</LSB><MSB>30</MSB>"),
         {}},
        {"LittleEndianBits",
         modesOn(at("0x14"), {}, littleEndian, "<LSB>24</LSB><MSB>24</MSB>", "<Bit>25</Bit>"),
         {}},
        {"Structure",
         boolean(PersistentIp, "PersistentIPBit", usualValues) + boolean(Dhcp, "DHCPBit") + structure(),
         {}},
        {"NumbersWithTheirOwnValues", withOwnValues(PersistentIp, "31") + withOwnValues(Dhcp, "30"), {}},
        {"ImplementedByTheCapability",
         modesOn(at("0x14"), "<pIsImplemented>CanBeSet</pIsImplemented>") +
             formula("CanBeSet", "CAN", "Supported", "(CAN &amp; 0x7) = 7") +
             node("IntReg", "Supported", at("0x0010") + access("RO") + bigEndian),
         {}},
        {"ImplementedAndAvailableAndNotLocked",
         modesOn(at("0x14"),
                 "<pIsImplemented>Present</pIsImplemented><pIsAvailable>Here</pIsAvailable><pIsLocked>Busy</"
                 "pIsLocked>",
                 std::string("<pIsImplemented>Present</pIsImplemented><pIsLocked>BusyFlag</pIsLocked>") +
                     bigEndian) +
             condition("Present", Present) + formula("Here", "P", "Present", "P &lt;&gt; 0") +
             condition("Busy", Locked) + boolean("BusyFlag", "Busy", usualValues),
         {{Present, 1}, {Locked, 0}}},
        {"SeveralAddresses",
         modesOn(at("0x8") + at("2") + "<pAddress>Eight</pAddress><pAddress>Two</pAddress>") +
             number("Eight", "8") + number("Two", "0x02"),
         {}},
        {"AddressByAFormula",
         selector() +
             formula("Where", "SEL", "GevInterfaceSelector", "SEL * 0x80 + ((SEL = 0) ? 0x14 : 0x680)") +
             modesOn("<pAddress>Where</pAddress>"),
         {}},
        {"AddressByAFormulaInside",
         selector() +
             modesOn(at("0x10") + "<IntSwissKnife><pVariable Name=\"SEL\">GevInterfaceSelector</pVariable>"
                                  "<Constant Name=\"STEP\">-128</Constant><Formula>4 - SEL * STEP</Formula>"
                                  "</IntSwissKnife>"),
         {}},
        {"AddressByAnIndex",
         number("Index", "5") + modesOn("<pIndex Offset=\"0x4\">Index</pIndex>" + at("0")),
         {}},
        {"AddressByAnIndexWithoutAnOffset",
         number("Index", "2") + modesOn("<pIndex>Index</pIndex>" + at("12")),
         {}},
        {"AddressByAnIndexAndItsOffset",
         number("Index", "2") + number("Step", "010") + modesOn("<pIndex pOffset=\"Step\">Index</pIndex>"),
         {}},
        {"WhiteSpaceAndZeros",
         node("Boolean", PersistentIp,
              "\n\t<pValue>\r\n PersistentIPBit </pValue>\n<OnValue> 01 </OnValue>") +
             node("MaskedIntReg", " PersistentIPBit\t",
                  "<Address>\n 0x00000014\t</Address>\n<Length> 04 </Length><AccessMode> RW\n</AccessMode>"
                  "<pPort> Device </pPort><Bit> 031 </Bit><Sign> Unsigned </Sign><Endianess> BigEndian "
                  "</Endianess>") +
             node("Boolean", Dhcp, "<pValue> DHCPBit</pValue>") +
             node("MaskedIntReg", "DHCPBit",
                  at(" 020 ") + access(" RW ", "\n004\n") + "<LSB> 0x1E </LSB><MSB> +30 </MSB>" + bigEndian),
         {}},
    };
    return all;
}

const std::vector<Reset>& allResets()
{
    static const std::vector<Reset> all{
        {"Register", reset(one, resetAt("0x00042004")), 0x00042004, 1, 0xFFFFFFFF, false},
        {"RegisterToBeWrittenOnly",
         reset("<CommandValue>\n  1\t</CommandValue>", resetAt("0xFFFFFFF0", "WO")), 0xFFFFFFF0, 1,
         0xFFFFFFFF, true},
        {"LittleEndianRegister", reset(one, resetAt("0x18000010", "WO", littleEndian)), 0x18000010,
         0x01000000, 0xFFFFFFFF, true},
        {"BitOfARegister", reset(one, resetBit("0xF0F0400C", "<LSB>7</LSB><MSB>7</MSB>", "RW")), 0xF0F0400C,
         0x01000000, 0x01000000, false},
        {"BitToBeWrittenOnly",
         reset(" <CommandValue> 0x1 </CommandValue> ", resetBit("0x0000D340", "<Bit>16</Bit>", "WO")),
         0x0000D340, 0x00008000, 0xFFFFFFFF, true},
        {"BitOfALittleEndianRegister",
         reset(one, resetBit("0x18000010", "<Bit>31</Bit>", "RW", littleEndian)), 0x18000010, 0x00000080,
         0x00000080, false},
        {"ValueElsewhere",
         reset("<pCommandValue>ResetKey</pCommandValue>",
               number("ResetKey", " 01 ") + resetAt("0x00042004", "WO")),
         0x00042004, 1, 0xFFFFFFFF, true},
        {"FieldInTheUsualOrder",
         reset("<CommandValue>0x5A</CommandValue>",
               resetBit("0xF0F0400C", "<LSB>15</LSB><MSB>8</MSB>", "RW")),
         0xF0F0400C, 0x005A0000, 0x00FF0000, false},
        {"FieldInTheOtherOrder",
         reset("<CommandValue>0x5A</CommandValue>",
               resetBit("0xF0F0400C", "<LSB>8</LSB><MSB>15</MSB>", "RW")),
         0xF0F0400C, 0x005A0000, 0x00FF0000, false},
        {"LittleEndianFieldInTheUsualOrder",
         reset("<CommandValue>0x5A</CommandValue>",
               resetBit("0x18000010", "<LSB>8</LSB><MSB>15</MSB>", "RW", littleEndian)),
         0x18000010, 0x005A0000, 0x00FF0000, false},
        {"LittleEndianFieldInTheOtherOrder",
         reset("<CommandValue>0x5A</CommandValue>",
               resetBit("0x18000010", "<LSB>15</LSB><MSB>8</MSB>", "RW", littleEndian)),
         0x18000010, 0x005A0000, 0x00FF0000, false},
        {"EntryOfAStructure",
         reset(one, "  <StructReg Comment=\"Control\">" + at("0x0000D340") + access() + bigEndian +
                        "<StructEntry Name=\"Busy\"><AccessMode>RO</AccessMode><Bit>0</Bit></StructEntry>"
                        "<StructEntry Name=\"ResetReg\"><Bit>31</Bit></StructEntry></StructReg>\n"),
         0x0000D340, 1, 1, false},
    };
    return all;
}

const std::vector<Name>& allNames()
{
    static const std::vector<Name> all{
        {"StringRegister", nameRegister("DeviceUserID"), true, true},
        {"ReadOnlyStringRegister", nameRegister("DeviceUserID", {}, "RO"), true, false},
        {"StringRegisterByTheCapability",
         capability() + nameRegister("DeviceUserID", "<pIsImplemented>HasUserName</pIsImplemented>"), true,
         true},
        {"String", string("DeviceUserID", "UserNameReg") + nameRegister("UserNameReg"), false, true},
        {"StringOverAString",
         capability() + string("DeviceUserID", "UserName", "<pIsImplemented>HasUserName</pIsImplemented>") +
             string("UserName", "UserNameReg") + nameRegister("UserNameReg"),
         false, true},
        {"ReadOnlyString",
         string("DeviceUserID", "UserNameReg", "<ImposedAccessMode>RO</ImposedAccessMode>") +
             nameRegister("UserNameReg"),
         false, false},
    };
    return all;
}

std::string file(const std::string& nodes, const std::string& schemaMinor, std::size_t size,
                 const std::string& ofPort)
{
    std::string text =
        "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n<!-- Generated, do not edit. -->\r\n"
        "<RegisterDescription ModelName=\"GC 1200\" VendorName=\"Maker\" ToolTip=\"A camera\" "
        "StandardNameSpace=\"GEV\""
        " SchemaMajorVersion=\"1\" SchemaMinorVersion=\"" +
        schemaMinor +
        "\" SchemaSubMinorVersion=\"0\" MajorVersion=\"1\" MinorVersion=\"2\" SubMinorVersion=\"3\""
        " xmlns=\"http://www.genicam.org/GenApi/Version_1_" +
        schemaMinor +
        "\">\r\n<Group Comment=\"Root\">\r\n  <Category Name=\"Root\" "
        "NameSpace=\"Standard\"><pFeature>DeviceReset</pFeature>"
        "<pFeature>DeviceUserID</pFeature></Category>\r\n" +
        nodes + "</Group>\r\n<Port Name=\"Device\" NameSpace=\"Standard\">" + ofPort + "</Port>\r\n" +
        number("TLParamsLocked", "0") + "<Group Comment=\"Custom\">\r\n";
    for (int i = 0; text.size() < size; ++i)
        text += feature(i);
    return text + "</Group>\r\n</RegisterDescription>\r\n\r\n";
}

} // namespace descriptions
