// SPDX-License-Identifier: Apache-2.0
#include "simulator/config/ReadQuirks.h"

#include "gvcp/Registers.h"

namespace simulator {

namespace {

using Config = CameraConfig;
template <typename T>
using Choice = std::pair<const char*, T>;

constexpr Choice<Config::AnswerBy> AnswerWays[] = {
    {"unicast", Config::AnswerBy::Unicast},
    {"arp", Config::AnswerBy::Arp},
    {"broadcast", Config::AnswerBy::Broadcast},
};

constexpr Choice<Config::ForceIpAcknowledge> ForceIpAcknowledges[] = {
    {"old", Config::ForceIpAcknowledge::FromOldAddress},
    {"new", Config::ForceIpAcknowledge::FromNewAddress},
    {"broadcast", Config::ForceIpAcknowledge::Broadcast},
    {"never", Config::ForceIpAcknowledge::Never},
};

constexpr std::size_t MaxEndpointText = 21; // bytes: "255.255.255.255:65535"

constexpr Choice<std::uint32_t> Privileges[] = {
    {"exclusive", gvcp::Privilege::Exclusive},
    {"control", gvcp::Privilege::Control},
};

constexpr Choice<NoiseKind> NoiseKinds[] = {
    {"truncated", NoiseKind::Truncated}, {"oversized", NoiseKind::Oversized}, {"foreign", NoiseKind::Foreign},
    {"duplicate", NoiseKind::Duplicate}, {"random", NoiseKind::Random},       {"wrongId", NoiseKind::WrongId},
};

constexpr Choice<Config::UserNameAccess> UserNameAccesses[] = {
    {"readWrite", Config::UserNameAccess::ReadWrite},
    {"readOnly", Config::UserNameAccess::ReadOnly},
    {"none", Config::UserNameAccess::None},
};

/// The enumerators of an enumeration by these names, in order.
template <typename Enum, std::size_t Count>
std::vector<Choice<Enum>> choicesOf(const std::array<std::string_view, Count>& names)
{
    std::vector<Choice<Enum>> choices;
    for (std::size_t i = 0; i < Count; ++i)
        choices.emplace_back(names[i].data(), Enum{static_cast<int>(i)});
    return choices;
}

Fault readFault(const nlohmann::json& value, const std::string& name)
{
    JsonObject object(value, name + ", faults");
    const auto byCommand = object.choice<Fault>("command", faultsByName());
    Fault fault = byCommand.value_or(Fault{});
    const auto action = object.choice<FaultAction>("action", choicesOf<FaultAction>(FaultActionNames));
    fault.times = object.number("times", 1, UINT32_MAX);
    fault.after = object.number("after", 0, UINT32_MAX).value_or(fault.after);
    fault.every = object.number("every", 1, UINT32_MAX).value_or(fault.every);
    fault.time = object.milliseconds("time", 1, UINT32_MAX).value_or(fault.time);
    object.rejectOthers();
    if (!byCommand || !action)
        object.fail(byCommand ? "action" : "command", "is missing");
    fault.action = *action;
    if (const auto why = whyImpossible(fault))
        object.fail("action", "is impossible: " + *why);
    return fault;
}

void readControl(JsonObject& object, Config& camera)
{
    camera.heartbeatTimeout =
        object.milliseconds("heartbeatTimeout", 1, UINT32_MAX).value_or(camera.heartbeatTimeout);
    const auto holder = object.address("heldBy");
    if (holder)
        camera.heldBy = Config::Holder{*holder};
    const auto ofHolder = [&](const char* member, const auto& value) {
        if (value && !holder)
            object.fail(member, "needs \"heldBy\"");
        return value;
    };
    if (const auto privilege =
            ofHolder("heldPrivilege", object.choice<std::uint32_t>("heldPrivilege", Privileges)))
        camera.heldBy->privilege = *privilege;
    if (const auto port = ofHolder("heldPort", object.number("heldPort", 1, UINT16_MAX)))
        camera.heldBy->port = static_cast<std::uint16_t>(*port);
    if (const auto isOff = ofHolder("heartbeatOff", object.flag("heartbeatOff")))
        camera.heldBy->heartbeatOff = *isOff;
    const auto stream = ofHolder("stream", object.text("stream", MaxEndpointText));
    if (stream)
        camera.heldBy->stream = parseEndpoint(*stream);
    if (stream && !camera.heldBy->stream)
        object.fail("stream", "must be an address and a port such as \"192.168.1.5:50020\"");
    if (stream && camera.streams == 0)
        object.fail("stream", "cannot go with a camera of no \"streams\"");
    if (camera.heldBy && camera.heldBy->heartbeatOff && !camera.hasHeartbeatOff)
        object.fail("heartbeatOff", "cannot be true for a camera whose \"hasHeartbeatOff\" is false");
}

void readCapabilities(JsonObject& object, Config& camera)
{
    camera.writesMemory = object.flag("writeMemory").value_or(true);
    camera.hasPendingAck = object.flag("hasPendingAck").value_or(true);
    camera.pendingAckOn = object.flag("pendingAckOn").value_or(false);
    if (camera.pendingAckOn && !camera.hasPendingAck)
        object.fail("pendingAckOn", "cannot be true for a camera whose \"hasPendingAck\" is false");
    camera.streams = object.number("streams", 0, Config::MaxStreams).value_or(camera.streams);
    camera.tellsHolder = object.flag("tellsHolder").value_or(true);
    camera.hasHeartbeatOff = object.flag("hasHeartbeatOff").value_or(true);
    if (const auto speed = object.number("linkSpeed", 0, 400000))
        camera.linkSpeed = *speed > 0 ? speed : std::nullopt;
}

void readAnswers(JsonObject& object, Config& camera)
{
    camera.answerDelay = object.milliseconds("answerDelay", 0, 60000).value_or(camera.answerDelay);
    camera.arpLifetime = object.milliseconds("arpLifetime", 0, UINT32_MAX).value_or(camera.arpLifetime);
    camera.answerBy = object.choice<Config::AnswerBy>("answer", AnswerWays).value_or(camera.answerBy);
    camera.forceIpAcknowledge =
        object.choice<Config::ForceIpAcknowledge>("forceIpAcknowledge", ForceIpAcknowledges)
            .value_or(camera.forceIpAcknowledge);
    camera.forceIpOffTime = object.milliseconds("forceIpOffTime", 0, 60000).value_or(camera.forceIpOffTime);
    camera.rebootsWithoutAcknowledge = object.flag("rebootsWithoutAck").value_or(false);
    camera.readMemoryOmitsAddress = object.flag("readMemoryOmitsAddress").value_or(false);
    camera.acknowledgeExtra = object.number("acknowledgeExtra", 0, 64).value_or(0);
}

} // namespace

void readQuirks(JsonObject& object, const std::string& name, CameraConfig& camera)
{
    readCapabilities(object, camera);
    readControl(object, camera);
    readAnswers(object, camera);
    camera.userNameAccess = object.choice<Config::UserNameAccess>("userNameAccess", UserNameAccesses)
                                .value_or(camera.userNameAccess);
    if (camera.userNameAccess == Config::UserNameAccess::None && !camera.userName.empty())
        object.fail("userNameAccess", "cannot be \"none\" for a camera with a \"userName\"");
    if (const nlohmann::json* const faults = object.array("faults"))
        for (const nlohmann::json& fault : *faults)
            camera.faults.push_back(readFault(fault, name));
    camera.noise = object.choices<NoiseKind>("noise", NoiseKinds);
    camera.loss = object.probability("loss").value_or(0);
    camera.forgedAnswers = object.number("forgedAnswers", 0, 1000000).value_or(0);
}

} // namespace simulator
