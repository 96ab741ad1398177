// SPDX-License-Identifier: Apache-2.0
// Opens a camera whose memory and whose answers the input decides, and does to it what a save may do:
// heartbeats, reads, writes, its description, a node map upon it. Judges what is sent, and that control is
// given back.
#include "genapi/GenApi/GenApi.h"
#include "gvcp/Memory.h"
#include "gvcp/PendingAck.h"
#include "gvcp/Registers.h"
#include "sdk/Port.h"
#include "sdk/addressing/IpRestart.h"
#include "sdk/description/Description.h"
#include "sdk/description/DescriptionCompletion.h"
#include "sdk/network/CameraError.h"
#include "tests/fuzz/Features.h"
#include "tests/fuzz/Input.h"
#include "tests/fuzz/Require.h"
#include "tests/sdk/FakeCamera.h"
#include "tests/support/CameraDescriptions.h"
#include "tests/support/Zips.h"

#include <array>

using namespace std::chrono_literals;
using base::Bytes;
using base::ByteView;
using gvcp::Command;
using gvcp::Status;

namespace {

constexpr std::uint32_t DescriptionAddress = 0x00100000;

/// Files that say the same in different ways; of the second one features are missing, the third is the first
/// one zipped.
const std::string& usualDescription(unsigned number)
{
    using namespace descriptions;
    static const std::array<std::string, 3> all = [] {
        const std::string whole = file(allModes()[0].nodes + allResets()[0].nodes + allNames()[0].nodes);
        return std::array<std::string, 3>{whole, file(allNames()[1].nodes), zipOf({{"a.xml", whole}})};
    }();
    return all[number % all.size()];
}

class HostileCamera
{
public:
    explicit HostileCamera(ByteView bytes) : m_input(bytes)
    {
        m_camera.network.keepsSent = false;
        const auto obeyAndAnswer = m_camera.network.onSend;
        m_camera.network.onSend = [this, obeyAndAnswer](const FakeNetwork::Sent& sent) {
            judge(sent);
            obeyAndAnswer(sent);
        };
        m_camera.onCommand = [this](const gvcp::CommandPacket& command) {
            misbehave(command);
            return true;
        };
        m_camera.words[gvcp::reg::CurrentIpConfig] = 6;
        m_camera.words[gvcp::reg::PersistentIp] = m_camera.words[gvcp::reg::PersistentSubnetMask] =
            m_camera.words[gvcp::reg::PersistentGateway] = 0;
        fillMemory(m_input.byte());
    }

    void run()
    {
        const auto start = [this](std::chrono::milliseconds interval, std::function<bool()> beat) {
            require(interval >= 100ms && interval <= 1000ms);
            m_beat = std::move(beat);
            return nullptr;
        };
        try {
            const auto session =
                std::make_shared<sdk::Session>(m_camera.connect(), FakeCamera::Ip, FakeCamera::Mac, 3, start);
            require(session->isOpen() && session->interface() < gvcp::MaxInterfaces);
            sdk::storeWaitingAddress(*session, m_forced);
            sdk::Port port(session, m_forced);
            while (!m_input.isAtEnd())
                use(*session, port);
        } catch (const sdk::CameraError& error) {
            require(error.code() != RZ_OK && *error.what() != '\0');
        }
        require(!m_isTaken);
    }

private:
    /// What the camera has, whole or as the input says.
    void fillMemory(std::uint8_t choice)
    {
        if ((choice & 1) != 0)
            m_camera.words[gvcp::reg::GvcpCapability] |= gvcp::Capability::PendingAck;
        m_camera.words[gvcp::reg::GvcpConfiguration] = 0;
        if ((choice & 2) != 0)
            m_forced.keep(FakeCamera::Mac, {FakeCamera::Ip, "255.255.255.0"_ip, {}}, m_camera.network.now());
        if ((choice & 4) != 0)
            m_forced.setWaiting(FakeCamera::Mac, true);
        for (unsigned count = choice >> 3 & 3; count > 0; --count) {
            const std::uint32_t at = address();
            m_camera.words[at / 4 * 4] = m_input.u32();
        }
        describe(choice >> 5);
    }

    void describe(unsigned choice)
    {
        if (choice < 3) {
            const std::string& file = usualDescription(choice);
            m_description.assign(file.begin(), file.end());
        } else {
            const ByteView file = m_input.bytes(m_input.u16());
            m_description.assign(file.begin(), file.end());
        }
        char url[64];
        std::snprintf(url, sizeof url, "Local:a.xml;%X;%zX", DescriptionAddress, m_description.size());
        m_urls[0] = url;
        if (choice >= 5) {
            const ByteView first = m_input.bytes(m_input.byte());
            m_urls[0].assign(first.begin(), first.end());
            m_urls[1] = url;
        }
        m_description.resize((m_description.size() + 3) / 4 * 4);
    }

    void judge(const FakeNetwork::Sent& sent)
    {
        const auto command = gvcp::parseCommand(sent.bytes);
        require(command && command->id != 0 && (command->flags & gvcp::FlagAcknowledge) != 0);
        require(command->payload.size() <= gvcp::MaxPayload);
        const std::uint32_t at = command->payload.size() >= 4 ? base::readU32(command->payload, 0) : 0;
        require(sent.destination == FakeCamera::Ip || command->command == Command::ForceIp);
        require(at % 4 == 0 || command->command == Command::ForceIp);
        if (command->command == Command::WriteRegister && at == gvcp::reg::ControlChannelPrivilege)
            m_isTaken = base::readU32(command->payload, 4) != gvcp::Privilege::Open;
        if (command->command == Command::ReadMemory) {
            const auto range = gvcp::parseMemoryRange(command->payload);
            require(range && range->count % 4 == 0 && range->count > 0);
            require(range->count <= sdk::ControlChannel::MaxBlock);
        }
        if (command->command == Command::WriteMemory) {
            const auto block = gvcp::parseMemoryBlock(command->payload);
            require(block && block->data.size() % 4 == 0);
            require(block->data.size() <= sdk::ControlChannel::MaxBlock);
        }
        if (command->command != Command::ReadRegister && command->command != Command::ReadMemory)
            require(m_isTaken || command->command == Command::ForceIp ||
                    at == gvcp::reg::ControlChannelPrivilege);
    }

    void misbehave(const gvcp::CommandPacket& command)
    {
        const std::uint8_t how = m_input.byte();
        if (how < 0xB0) {
            obey(command);
            return;
        }
        switch (how % 10) {
        case 0: // Lost.
            break;
        case 1:
            m_camera.answer(command, Status{m_input.u16()});
            break;
        case 2:
            m_camera.answer(command, Status::Busy);
            break;
        case 3: {
            gvcp::CommandPacket pending = command;
            pending.command = gvcp::PendingCommand;
            m_camera.answer(pending, Status::Success,
                            gvcp::encodePendingAck(std::chrono::milliseconds{m_input.u16()}));
            obey(command);
            break;
        }
        case 4: {
            gvcp::CommandPacket other = command;
            other.id = static_cast<std::uint16_t>(other.id + m_input.byte());
            obey(other);
            break;
        }
        case 5: {
            const ByteView payload = m_input.bytes(m_input.byte());
            m_camera.answer(command, Status::Success, {payload.begin(), payload.end()});
            break;
        }
        case 6: {
            const ByteView datagram = m_input.bytes(m_input.byte());
            m_camera.network.deliver(1ms, 0, FakeCamera::Ip, {datagram.begin(), datagram.end()});
            break;
        }
        case 7:
            m_camera.becomeAnother();
            obey(command);
            break;
        case 8: // It has lost control.
            m_camera.words[gvcp::reg::ControlChannelPrivilege] = 0;
            obey(command);
            break;
        case 9:
            m_camera.answer(command, Status::AccessDenied);
            break;
        }
    }

    void obey(const gvcp::CommandPacket& command)
    {
        const auto range =
            command.command == Command::ReadMemory ? gvcp::parseMemoryRange(command.payload) : std::nullopt;
        const auto data = range ? fileData(*range) : std::nullopt;
        if (data)
            m_camera.answer(command, Status::Success, gvcp::encodeMemoryBlock({range->address, *data}));
        else
            m_camera.obey(command);
    }

    /// Of the URLs and the file, which would be many words.
    std::optional<Bytes> fileData(const gvcp::MemoryRange& range) const
    {
        for (unsigned i = 0; i < m_urls.size(); ++i) {
            const gvcp::TextRegister& at =
                i == 0 ? gvcp::reg::FirstDescriptionUrl : gvcp::reg::SecondDescriptionUrl;
            if (range.address != at.address || range.count != at.size)
                continue;
            Bytes url(m_urls[i].begin(), m_urls[i].end());
            url.resize(at.size);
            return url;
        }
        const std::uint64_t offset = std::uint64_t{range.address} - DescriptionAddress;
        if (range.address < DescriptionAddress || offset + range.count > m_description.size())
            return std::nullopt;
        const auto begin = m_description.begin() + static_cast<std::ptrdiff_t>(offset);
        return Bytes(begin, begin + range.count);
    }

    void use(sdk::Session& session, sdk::Port& port)
    {
        switch (m_input.byte() % 8) {
        case 0:
        case 1:
            if (m_beat && !m_beat())
                m_beat = nullptr;
            break;
        case 2:
        case 3:
            read(port);
            break;
        case 4:
            write(port);
            break;
        case 5:
            session.requireSameCamera();
            break;
        case 6:
            if (!std::exchange(m_hasNodeMap, true))
                useNodeMap(session, port);
            break;
        case 7:
            close(session);
            break;
        }
    }

    void close(sdk::Session& session)
    {
        m_beat = nullptr;
        if (m_input.byte() % 2 == 0)
            session.close();
        else
            closeWithIpRestart(session);
        require(!session.isOpen() && !m_isTaken);
    }

    void read(sdk::Port& port)
    {
        const auto at = static_cast<std::int64_t>(address());
        Bytes buffer(m_input.u16() % 2048);
        try {
            port.Read(buffer.data(), at, static_cast<std::int64_t>(buffer.size()));
        } catch (const GenICam::GenericException& exception) {
            require(*exception.GetDescription() != '\0');
        }
    }

    void write(sdk::Port& port)
    {
        const bool isRestart = m_input.byte() % 16 == 0;
        const auto at =
            isRestart ? static_cast<std::int64_t>(sdk::IpRestartAddress) : std::int64_t{address()};
        const std::size_t size = 1u + m_input.u16() % 1100;
        const Bytes data(size, m_input.byte());
        if (isRestart)
            m_beat = nullptr; // It ends with the session.
        try {
            port.Write(data.data(), at, static_cast<std::int64_t>(data.size()));
        } catch (const GenICam::GenericException& exception) {
            require(*exception.GetDescription() != '\0');
        }
    }

    void useNodeMap(sdk::Session& session, sdk::Port& port)
    {
        const auto limit = m_input.byte() % 2 == 0 ? RZ_MAX_DESCRIPTION : std::size_t{2000};
        const Bytes file = sdk::fetchDescription(session.channel());
        require(file.size() <= RZ_MAX_DESCRIPTION);
        const Bytes whole = sdk::completedDescription(file, true, session.interface(), limit);
        require(whole == file || whole.size() <= limit);
        m_beat = nullptr; // DeviceReset may end the session.
        try {
            const auto map =
                GenApi::CNodeMapFactory(GenApi::ContentType_Xml, whole.data(), whole.size()).CreateNodeMap();
            map->Connect(&port, "Device");
            useFeatures(*map);
        } catch (const GenICam::GenericException& exception) {
            require(*exception.GetDescription() != '\0');
        }
    }

    std::uint32_t address()
    {
        namespace reg = gvcp::reg;
        constexpr std::uint32_t Usual[] = {reg::UserDefinedName.address,
                                           reg::CurrentIpConfig,
                                           reg::CurrentIpConfig + 3,
                                           reg::PersistentIp,
                                           reg::HeartbeatTimeout,
                                           reg::InterfaceCount,
                                           reg::MacLow,
                                           reg::GvcpConfiguration,
                                           reg::GvcpCapability,
                                           0x0680,
                                           0x0684,
                                           DescriptionAddress,
                                           0xFFFFFFFC,
                                           0xA000};
        const std::uint8_t number = m_input.byte();
        return number < std::size(Usual) ? Usual[number] : m_input.u32();
    }

    Input m_input;
    FakeCamera m_camera;
    sdk::ForcedAddresses m_forced;
    Bytes m_description;
    std::array<std::string, 2> m_urls;
    std::function<bool()> m_beat;
    bool m_isTaken = false; ///< As far as commands tell that were sent.
    bool m_hasNodeMap = false;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    abortOnComplaints();
    HostileCamera({data, size}).run();
    return 0;
}
