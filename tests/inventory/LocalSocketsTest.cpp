// SPDX-License-Identifier: Apache-2.0
// What the kernel tells of real sockets, in a network namespace.
#include "inventory/LocalSockets.h"

#include "base/FileDescriptor.h"
#include "tests/support/NetworkLab.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <arpa/inet.h>
#include <sys/socket.h>

using inventory::OwnedSocket;
using namespace base::literals;

namespace {

std::string connecting(int port)
{
    return "exec 3<>/dev/udp/127.0.0.1/" + std::to_string(port) + "; echo ready; exec sleep 100";
}

/// The sockets that are connected to a port of 127.0.0.1.
std::vector<OwnedSocket> connectedTo(std::uint16_t port)
{
    std::vector<OwnedSocket> result = inventory::localSockets().sockets;
    std::erase_if(result, [port](const OwnedSocket& each) {
        return each.socket.remote != inventory::Endpoint{"127.0.0.1"_ip, port};
    });
    return result;
}

} // namespace

TEST(LocalSockets, AreThoseOfOtherProgramsInTheThreadsNetwork)
{
    const lab::Namespace host;
    const lab::Namespace elsewhere;
    lab::Process other = host.start({"bash", "-c", "bash -c '" + connecting(4001) + "' & wait"});
    lab::Process another = elsewhere.start({"bash", "-c", "bash -c '" + connecting(4001) + "' & wait"});
    EXPECT_EQ(other.readLine(), "ready");
    EXPECT_EQ(another.readLine(), "ready");

    const lab::Visit visit(host);
    const auto sockets = connectedTo(4001);
    ASSERT_EQ(sockets.size(), 1u);
    EXPECT_EQ(sockets[0].user, "root");
    ASSERT_EQ(sockets[0].processes.size(), 1u);
    EXPECT_EQ(sockets[0].processes[0].user, "root");
    EXPECT_THAT(sockets[0].processes[0].commandLine,
                testing::AnyOf("sleep 100", testing::StartsWith("bash -c exec")));
}

TEST(LocalSockets, AreNeitherThisProcesssNorItsHelpers)
{
    const lab::Namespace host;
    lab::Process helper = host.start({"bash", "-c", connecting(4002)});
    EXPECT_EQ(helper.readLine(), "ready");

    const lab::Visit visit(host);
    const base::FileDescriptor own(::socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0));
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(4002);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    ASSERT_EQ(::connect(own.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    const auto all = inventory::udpSockets();
    EXPECT_EQ(std::ranges::count(all, std::uint16_t{4002}, [](const auto& each) { return each.remote.port; }),
              2);
    EXPECT_TRUE(connectedTo(4002).empty());
}
