// SPDX-License-Identifier: Apache-2.0
#include "tests/sdk/FakeNetwork.h"

#include "gvcp/Memory.h"

#include <algorithm>

bool FakeNetwork::send(std::size_t adapter, base::Ipv4 source, base::Ipv4 destination,
                       base::ByteView datagram)
{
    if (brokenAdapters.count(adapter) > 0)
        return false;
    const Sent sent{elapsed(), adapter, source, destination, {datagram.begin(), datagram.end()}};
    if (keepsSent)
        m_sent.push_back(sent);
    onSend(sent);
    return true;
}

std::optional<sdk::Datagram> FakeNetwork::receive(sdk::Clock::time_point until)
{
    if (m_onTheirWay.empty() || m_onTheirWay.begin()->first > std::max(until, m_now)) {
        m_now = std::max(until, m_now);
        return std::nullopt;
    }
    auto first = m_onTheirWay.extract(m_onTheirWay.begin());
    m_now = std::max(m_now, first.key());
    m_received = std::move(first.mapped().bytes);
    return sdk::Datagram{first.mapped().adapter, first.mapped().source, m_received};
}

void FakeNetwork::deliver(sdk::Clock::duration delay, std::size_t adapter, base::Ipv4 source,
                          base::Bytes bytes)
{
    m_onTheirWay.emplace(m_now + delay, OnItsWay{adapter, source, std::move(bytes)});
}

std::vector<FakeNetwork::Sent> FakeNetwork::sentCommands(gvcp::Command command) const
{
    std::vector<Sent> result;
    std::copy_if(m_sent.begin(), m_sent.end(), std::back_inserter(result),
                 [command](const Sent& sent) { return sent.command().command == command; });
    return result;
}

sdk::Adapter adapterWith(unsigned index, base::Ipv4 address, base::Ipv4 mask)
{
    return {"eth" + std::to_string(index), index, {{address, mask}}};
}

gvcp::DiscoveryAck cameraAt(std::uint8_t number, base::Ipv4 ip)
{
    gvcp::DiscoveryAck camera;
    camera.mac = {{0x02, 0, 0, 0, 0, number}};
    camera.ipConfigCurrent = 2;
    camera.ip = {ip, "255.255.255.0"_ip, {}};
    camera.modelName = "Model";
    camera.serialNumber = std::to_string(number);
    return camera;
}

base::Bytes discoveryAnswer(std::uint16_t id, const gvcp::DiscoveryAck& camera)
{
    return gvcp::encodeAcknowledge(gvcp::Command::Discovery, gvcp::Status::Success, id,
                                   gvcp::encodeDiscoveryAck(camera));
}

base::Bytes registerAnswer(std::uint16_t id, std::uint32_t value)
{
    return gvcp::encodeAcknowledge(gvcp::Command::ReadRegister, gvcp::Status::Success, id,
                                   gvcp::encodeWords({value}));
}
