// SPDX-License-Identifier: Apache-2.0
#include "inventory/Holding.h"

#include "inventory/LocalSockets.h"

#include <algorithm>
#include <functional>

namespace inventory {
namespace {

/// Where every camera listens for commands.
constexpr std::uint16_t CameraPort = 3956;

using Sentences = std::vector<base::Sentence>;

/// Those of whom one may hold the camera: programs, and users whose programs may not be seen.
struct Suspects
{
    std::vector<Process> processes;
    std::vector<std::string> users;

    std::size_t count() const { return processes.size() + users.size(); }
    bool isOneProcess() const { return count() == 1 && !processes.empty(); }

    /// "python3 (process 4711, of alice), a program of bob".
    std::string toText() const
    {
        std::string text;
        for (const Process& process : processes)
            text += (text.empty() ? "" : ", ") + process.name + " (process " + std::to_string(process.pid) +
                    ", of " + process.user + ")";
        for (const std::string& user : users)
            text += (text.empty() ? "" : ", ") + std::string("a program of ") + user;
        return text;
    }
};

/// Of a socket that several processes share, the first is meant.
Suspects ownersOf(const LocalSockets& local, const std::function<bool(const UdpSocket&)>& isIt)
{
    Suspects suspects;
    for (const OwnedSocket& each : local.sockets) {
        if (!isIt(each.socket))
            continue;
        if (each.processes.empty()) {
            if (std::ranges::find(suspects.users, each.user) == suspects.users.end())
                suspects.users.push_back(each.user);
        } else if (std::ranges::find(suspects.processes, each.processes.front().pid, &Process::pid) ==
                   suspects.processes.end()) {
            suspects.processes.push_back(each.processes.front());
        }
    }
    return suspects;
}

bool isConnectedTo(const UdpSocket& socket, const Camera& camera)
{
    return socket.remote == Endpoint{camera.ip.address, CameraPort};
}

/// One that is not connected, or to this camera: else the kernel lets nothing of it through.
bool canHear(const UdpSocket& socket, const Camera& camera)
{
    return !socket.isConnected() || isConnectedTo(socket, camera);
}

bool isOwn(base::Ipv4 address, const std::vector<Adapter>& adapters)
{
    return std::ranges::any_of(adapters,
                               [address](const Adapter& adapter) { return adapter.hasAddress(address); });
}

/// One camera, and what is found out of who holds it.
class Investigation
{
public:
    Investigation(const Camera& camera, const std::vector<Adapter>& adapters, const LocalSockets& local)
        : m_camera(camera),
          m_adapters(adapters),
          m_local(local)
    {}

    Holding run()
    {
        if (!m_camera.privilege)
            ofSilentCamera();
        else if (*m_camera.privilege == Privilege::None)
            say(TRANSLATABLE("Sentence", "No application controls the camera."));
        else
            ofHeldCamera();
        return std::move(m_holding);
    }

private:
    void say(const char* format, std::vector<std::string> values = {})
    {
        m_holding.reason.push_back({format, std::move(values)});
    }

    Suspects connected() const
    {
        return ownersOf(m_local, [this](const UdpSocket& socket) { return isConnectedTo(socket, m_camera); });
    }

    /// Whether it is held is not known, even.
    void ofSilentCamera()
    {
        switch (m_camera.registers) {
        case Registers::NotAsked:
            say(TRANSLATABLE("Sentence", "The camera cannot be asked whether an application holds it, as its "
                                         "address is outside the subnet of the adapter that hears it."));
            break;
        case Registers::OthersTold:
            say(TRANSLATABLE("Sentence", "The camera cannot be asked whether an application holds it, as "
                                         "another camera answers at its address; give one of the two "
                                         "another address first."));
            return;
        default:
            say(TRANSLATABLE("Sentence",
                             "The camera did not tell, when it was asked, whether an application holds it."));
        }
        const Suspects suspects = connected();
        if (suspects.count() == 0)
            return;
        m_holding.isGuess = true;
        accuse(suspects);
        say(TRANSLATABLE("Sentence",
                         "A socket of this computer is connected to the camera, which proves that "
                         "somebody talks with it and not that it is held: %1."),
            {suspects.toText()});
    }

    void ofHeldCamera()
    {
        if (m_camera.privilege == Privilege::Exclusive)
            say(TRANSLATABLE("Sentence",
                             "The camera is held exclusively: others may not even read from it."));
        const bool isHolderTold = m_camera.holder && !m_camera.holder->address.isUnspecified();
        if (!isHolderTold)
            ofUnknownHolder();
        else if (isOwn(m_camera.holder->address, m_adapters))
            ofHolderHere(*m_camera.holder);
        else
            ofHolderElsewhere(*m_camera.holder);
        if (m_camera.isHeartbeatOff.value_or(false))
            say(TRANSLATABLE("Sentence",
                             "The camera's heartbeat is switched off: should the application end without "
                             "giving it back, it stays held for ever. End the application properly; if it is "
                             "gone, cut the camera's power."));
    }

    void ofHolderElsewhere(const Endpoint& holder)
    {
        const auto neighbour = std::ranges::find_if(m_local.neighbours, [&](const Neighbour& each) {
            return each.address == holder.address && each.adapterIndex == m_camera.adapterIndex;
        });
        if (neighbour == m_local.neighbours.end())
            say(TRANSLATABLE("Sentence", "It is held by an application on another computer, %1, port %2; "
                                         "which program that is, can be seen there only."),
                {holder.address.toText(), std::to_string(holder.port)});
        else
            say(TRANSLATABLE("Sentence", "It is held by an application on another computer, %1 (MAC address "
                                         "%3), port %2; which program that is, can be seen there only."),
                {holder.address.toText(), std::to_string(holder.port), neighbour->mac.toText()});
    }

    void ofHolderHere(const Endpoint& holder)
    {
        const auto at = [&](base::Ipv4 address) {
            return ownersOf(m_local, [&, address](const UdpSocket& socket) {
                return socket.local == Endpoint{address, holder.port} && canHear(socket, m_camera);
            });
        };
        Suspects suspects = at(holder.address);
        if (suspects.count() == 0)
            suspects = at({});
        if (suspects.count() > 0) {
            prove(suspects,
                  TRANSLATABLE("Sentence", "The camera names this computer's %1, port %2, as its holder, and "
                                           "that is a socket of: %3."),
                  {holder.address.toText(), std::to_string(holder.port), suspects.toText()});
        } else if (const Suspects talking = connected(); talking.count() > 0) {
            proveByConnection(talking);
        } else {
            say(TRANSLATABLE("Sentence",
                             "The camera names this computer's %1, port %2, as its holder, but no program "
                             "has that socket now: it has ended without giving the camera back, or runs in a "
                             "container or virtual machine of this computer."),
                {holder.address.toText(), std::to_string(holder.port)});
            if (m_camera.heartbeatTimeout && !m_camera.isHeartbeatOff.value_or(false))
                say(TRANSLATABLE("Sentence", "If it has ended, the camera lets go %1 ms after it was last "
                                             "heard."),
                    {std::to_string(m_camera.heartbeatTimeout->count())});
        }
    }

    void ofUnknownHolder()
    {
        say(TRANSLATABLE("Sentence", "By whom it is held, the camera does not tell."));
        if (const Suspects talking = connected(); talking.count() > 0)
            return proveByConnection(talking);

        Suspects suspects = withGivenPort([this](base::Ipv4 address) { return isOfAdapter(address); });
        if (suspects.count() == 0)
            suspects = withGivenPort([](base::Ipv4 address) { return address.isUnspecified(); });
        guess(suspects);
        if (suspects.count() == 0)
            say(TRANSLATABLE("Sentence", "No program of this computer has a socket that could be for it, so "
                                         "it is probably held by another computer."));
        else if (suspects.count() == 1)
            say(TRANSLATABLE("Sentence", "A guess: it may be %1, as that alone has a socket that could be "
                                         "for it; or a program of another computer."),
                {suspects.toText()});
        else
            say(TRANSLATABLE("Sentence", "These have sockets that could be for it: %1; or it is a program of "
                                         "another computer."),
                {suspects.toText()});
        noteUnseen(suspects);
    }

    /// Unconnected, on an address that is right and a port that the kernel gave it.
    Suspects withGivenPort(const std::function<bool(base::Ipv4)>& isRight) const
    {
        return ownersOf(m_local, [&](const UdpSocket& socket) {
            return !socket.isConnected() && isRight(socket.local.address) &&
                   socket.local.port >= m_local.firstGivenPort && socket.local.port <= m_local.lastGivenPort;
        });
    }

    bool isOfAdapter(base::Ipv4 address) const
    {
        const auto adapter = std::ranges::find(m_adapters, m_camera.adapterIndex, &Adapter::index);
        return adapter != m_adapters.end() && adapter->hasAddress(address);
    }

    void proveByConnection(const Suspects& talking)
    {
        prove(talking, TRANSLATABLE("Sentence", "A socket of this computer is connected to the camera: %1."),
              {talking.toText()});
    }

    void prove(const Suspects& suspects, const char* format, std::vector<std::string> values)
    {
        accuse(suspects);
        say(format, std::move(values));
        noteUnseen(suspects);
    }

    void accuse(const Suspects& suspects)
    {
        if (suspects.isOneProcess())
            m_holding.process = suspects.processes.front();
    }

    void guess(const Suspects& suspects)
    {
        accuse(suspects);
        m_holding.isGuess = m_holding.process.has_value();
    }

    void noteUnseen(const Suspects& suspects)
    {
        if (!suspects.users.empty())
            say(TRANSLATABLE("Sentence", "Which program of another user that is, only root may see."));
    }

    const Camera& m_camera;
    const std::vector<Adapter>& m_adapters;
    const LocalSockets& m_local;
    Holding m_holding;
};

} // namespace

Holding whoHolds(const Camera& camera, const std::vector<Adapter>& adapters, const LocalSockets& local)
{
    return Investigation(camera, adapters, local).run();
}

} // namespace inventory
