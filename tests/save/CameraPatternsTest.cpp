// SPDX-License-Identifier: Apache-2.0
// Whole saves of cameras that are described in each way that occurs in the field, judged by what they hold.
#include "tests/network/OpenCamera.h"
#include "tests/network/Sdk.h"
#include "tests/save/FarmSaves.h"
#include "tests/support/CameraDescriptions.h"
#include "tests/support/Sanitizers.h"

#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <unistd.h>

using testing::ElementsAre;
using testing::StartsWith;

namespace {

constexpr unsigned IpConfiguration = 0x14;
constexpr unsigned UpperBits = 0xC0000000; ///< Of the IP configuration: other features'.
constexpr unsigned OtherBits = 0xA5A5A5A5; ///< Of a reset register.

const char OldName[] = "0123456789ABCDEF"; // Without a NUL at the end.
const char NewName[] = "FEDCBA9876543210";

std::string hex(std::uint32_t number)
{
    char text[11];
    std::snprintf(text, sizeof text, "0x%08X", number);
    return text;
}

/// A camera that is to be described in a certain way, and what is to become of it.
struct Described
{
    std::string what;
    std::string nodes;
    descriptions::Registers registers;
    descriptions::Reset reset = descriptions::allResets()[0];
    bool hasNewName = true;
    std::string saidOfTheName{}; ///< With a new one, at first; empty for nothing.
    std::string ofPort{};
    std::size_t size = 60'000; ///< Of its file, as text.
    bool isZipped = false;
};

class CameraPatterns : public FarmSaves
{
protected:
    CameraPatterns() { std::filesystem::create_directory(m_directory); }
    ~CameraPatterns() override { std::filesystem::remove_all(m_directory); }

    /// Each of them by both versions of the format.
    void describe(const std::vector<Described>& ways)
    {
        std::vector<std::string> members;
        for (const Described& way : ways)
            for (const char* schema : {"0", "1"}) {
                const auto number = cameras.size();
                cameras.push_back(way);
                cameras.back().what += std::string(", version 1.") + schema;
                members.push_back(membersOf(way, schema, number));
            }
        buildEach(members);
        const auto records = enumerate(site);
        for (int i = 0; i < count(); ++i) {
            const OpenCamera camera(site, *recordOf(records, macOf(i)));
            camera.write(IpConfiguration, UpperBits | 0x6);
        }
        findAgain();
    }

    int count() const { return static_cast<int>(cameras.size()); }

    /// From DHCP to a static address with another name, back, and to a link-local one.
    void saveToEachMode()
    {
        for (int i = 0; i < count(); ++i) {
            saves[i].wantStatic(newAddress(i));
            saves[i].wantName(NewName);
        }
        saveAndExpect(0x7, 1, NewName, [](int i) { return newAddress(i); });
        findAgain();
        for (int i = 0; i < count(); ++i) {
            saves[i].wantType("DHCP");
            if (cameras[static_cast<std::size_t>(i)].hasNewName)
                saves[i].wantName(OldName);
        }
        saveAndExpect(0x6, 2, OldName, [](int i) { return oldAddress(i); });
        findAgain();
        for (int i = 0; i < count(); ++i)
            saves[i].wantType("LLA");
        saveAndExpect(0x4, 3, OldName, [](int) { return "169.254."; });
    }

    std::vector<Described> cameras;

private:
    std::string membersOf(const Described& way, const std::string& schema, std::size_t number) const
    {
        const std::string path = m_directory / ("camera" + std::to_string(number) + ".xml");
        std::ofstream(path) << descriptions::file(way.nodes, schema, way.size, way.ofPort);
        const auto& reset = way.reset;
        std::string registers = R"({"address": ")" + hex(reset.address) + R"(", "value": ")" +
                                hex(OtherBits & ~reset.written) + R"(", "access": ")" +
                                (reset.isWriteOnly ? "WO" : "RW") + "\"}";
        for (const auto& [address, value] : way.registers)
            registers += R"(, {"address": ")" + hex(address) + R"(", "value": ")" + hex(value) + "\"}";
        return R"("description": ")" + path + R"(", "descriptionZip": )" + (way.isZipped ? "true" : "false") +
               R"(, "userName": ")" + OldName + R"(", "resetRegister": ")" + hex(reset.address) +
               R"(", "resetMask": ")" + hex(reset.written) + R"(", "registers": [)" + registers + "]";
    }

    /// What the reset register holds when it has been written: what the mask has is 0 again.
    static std::uint32_t afterReset(const descriptions::Reset& reset)
    {
        return reset.isWriteOnly ? 0 : OtherBits & ~reset.field & ~reset.written;
    }

    /// The address is what it begins with.
    void saveAndExpect(unsigned modes, int resets, const char* name,
                       const std::function<std::string(int)>& address)
    {
        // Each reads its camera's description meanwhile, which is much work for a sanitizer.
        saveAll(IsSanitized ? 8 : MaxCameras);
        for (int i = 0; i < count(); ++i) {
            const Described& way = cameras[static_cast<std::size_t>(i)];
            SCOPED_TRACE(way.what);
            auto said = saves[i].said();
            if (resets == 1 && !way.saidOfTheName.empty()) {
                EXPECT_THAT(said.front(), StartsWith(way.saidOfTheName));
                said.erase(said.begin());
            }
            EXPECT_THAT(said, ElementsAre(Rebooting, "Refresh", "End"));
            EXPECT_TRUE(becomesFree(i));
            expect(way, camera(i), modes, resets);
            EXPECT_THAT(camera(i).at("address").get<std::string>(), StartsWith(address(i)));
            EXPECT_EQ(camera(i).at("userName"), way.hasNewName ? name : OldName);
        }
    }

    static void expect(const Described& way, const nlohmann::json& after, unsigned modes, int resets)
    {
        EXPECT_EQ(after.at("ipConfigurationBits"), UpperBits | modes);
        const bool hasReset = way.nodes.find("DeviceReset") != std::string::npos;
        EXPECT_EQ(after.at("resets"), hasReset ? resets : 0);
        EXPECT_EQ(after.at("registers").at(hex(way.reset.address)),
                  hex(hasReset ? afterReset(way.reset) : OtherBits & ~way.reset.written));
        for (const auto& [number, value] : way.registers)
            EXPECT_EQ(after.at("registers").at(hex(number)), hex(value));
    }

    const std::filesystem::path m_directory = testing::TempDir() + "patterns-" + std::to_string(getpid());
};

std::string usualModes()
{
    return descriptions::allModes()[0].nodes;
}

std::string usualReset()
{
    return descriptions::allResets()[0].nodes;
}

std::string usualName()
{
    return descriptions::allNames()[0].nodes;
}

} // namespace

TEST_F(CameraPatterns, OfTheModesAreAllObeyed)
{
    std::vector<Described> ways;
    for (const auto& modes : descriptions::allModes())
        ways.push_back({modes.name, modes.nodes + usualReset() + usualName(), modes.registers});
    describe(ways);
    saveToEachMode();
}

TEST_F(CameraPatterns, OfTheResetAreAllObeyed)
{
    std::vector<Described> ways;
    for (const auto& reset : descriptions::allResets())
        ways.push_back({reset.name, usualModes() + reset.nodes + usualName(), {}, reset});
    describe(ways);
    saveToEachMode();
}

TEST_F(CameraPatterns, OfTheNameAreAllObeyed)
{
    std::vector<Described> ways;
    for (const auto& name : descriptions::allNames()) {
        Described way{name.name, usualModes() + usualReset() + name.nodes, {}};
        way.hasNewName = name.isWritable;
        way.saidOfTheName = name.isWritable ? "" : "Error: Set UserID Error: what:DeviceUserID cannot be set";
        ways.push_back(way);
    }
    describe(ways);
    saveToEachMode();
}

TEST_F(CameraPatterns, ThatLeaveSomethingOutAreObeyedByWayOfTheStandardsOwnRegisters)
{
    const std::string turned = "<SwapEndianess>Yes</SwapEndianess>";
    std::vector<Described> ways{
        {"nothing at all", "", {}},
        {"no modes", usualReset() + usualName(), {}},
        {"no reset", usualModes() + usualName(), {}},
        {"no name", usualModes() + usualReset(), {}},
    };
    for (std::size_t i = 0, whole = ways.size(); i < whole; ++i) {
        ways.push_back(ways[i]);
        ways.back().what += ", and the port turns words round";
        ways.back().ofPort = turned;
    }
    describe(ways);
    saveToEachMode();
}

TEST_F(CameraPatterns, AreObeyedInFilesOfAnyRealSizePlainOrZipped)
{
    std::vector<Described> ways;
    for (const std::size_t size : {0, 300'000, 1'300'000})
        for (const bool isZipped : {false, true}) {
            Described way{std::to_string(size) + (isZipped ? " bytes, zipped" : " bytes"),
                          usualModes() + usualReset() + usualName(),
                          {}};
            way.size = size;
            way.isZipped = isZipped;
            ways.push_back(way);
        }
    describe(ways);
    saveToEachMode();
}
