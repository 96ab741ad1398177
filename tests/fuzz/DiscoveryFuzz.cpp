// SPDX-License-Identifier: Apache-2.0
// Looks for cameras, and forces an address onto one, on a network whose answers the input decides: which,
// when, from where and how malformed. Judges what is sent, how long it takes and what is said to have been
// found.
#include "gvcp/ForceIp.h"
#include "gvcp/Memory.h"
#include "gvcp/Registers.h"
#include "sdk/Enumeration.h"
#include "sdk/ForceIpExchange.h"
#include "sdk/RecordTable.h"
#include "tests/fuzz/Input.h"
#include "tests/fuzz/Require.h"
#include "tests/fuzz/Utf8.h"
#include "tests/sdk/FakeNetwork.h"

#include <cstring>

using namespace std::chrono_literals;
using gvcp::Bytes;
using gvcp::Command;

namespace {

constexpr gvcp::Ipv4 Host = 0xC0A80105;

std::vector<sdk::Adapter> adaptersOf(std::uint8_t choice)
{
    switch (choice % 6) {
    case 0:
        return {adapterWith(1, Host)};
    case 1: // Two in one subnet.
        return {adapterWith(1, Host), adapterWith(2, 0xC0A80106)};
    case 2: // Several addresses, one in a subnet without a broadcast address.
        return {{"eth0", 3, {{Host, 0xFFFFFF00}, {0x0A000005, 0xFFFFFFFE}}},
                adapterWith(4, 0xA9FE0105, 0xFFFF0000)};
    case 3: // A subnet of one, and one that is everything.
        return {adapterWith(1, Host, 0xFFFFFFFF), adapterWith(2, 0x0A000005, 0)};
    case 4:
        return {};
    default:
        return {adapterWith(1, Host, 0xFFFFFFFC)};
    }
}

bool isOwnBroadcast(const sdk::Adapter& adapter, gvcp::Ipv4 address)
{
    return address == gvcp::LimitedBroadcast || adapter.isBroadcast(address);
}

class Hostile
{
public:
    explicit Hostile(gvcp::ByteView bytes) : m_input(bytes), m_network(adaptersOf(m_input.byte()))
    {
        m_network.keepsSent = false;
        const std::uint8_t broken = m_input.byte();
        if (broken >= 0xF0)
            m_network.brokenAdapters = {broken % 2u};
        m_network.onSend = [this](const FakeNetwork::Sent& sent) {
            judge(sent);
            answer(sent);
        };
    }

    void run()
    {
        const std::uint8_t mode = m_input.byte();
        if (mode % 4 != 1)
            enumerate();
        if (mode % 4 == 2)
            enumerate();
        if (mode % 4 != 0)
            force();
    }

private:
    void enumerate()
    {
        const auto begin = m_network.now();
        const auto found =
            enumerateCameras(m_network, [this](const gvcp::MacAddress& mac, const sdk::Adapter& adapter) {
                return m_records.knows(mac, adapter.index);
            });
        const auto& adapters = m_network.adapters();
        require(found.cameras.size() <= m_delivered && found.failures.size() <= adapters.size());
        require(adapters.empty() || m_network.now() - begin >= 1150ms);
        require(m_network.now() - begin <= 1350ms);
        const sdk::FoundCamera* before = nullptr;
        for (const sdk::FoundCamera& camera : found.cameras) {
            judge(camera);
            require(!before || std::pair(before->identity.mac, before->adapter) <
                                   std::pair(camera.identity.mac, camera.adapter));
            before = &camera;
        }
        list(found);
    }

    void judge(const sdk::FoundCamera& camera)
    {
        require(camera.adapter < m_network.adapters().size());
        const sdk::Adapter& adapter = m_network.adapters()[camera.adapter];
        require(camera.isReachable == (adapter.inSubnetOf(camera.identity.ip) != nullptr));
        require(camera.adapterAddress == adapter.addressTowards(camera.identity.ip));
        require(camera.isReachable || !camera.isAccessible);
        require(camera.isConsistent || !camera.isProven);
    }

    /// A record stays where it is, and is its camera's.
    void list(const sdk::FoundCameras& found)
    {
        RZ_CC_DEVICE_INFO_LIST list{};
        const unsigned unlisted =
            m_records.publish(found.cameras, m_network.adapters(), m_network.now(), list);
        require(list.nDeviceCount <= RZ_MAX_DEVICES && list.nDeviceCount <= found.cameras.size());
        require(unlisted <= found.cameras.size() - list.nDeviceCount);
        std::set<const RZ_CC_DEVICE_INFO*> seen;
        for (std::uint32_t i = 0; i < list.nDeviceCount; ++i) {
            const RZ_CC_DEVICE_INFO& record = *list.apDeviceInfo[i];
            require(seen.insert(&record).second);
            const std::pair key(sdk::macOf(record), record.stGigEInfo.nNetExportIndex);
            require(m_known.emplace(key, &record).first->second == &record);
            judge(record.stGigEInfo);
        }
        if (list.nDeviceCount > 0)
            m_chosen = *list.apDeviceInfo[0];
    }

    static void judge(const RZ_GIGE_DEVICE_INFO& camera)
    {
        judgeText(camera.szManufacturerName);
        judgeText(camera.szModelName);
        judgeText(camera.szDeviceVersion);
        judgeText(camera.szManufacturerInfo);
        judgeText(camera.szSerialNumber);
        judgeText(camera.szUserDefinedName);
    }

    template <std::size_t Size>
    static void judgeText(const char (&field)[Size])
    {
        const std::size_t length = strnlen(field, Size);
        require(length < Size && isUtf8({field, length}));
    }

    /// One that was listed by another process.
    static RZ_CC_DEVICE_INFO usualCamera()
    {
        RZ_CC_DEVICE_INFO camera{};
        camera.nMacHigh = 0x0200;
        camera.nMacLow = 1;
        camera.stGigEInfo.nDeviceIp = Host + 15;
        camera.stGigEInfo.nDeviceSubnetMask = 0xFFFFFF00;
        return camera;
    }

    void force()
    {
        const auto begin = m_network.now();
        m_forces = 0;
        const RZ_GIGE_DEVICE_INFO& info = m_chosen.stGigEInfo;
        const gvcp::ForceIp before{sdk::macOf(m_chosen), info.nDeviceIp, info.nDeviceSubnetMask,
                                   info.nDeviceGateway};
        m_wanted = before;
        if (m_input.byte() % 4 != 0)
            m_wanted = {before.mac, address(), 0xFFFFFF00, 0};
        const RZ_ERROR result = sdk::forceIp(m_network, m_wanted, before);
        require(result == RZ_OK || result == RZ_ERROR_NETWORK || result == RZ_ERROR_NO_ANSWER ||
                result == RZ_ERROR_ACCESS_DENIED || result == RZ_ERROR_REFUSED);
        require(m_delivered > 0 || result == RZ_ERROR_NETWORK || result == RZ_ERROR_NO_ANSWER);
        require(m_forces <= 6);
        require(m_network.now() - begin <= 9s);
    }

    void judge(const FakeNetwork::Sent& sent)
    {
        const auto command = gvcp::parseCommand(sent.bytes);
        require(command && command->id != 0 && (command->flags & gvcp::FlagAcknowledge) != 0);
        require(command->payload.size() <= gvcp::MaxPayload);
        const sdk::Adapter& adapter = m_network.adapters()[sent.adapter];
        require(std::any_of(adapter.addresses.begin(), adapter.addresses.end(),
                            [&sent](const auto& own) { return own.address == sent.source; }));
        switch (command->command) {
        case Command::Discovery:
            require(command->payload.empty() && isOwnBroadcast(adapter, sent.destination));
            break;
        case Command::ForceIp:
            ++m_forces;
            require(gvcp::parseForceIp(command->payload) == m_wanted);
            require(sent.adapter == 0 && isOwnBroadcast(adapter, sent.destination));
            break;
        default:
            require(command->command == Command::ReadRegister &&
                    gvcp::parseWords(command->payload) ==
                        std::vector<std::uint32_t>{gvcp::reg::ControlChannelPrivilege});
        }
    }

    void answer(const FakeNetwork::Sent& sent)
    {
        for (unsigned count = m_input.byte() % 4; count > 0 && !m_input.isAtEnd(); --count)
            answerOnce(sent);
    }

    void answerOnce(const FakeNetwork::Sent& sent)
    {
        const auto command = sent.command();
        const std::uint8_t how = m_input.byte();
        const bool isLate = (how & 0x80) != 0;
        const auto id = isLate ? static_cast<std::uint16_t>(command.id - m_input.byte()) : command.id;
        const gvcp::Ipv4 source = (how & 0x40) != 0 ? address() : Host + 15;
        switch ((how & 0x3F) % 7) {
        case 0: {
            const auto camera = identity();
            deliver(camera.ip, discoveryAnswer(id, camera));
            break;
        }
        case 1:
            deliver(source, discoveryAnswer(id, identity()));
            break;
        case 2:
            deliver(source, gvcp::encodeAcknowledge(Command::Discovery, gvcp::Status::Success, id,
                                                    m_input.bytes(m_input.byte())));
            break;
        case 3:
            deliver(sent.destination, registerAnswer(id, m_input.byte() % 4));
            break;
        case 4:
            deliver(source, gvcp::encodeAcknowledge(command.command, gvcp::Status{m_input.u16()}, id));
            break;
        case 5:
            deliver(source, gvcp::encodeAcknowledge(Command::ForceIp, gvcp::Status::Success, id));
            break;
        case 6:
            deliver(source, m_input.bytes(m_input.byte()));
            break;
        }
    }

    void deliver(gvcp::Ipv4 source, gvcp::ByteView bytes)
    {
        const std::uint8_t when = m_input.byte();
        const auto delay = std::chrono::milliseconds{when < 0x80 ? when : when * 25u};
        const std::size_t adapter = m_input.byte() % m_network.adapters().size();
        m_network.deliver(delay, adapter, source, {bytes.begin(), bytes.end()});
        ++m_delivered;
    }

    gvcp::DiscoveryAck identity()
    {
        const std::uint8_t number = m_input.byte();
        gvcp::DiscoveryAck camera = cameraAt(number % 16, address());
        camera.ipConfigOptions = camera.ipConfigCurrent = number / 16;
        if (number >= 0x80) {
            camera.modelName = text();
            camera.userDefinedName = text();
        }
        return camera;
    }

    std::string text()
    {
        const auto bytes = m_input.bytes(m_input.byte() % 40);
        return {bytes.begin(), bytes.end()};
    }

    gvcp::Ipv4 address()
    {
        constexpr gvcp::Ipv4 Usual[] = {Host + 15, Host + 16,  Host,       0xC0A801FF, 0x0A000004,
                                        0,         0x7F000001, 0xE0000001, 0xFFFFFFFF, 0xA9FE0707};
        const std::uint8_t number = m_input.byte();
        return number < 0xF0 ? Usual[number % std::size(Usual)] : m_input.u32();
    }

    Input m_input;
    FakeNetwork m_network;
    sdk::RecordTable m_records;
    std::map<std::pair<gvcp::MacAddress, std::uint32_t>, const RZ_CC_DEVICE_INFO*> m_known;
    RZ_CC_DEVICE_INFO m_chosen = usualCamera();
    gvcp::ForceIp m_wanted;
    unsigned m_forces = 0;
    std::size_t m_delivered = 0; ///< In all: what comes late may by chance answer a later question.
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    Hostile({data, size}).run();
    return 0;
}
