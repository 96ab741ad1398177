// SPDX-License-Identifier: Apache-2.0
// Hands a farm the frames that the input says, whole ones byte by byte or ones that fit its cameras, and lets
// its clock go on between them. What the cameras send must be fit for a wire, and theirs to send.
#include "gvcp/ForceIp.h"
#include "gvcp/Memory.h"
#include "gvcp/Packet.h"
#include "gvcp/Registers.h"
#include "simulator/Commands.h"
#include "simulator/Farm.h"
#include "simulator/config/ReadFarm.h"
#include "simulator/wire/Frame.h"
#include "tests/fuzz/Input.h"
#include "tests/fuzz/Require.h"

#include <algorithm>
#include <tins/ethernetII.h>
#include <tins/exceptions.h>

using namespace simulator;
using namespace base::literals;
using base::Bytes;
using base::ByteView;

namespace {

constexpr std::size_t LargestFrame = 1514;    // bytes
constexpr std::size_t LargestDatagram = 1472; // bytes
constexpr std::uint16_t HostPort = 5000;
constexpr std::uint16_t DhcpServerPort = 67;
constexpr base::MacAddress HostMac{{0x02, 0, 0, 0, 0, 0x05}};
constexpr base::Ipv4 Hosts[] = {"192.168.1.5"_ip, "192.168.1.1"_ip,  "10.0.0.5"_ip,
                                "0.0.0.0"_ip,     "192.168.1.20"_ip, "255.255.255.255"_ip};

constexpr const char* Configs[] = {
    R"({"cameras": [{"mac": "001A2B000001", "address": "192.168.1.20", "repeat": 2}]})",
    R"({"cameras": [{"mac": "001A2B000001", "address": "192.168.1.20", "forgedAnswers": 3,
        "noise": ["truncated", "oversized", "foreign", "duplicate", "random", "wrongId"]}]})",
    R"({"cameras": [{"mac": "001A2B000001", "repeat": 2},
        {"mac": "001A2B000011", "ipConfiguration": "lla", "probeInterval": 1}]})",
    R"({"cameras": [{"mac": "001A2B000001", "address": "192.168.1.20", "gateway": "192.168.1.1",
        "answerDelay": 100, "acknowledgeExtra": 64, "pendingAckOn": true, "arpLifetime": 50,
        "readMemoryOmitsAddress": true, "forceIpOffTime": 300, "forceIpAcknowledge": "new",
        "faults": [{"command": "WRITEREG", "action": "pending", "time": 300, "every": 2},
                   {"command": "READREG", "action": "delay", "time": 200, "every": 3},
                   {"command": "READMEM", "action": "twice"}, {"command": "ANY", "action": "seize", "every": 9}]}]})",
    R"({"cameras": [{"mac": "001A2B000001", "address": "192.168.1.20", "answer": "broadcast",
        "interface": 1, "interfaceMacs": ["001A2B000011", "001A2B000001"], "rebootsWithoutAck": true,
        "rebootTime": 10, "forceIpAcknowledge": "broadcast", "ipConfiguration": "persistent"},
        {"mac": "001A2B000002", "address": "10.0.0.20", "answer": "arp", "loss": 0.3, "writeMemory": false}]})",
    R"({"cameras": [{"mac": "001A2B000001", "address": "192.168.1.20", "heldBy": "192.168.1.5", "heldPort": 5000,
        "heldPrivilege": "control", "heartbeatOff": true, "stream": "192.168.1.5:50020", "streams": 2,
        "tellsHolder": false, "linkSpeed": 0}],
        "neighbours": [{"mac": "02A000000001", "address": "192.168.1.20"},
                       {"mac": "02A000000002", "asks": "dhcp", "every": 500},
                       {"mac": "02A000000003", "asks": "arp", "address": "192.168.1.20", "every": 700},
                       {"mac": "02A000000004", "asks": "announce", "address": "192.168.1.30"}]})",
    R"({"cameras": [{"mac": "001A2B000001", "address": "192.168.1.20", "rebootTime": 10,
        "faults": [{"command": "CHANGE", "action": "reset", "after": 2, "every": 3, "times": 9},
                   {"command": "CHANGE", "action": "hold", "after": 1, "every": 2, "times": 9}]},
        {"mac": "001A2B000002", "plugged": false, "ipConfiguration": "lla", "probeInterval": 1}]})",
};

const FarmConfig& configOf(unsigned number)
{
    static const std::vector<FarmConfig> all = [] {
        std::vector<FarmConfig> configs;
        for (const char* const text : Configs)
            configs.push_back(readFarm(text));
        return configs;
    }();
    return all[number % all.size()];
}

class Network
{
public:
    explicit Network(ByteView input)
        : m_input(input),
          m_config(configOf(m_input.byte())),
          m_farm(m_config, m_timers, [this](const Frame& frame) { judge(frame); })
    {}

    void run()
    {
        while (!m_input.isAtEnd())
            step();
    }

private:
    void step()
    {
        switch (m_input.byte() % 8) {
        case 0:
            receive(m_input.bytes(m_input.u16() % LargestFrame));
            break;
        case 1:
        case 2:
            send(command());
            break;
        case 3:
            send(arp());
            break;
        case 4:
            send(echo());
            break;
        case 5:
            if (!m_lastDhcp.empty())
                send(lease());
            break;
        case 6:
            pass(std::chrono::milliseconds{m_input.u16()});
            break;
        case 7:
            obey();
            break;
        }
    }

    /// As the wire gives it.
    void receive(ByteView bytes)
    {
        try {
            const Tins::EthernetII ethernet(bytes.data(), static_cast<std::uint32_t>(bytes.size()));
            if (const auto frame = frameOf(ethernet))
                m_farm.receive(*frame);
        } catch (const Tins::malformed_packet&) {
            return; // None that a capture gives.
        }
    }

    /// It reads as it was written.
    void send(const Frame& frame)
    {
        const Bytes bytes = bytesOf(frame);
        const Tins::EthernetII ethernet(bytes.data(), static_cast<std::uint32_t>(bytes.size()));
        const auto again = frameOf(ethernet);
        require(again && bytesOf(*again) == bytes);
        m_farm.receive(*again);
    }

    Station& camera() { return *m_farm.stations()[m_input.byte() % m_farm.stations().size()]; }

    UdpDatagram command()
    {
        using gvcp::Command;
        constexpr Command Commands[] = {Command::Discovery,     Command::ForceIp,    Command::ReadRegister,
                                        Command::WriteRegister, Command::ReadMemory, Command::WriteMemory,
                                        Command{0x0088}};
        Station& to = camera();
        UdpDatagram datagram = datagramTo(to, gvcp::DevicePort);
        const Command command = m_input.oneOf(Commands);
        const std::uint16_t id = m_input.u16();
        const std::uint8_t flags = m_input.byte();
        datagram.payload = gvcp::encodeCommand(command, flags, id, payload(command, to.mac()));
        return datagram;
    }

    UdpDatagram datagramTo(Station& to, std::uint16_t port)
    {
        const bool isToAll = m_input.byte() % 2 == 0;
        return {HostMac,
                isToAll ? BroadcastMac : to.mac(),
                m_input.oneOf(Hosts),
                isToAll ? base::LimitedBroadcast : to.camera().ip().address,
                HostPort,
                port,
                {}};
    }

    Bytes payload(gvcp::Command command, const base::MacAddress& mac)
    {
        const std::uint8_t size = m_input.byte();
        if (size >= 0xF0) {
            const ByteView bytes = m_input.bytes(m_input.byte());
            Bytes payload(bytes.begin(), bytes.end());
            payload.resize(
                std::min(payload.size() + (size & 0xFu) * 128, LargestDatagram - gvcp::HeaderSize));
            return payload;
        }
        if (command == gvcp::Command::ForceIp)
            return gvcp::encodeForceIp(
                {mac,
                 {address(), size % 2 == 0 ? "255.255.255.0"_ip : base::Ipv4(m_input.u32()), address()}});
        std::vector<std::uint32_t> words(size % 12);
        for (std::uint32_t& each : words)
            each = word();
        return gvcp::encodeWords(words);
    }

    std::uint32_t word()
    {
        namespace reg = gvcp::reg;
        constexpr std::uint32_t Usual[] = {reg::ControlChannelPrivilege,
                                           reg::CurrentIpConfig,
                                           reg::PersistentIp,
                                           reg::HeartbeatTimeout,
                                           reg::GvcpConfiguration,
                                           reg::UserDefinedName.address,
                                           reg::FirstDescriptionUrl.address,
                                           CameraConfig::DescriptionAddress,
                                           0x00010000,
                                           0,
                                           1,
                                           2,
                                           7,
                                           512};
        const std::uint8_t number = m_input.byte();
        return number < std::size(Usual) ? Usual[number] : m_input.u32();
    }

    base::Ipv4 address()
    {
        const std::uint8_t number = m_input.byte();
        if (number < std::size(Hosts))
            return Hosts[number];
        return number % 2 == 0 ? camera().camera().ip().address : base::Ipv4(m_input.u32());
    }

    ArpMessage arp()
    {
        Station& to = camera();
        ArpMessage message;
        message.sourceMac = m_input.byte() % 8 == 0 ? to.mac() : HostMac;
        message.destinationMac = m_input.byte() % 2 == 0 ? BroadcastMac : to.mac();
        message.isRequest = m_input.byte() % 2 == 0;
        message.sender = address();
        message.target = address();
        return message;
    }

    Echo echo()
    {
        Station& to = camera();
        Echo echo{HostMac,
                  to.mac(),
                  m_input.oneOf(Hosts),
                  to.camera().ip().address,
                  m_input.byte() % 8 != 0,
                  m_input.u16(),
                  1,
                  {}};
        echo.payload.resize(m_input.u16() % LargestDatagram);
        return echo;
    }

    /// A server's answer to the latest message of a camera that looks for one.
    UdpDatagram lease()
    {
        constexpr std::uint8_t Reply = 2;
        constexpr std::size_t AddressAt = 16;
        constexpr std::size_t OptionsAt = 240;
        UdpDatagram datagram = datagramTo(camera(), DhcpClient::Port);
        datagram.payload.assign(m_lastDhcp.begin(), m_lastDhcp.begin() + OptionsAt);
        datagram.payload[0] = Reply;
        base::writeIpv4(datagram.payload, AddressAt, address());
        datagram.payload.insert(datagram.payload.end(), {53, 1, m_input.byte(), 54, 4, 192, 168, 1, 1});
        const ByteView options = m_input.bytes(m_input.byte());
        datagram.payload.insert(datagram.payload.end(), options.begin(), options.end());
        datagram.payload.push_back(0xFF);
        return datagram;
    }

    void pass(std::chrono::milliseconds time)
    {
        const auto end = m_timers.now() + time;
        for (auto next = m_timers.next(); next && *next <= end; next = m_timers.next())
            m_timers.advance(*next);
        m_timers.advance(end);
    }

    void obey()
    {
        constexpr const char* Commands[] = {"unplug", "plug",     "hold",  "release", "reset",
                                            "show",   "announce", "fault", "heal"};
        std::string line = m_input.oneOf(Commands);
        line += " " + camera().mac().toText() + " ";
        const ByteView options = m_input.bytes(m_input.byte());
        line.append(options.begin(), options.end());
        try {
            runCommand(m_farm, line);
        } catch (const CommandError& error) {
            require(*error.what() != '\0');
        }
    }

    void judge(const Frame& frame)
    {
        const auto& mac = std::visit(
            [](const auto& each) -> const auto& { return each.sourceMac; }, frame);
        require(bytesOf(frame).size() <= LargestFrame);
        Station* const sender = m_farm.find(mac);
        if (!sender) {
            judgeNeighbours(frame, mac);
            return;
        }
        require(sender->isPlugged() && sender->phase() != BootSequence::Phase::Off);
        if (const auto* const datagram = std::get_if<UdpDatagram>(&frame))
            judge(*datagram, *sender);
    }

    void judgeNeighbours(const Frame& frame, const base::MacAddress& mac) const
    {
        const auto& all = m_config.neighbours;
        const auto sender =
            std::ranges::find_if(all, [&mac](const NeighbourConfig& each) { return each.mac == mac; });
        require(sender != all.end());
        if (sender->asks == NeighbourConfig::Asks::Dhcp)
            require(std::get<UdpDatagram>(frame).destinationPort == DhcpServerPort);
        else
            require(std::holds_alternative<ArpMessage>(frame));
    }

    void judge(const UdpDatagram& datagram, Station& sender)
    {
        if (datagram.sourcePort == DhcpClient::Port) {
            require(datagram.destinationPort == DhcpServerPort);
            require(sender.phase() == BootSequence::Phase::Dhcp);
            m_lastDhcp = datagram.payload;
            return;
        }
        require(datagram.sourcePort == gvcp::DevicePort);
        if (!m_config.cameras[0].noise.empty())
            return; // It sends garbage as well.
        const auto answer = gvcp::parseAcknowledge(datagram.payload);
        require(answer && answer->id != 0);
        require(answer->payload.size() + gvcp::HeaderSize == datagram.payload.size());
        require(answer->payload.size() <= gvcp::MaxPayload + m_config.cameras[0].acknowledgeExtra);
    }

    Input m_input;
    const FarmConfig& m_config;
    TimerQueue m_timers{TimerQueue::Clock::time_point{}};
    Bytes m_lastDhcp; ///< Of whichever camera.
    Farm m_farm;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    Network({data, size}).run();
    return 0;
}
