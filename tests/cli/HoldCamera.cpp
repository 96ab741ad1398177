// SPDX-License-Identifier: Apache-2.0
// hold_camera ADDRESS PRIVILEGE [OWN-ADDRESS | connected]: takes control of a camera with that privilege, 1
// exclusive or 2 control, by a socket on an own address, on all of them, or connected to the camera; says
// "held" and keeps it until it is killed.
#include <arpa/inet.h>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <string>
#include <sys/socket.h>
#include <unistd.h>

namespace {

sockaddr_in endpoint(const char* address, std::uint16_t port)
{
    sockaddr_in result{};
    result.sin_family = AF_INET;
    result.sin_port = htons(port);
    if (::inet_pton(AF_INET, address, &result.sin_addr) != 1)
        std::exit(2);
    return result;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc < 3)
        return 2;
    const std::string how = argc > 3 ? argv[3] : "";
    const int socket = ::socket(AF_INET, SOCK_DGRAM, 0);
    const sockaddr_in camera = endpoint(argv[1], 3956);
    const auto* to = reinterpret_cast<const sockaddr*>(&camera);
    if (how == "connected") {
        if (::connect(socket, to, sizeof camera) != 0)
            return 1;
    } else if (!how.empty()) {
        const sockaddr_in own = endpoint(how.c_str(), 0);
        if (::bind(socket, reinterpret_cast<const sockaddr*>(&own), sizeof own) != 0)
            return 1;
    }
    // WRITEREG: the control channel privilege register, 0x0A00.
    const std::array<std::uint8_t, 16> command{
        0x42, 1, 0, 0x82, 0, 8, 0, 1, 0, 0, 0x0A, 0, 0, 0, 0, static_cast<std::uint8_t>(std::atoi(argv[2]))};
    std::array<std::uint8_t, 64> answer{};
    if (::sendto(socket, command.data(), command.size(), 0, to, sizeof camera) < 0 ||
        ::recv(socket, answer.data(), answer.size(), 0) < 8 || answer[0] != 0 || answer[1] != 0)
        return 1;
    std::cout << "held" << std::endl;
    for (;;)
        ::pause();
}
