// SPDX-License-Identifier: Apache-2.0
// Looks for cameras, and forces an address onto one, on a network whose answers the input decides: which,
// when, from where and how malformed. Judges what is sent, how long it takes and what is said to have been
// found.
#include "gvcp/ForceIp.h"
#include "gvcp/Memory.h"
#include "gvcp/Registers.h"
#include "sdk/addressing/ForceIpExchange.h"
#include "sdk/discovery/Enumeration.h"
#include "sdk/discovery/Record.h"
#include "sdk/discovery/RecordTable.h"
#include "tests/fuzz/Input.h"
#include "tests/fuzz/Require.h"
#include "tests/fuzz/Utf8.h"
#include "tests/sdk/FakeNetwork.h"

#include <cstring>

using namespace std::chrono_literals;
using base::Bytes;
using gvcp::Command;

namespace {

constexpr base::Ipv4 Host = "192.168.1.5"_ip;
/// Where a camera mostly is.
constexpr base::Ipv4 Usual = "192.168.1.20"_ip;

std::vector<sdk::Adapter> adaptersOf(std::uint8_t choice)
{
    switch (choice % 6) {
    case 0:
        return {adapterWith(1, Host)};
    case 1: // Two in one subnet.
        return {adapterWith(1, Host), adapterWith(2, "192.168.1.6"_ip)};
    case 2: // Several addresses, one in a subnet without a broadcast address.
        return {{"eth0", 3, {{Host, "255.255.255.0"_ip}, {"10.0.0.5"_ip, "255.255.255.254"_ip}}},
                adapterWith(4, "169.254.1.5"_ip, "255.255.0.0"_ip)};
    case 3: // A subnet of one, and one that is everything.
        return {adapterWith(1, Host, "255.255.255.255"_ip), adapterWith(2, "10.0.0.5"_ip, "0.0.0.0"_ip)};
    case 4:
        return {};
    default:
        return {adapterWith(1, Host, "255.255.255.252"_ip)};
    }
}

bool isOwnBroadcast(const sdk::Adapter& adapter, base::Ipv4 address)
{
    return address == base::LimitedBroadcast || adapter.isBroadcast(address);
}

class Hostile
{
public:
    explicit Hostile(base::ByteView bytes) : m_input(bytes), m_network(adaptersOf(m_input.byte()))
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
            enumerateCameras(m_network, [this](const base::MacAddress& mac, const sdk::Adapter& adapter) {
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
        require(camera.isReachable == (adapter.inSubnetOf(camera.identity.ip.address) != nullptr));
        require(camera.adapterAddress == adapter.addressTowards(camera.identity.ip.address));
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
        camera.stGigEInfo.nDeviceIp = Usual.number();
        camera.stGigEInfo.nDeviceSubnetMask = "255.255.255.0"_ip.number();
        return camera;
    }

    void force()
    {
        const auto begin = m_network.now();
        m_forces = 0;
        const base::IpSettings before = sdk::ipSettingsOf(m_chosen);
        m_wanted = {sdk::macOf(m_chosen), before};
        if (m_input.byte() % 4 != 0)
            m_wanted.ip = {address(), "255.255.255.0"_ip, {}};
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
        const base::Ipv4 source = (how & 0x40) != 0 ? address() : Usual;
        switch ((how & 0x3F) % 7) {
        case 0: {
            const auto camera = identity();
            deliver(camera.ip.address, discoveryAnswer(id, camera));
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

    void deliver(base::Ipv4 source, base::ByteView bytes)
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

    base::Ipv4 address()
    {
        constexpr base::Ipv4 Likely[] = {
            Usual,        "192.168.1.21"_ip, Host,           "192.168.1.255"_ip,   "10.0.0.4"_ip,
            "0.0.0.0"_ip, "127.0.0.1"_ip,    "224.0.0.1"_ip, "255.255.255.255"_ip, "169.254.7.7"_ip};
        const std::uint8_t number = m_input.byte();
        return number < 0xF0 ? Likely[number % std::size(Likely)] : base::Ipv4(m_input.u32());
    }

    Input m_input;
    FakeNetwork m_network;
    sdk::RecordTable m_records;
    std::map<std::pair<base::MacAddress, std::uint32_t>, const RZ_CC_DEVICE_INFO*> m_known;
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
