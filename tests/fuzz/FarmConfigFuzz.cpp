// SPDX-License-Identifier: Apache-2.0
// Feeds texts of any kind to what reads a farm's configuration, and puts cameras that it accepts into a farm.
#include "gvcp/DiscoveryAck.h"
#include "gvcp/Registers.h"
#include "simulator/Commands.h"
#include "simulator/Farm.h"
#include "simulator/config/ReadFarm.h"
#include "tests/fuzz/Require.h"

#include <nlohmann/json.hpp>
#include <set>

using namespace simulator;
using std::chrono::milliseconds;

namespace {

constexpr std::uint32_t FirstMakersRegister = 0xA000;

bool isOneInterfaces(const base::MacAddress& mac)
{
    return (mac.bytes[0] & 1) == 0 && mac != base::MacAddress{};
}

bool isTime(milliseconds time, milliseconds least = milliseconds{0})
{
    return time >= least && time <= milliseconds{60000};
}

void judgeTexts(const CameraConfig& camera)
{
    require(camera.manufacturer.size() <= 32 && camera.model.size() <= 32 && camera.version.size() <= 32);
    require(camera.info.size() <= 48 && camera.serial.size() <= 16 && camera.userName.size() <= 16);
    require(camera.description.url.size() <= gvcp::reg::FirstDescriptionUrl.size &&
            camera.description.secondUrl.size() <= gvcp::reg::SecondDescriptionUrl.size);
    require(camera.userName.empty() || camera.userNameAccess != CameraConfig::UserNameAccess::None);
}

void judgeAddresses(const CameraConfig& camera)
{
    require(isOneInterfaces(camera.mac));
    require(camera.interface < camera.interfaceCount() && camera.interfaceCount() <= gvcp::MaxInterfaces);
    for (const base::MacAddress& mac : camera.interfaceMacs)
        require(isOneInterfaces(mac));
    require(camera.interfaceMacs.empty() || camera.interfaceMacs[camera.interface] == camera.mac);
    require(camera.ip.mask.isMask() && camera.persistent.mask.isMask());
    require(camera.hasPersistentIp || camera.ipMethod != CameraConfig::IpMethod::Persistent);
}

void judgeRegisters(const CameraConfig& camera)
{
    require(camera.resetRegister >= FirstMakersRegister && camera.resetRegister % 4 == 0);
    require(camera.resetMask != 0);
    for (const auto& each : camera.registers)
        require(each.address >= FirstMakersRegister && each.address % 4 == 0);
    require(camera.description.file && camera.description.file->size() % 4 == 0 &&
            camera.description.file->size() <= CameraConfig::MaxDescriptionSize);
}

void judgeQuirks(const CameraConfig& camera)
{
    require(isTime(camera.rebootTime) && isTime(camera.answerDelay) && isTime(camera.forceIpOffTime));
    require(isTime(camera.dhcpTimeout, milliseconds{1}) && isTime(camera.probeInterval, milliseconds{1}));
    require(camera.heartbeatTimeout >= milliseconds{1});
    require(camera.loss >= 0 && camera.loss <= 1);
    require(camera.acknowledgeExtra <= 64 && camera.forgedAnswers <= 1000000);
    require(!camera.linkSpeed || (*camera.linkSpeed >= 1 && *camera.linkSpeed <= 400000));
    require(!camera.heldBy || !camera.heldBy->heartbeatOff || camera.hasHeartbeatOff);
    require(camera.streams <= CameraConfig::MaxStreams);
    require(!camera.heldBy || !camera.heldBy->stream ||
            (camera.streams > 0 && camera.heldBy->stream->port > 0));
    require(camera.hasPendingAck || !camera.pendingAckOn);
    for (const Fault& fault : camera.faults) {
        require(!whyImpossible(fault) && fault.times != 0u && fault.every >= 1);
        require(!fault.isOfChange || !fault.request);
    }
}

void judge(const FarmConfig& config)
{
    require(!config.cameras.empty() || !config.neighbours.empty());
    require(config.cameras.size() <= FarmConfig::MaxCameras);
    require(config.neighbours.size() <= FarmConfig::MaxNeighbours);
    std::set<base::MacAddress> macs;
    for (const CameraConfig& camera : config.cameras) {
        require(macs.insert(camera.mac).second);
        judgeTexts(camera);
        judgeAddresses(camera);
        judgeRegisters(camera);
        judgeQuirks(camera);
    }
    for (const NeighbourConfig& neighbour : config.neighbours) {
        require(macs.insert(neighbour.mac).second && isOneInterfaces(neighbour.mac));
        require(neighbour.address.canBeHost() != (neighbour.asks == NeighbourConfig::Asks::Dhcp));
        require(isTime(neighbour.every, milliseconds{10}));
    }
}

/// As a field holds it that is full without a NUL.
std::string untilNul(const std::string& text)
{
    return text.c_str();
}

void putIntoAFarm(FarmConfig config)
{
    constexpr std::size_t Enough = 2;
    config.cameras.resize(std::min(config.cameras.size(), Enough));
    TimerQueue timers(TimerQueue::Clock::time_point{});
    Farm farm(config, timers, [](const Frame&) {});
    for (std::size_t i = 0; i < config.cameras.size(); ++i) {
        const CameraConfig& wanted = config.cameras[i];
        const auto block = farm.stations()[i]->camera().registers().discoveryBlock();
        const auto present = gvcp::parseDiscoveryAck(block);
        require(present && present->mac == wanted.mac);
        require(present->modelName == untilNul(wanted.model));
        require(present->serialNumber == untilNul(wanted.serial));
        require(present->userDefinedName == untilNul(wanted.userName));
        require(nlohmann::json::accept(runCommand(farm, "show " + wanted.mac.toText())));
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    try {
        // A file that such a text names is none there.
        FarmConfig config = readFarm({reinterpret_cast<const char*>(data), size}, "/nonexistent");
        judge(config);
        putIntoAFarm(std::move(config));
    } catch (const ConfigError& error) {
        require(*error.what() != '\0');
    }
    return 0;
}
