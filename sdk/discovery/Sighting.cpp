// SPDX-License-Identifier: Apache-2.0
#include "sdk/discovery/Sighting.h"

#include "gvcp/Registers.h"

namespace sdk {

namespace {

namespace reg = gvcp::reg;
using Value = std::optional<std::uint32_t>;

/// Both or none: half of an address and its port is no more than a guess.
void add(RZ_CC_SIGHTING& sighting, RZ_TOLD what, Value first, std::uint32_t& firstField, Value second,
         std::uint32_t& secondField)
{
    if (!first || !second)
        return;
    sighting.nTold |= what;
    firstField = *first;
    secondField = *second;
}

void add(RZ_CC_SIGHTING& sighting, RZ_TOLD what, Value value, std::uint32_t& field)
{
    if (!value)
        return;
    sighting.nTold |= what;
    field = *value;
}

} // namespace

void addPrivilege(RZ_CC_SIGHTING& sighting, const AccessCheck& access, std::size_t adapter, base::Ipv4 camera)
{
    const auto privilege = access.privilege(adapter, camera);
    add(sighting, RZ_TOLD_PRIVILEGE, privilege, sighting.nPrivilege);
    sighting.nRegisters = privilege                           ? RZ_REGISTERS_TOLD
                          : access.isRefused(adapter, camera) ? RZ_REGISTERS_REFUSED
                                                              : RZ_REGISTERS_SILENT;
}

void addTold(RZ_CC_SIGHTING& sighting, const RegisterSurvey& survey, const base::MacAddress& mac)
{
    sighting.nQuestions = survey.lossQuestions();
    sighting.nReplies = survey.lossReplies();
    if (survey.isOther(mac)) {
        sighting.nRegisters = RZ_REGISTERS_OTHER_CAMERA;
        sighting.nTold = 0;
        sighting.nPrivilege = 0;
        return;
    }
    constexpr std::uint32_t portBits = 0xFFFF;
    const auto port = [&survey](std::uint32_t address) {
        const Value value = survey.value(address);
        return value ? Value(*value & portBits) : value;
    };
    add(sighting, RZ_TOLD_HOLDER, survey.value(reg::ApplicationAddress), sighting.nHolderIp,
        port(reg::ApplicationPort), sighting.nHolderPort);
    add(sighting, RZ_TOLD_HEARTBEAT_TIMEOUT, survey.value(reg::HeartbeatTimeout), sighting.nHeartbeatTimeout);
    if (const Value configuration = survey.value(reg::GvcpConfiguration))
        add(sighting, RZ_TOLD_HEARTBEAT_OFF,
            (*configuration & gvcp::Configuration::HeartbeatOff) != 0 ? 1 : 0, sighting.nHeartbeatOff);
    add(sighting, RZ_TOLD_LINK_SPEED, survey.valueOf(mac, reg::LinkSpeed), sighting.nLinkSpeed);
    add(sighting, RZ_TOLD_STREAM, survey.value(reg::StreamAddress), sighting.nStreamIp, port(reg::StreamPort),
        sighting.nStreamPort);
    const Value gateway = survey.valueOf(mac, reg::PersistentGateway);
    if (!gateway)
        return;
    add(sighting, RZ_TOLD_STORED, survey.valueOf(mac, reg::PersistentIp), sighting.nStoredIp,
        survey.valueOf(mac, reg::PersistentSubnetMask), sighting.nStoredMask);
    if ((sighting.nTold & RZ_TOLD_STORED) != 0)
        sighting.nStoredGateway = *gateway;
}

} // namespace sdk
