// SPDX-License-Identifier: Apache-2.0
#include "hear/Confinement.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstring>
#include <net/ethernet.h>
#include <net/if_arp.h>
#include <netinet/in.h>
#include <netpacket/packet.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {

int fail(const char* what, int error = errno)
{
    std::fprintf(stderr, "ip-configurator-hear: %s: %s\n", what, std::strerror(error));
    return 1;
}

/// A number in decimal digits, from 1 to the largest; 0 for anything else.
int readNumber(const char* text, int largest)
{
    long number = 0;
    for (; *text >= '0' && *text <= '9' && number <= largest; ++text)
        number = 10 * number + (*text - '0');
    return *text == '\0' && number <= largest ? static_cast<int>(number) : 0;
}

/// Ends with standard input, or when nobody reads standard output any more, also while a reader takes
/// nothing: the kernel drops what comes meanwhile.
int relay(int socket)
{
    constexpr ssize_t Largest = 0xFFFF;
    static unsigned char packet[2 + Largest]; // At first the empty one, which says that it listens.
    // An adapter that is shut down says so once, and may come back.
    const auto failed = [](ssize_t result) {
        return result < 0 && errno != EINTR && errno != EAGAIN && errno != ENETDOWN;
    };
    for (ssize_t written = 0, size = 2;;) {
        const bool isFull = written < size;
        pollfd fds[] = {{STDIN_FILENO, POLLIN, 0}, {isFull ? -1 : socket, POLLIN, 0}, {STDOUT_FILENO, 0, 0}};
        fds[2].events = isFull ? POLLOUT : 0;
        if (failed(ppoll(fds, 3, nullptr, nullptr)))
            return 1;
        char ignored[512];
        const ssize_t input = fds[0].revents != 0 ? read(STDIN_FILENO, ignored, sizeof ignored) : 1;
        if (input == 0 || failed(input) || (fds[2].revents & ~POLLOUT) != 0)
            return 0;
        ssize_t count = 0;
        if (isFull && fds[2].revents != 0) {
            // Whoever takes anything takes so much of it at once.
            const auto part = static_cast<std::size_t>(std::min<ssize_t>(size - written, PIPE_BUF));
            count = write(STDOUT_FILENO, packet + written, part);
            written += std::max<ssize_t>(count, 0);
        } else if (fds[1].revents != 0) {
            count = recv(socket, packet + 2, Largest, MSG_DONTWAIT | MSG_TRUNC);
            if (count > 0 && count <= Largest) {
                packet[0] = static_cast<unsigned char>(count >> 8);
                packet[1] = static_cast<unsigned char>(count);
                written = 0;
                size = 2 + count;
            }
        }
        if (failed(count))
            return 1;
    }
}

} // namespace

int main(int argc, char** argv)
{
    const bool arrivals = argc == 3 && std::strcmp(argv[2], "arrivals") == 0;
    const int adapter = argc == 3 ? readNumber(argv[1], INT_MAX) : 0;
    const int port = argc == 3 ? readNumber(argv[2], 0xFFFF) : 0;
    if (adapter == 0 || (port == 0 && !arrivals)) {
        std::fputs("usage: ip-configurator-hear IFINDEX PORT|arrivals\n", stderr);
        return 2;
    }
    // Without a protocol, nothing comes in before the filter stands and the adapter is named.
    const int socket = ::socket(AF_PACKET, SOCK_RAW | SOCK_CLOEXEC, 0);
    if (socket < 0 && (errno == EPERM || errno == EACCES)) {
        std::fputs("ip-configurator-hear may not hear: its file lacks the capability cap_net_raw.\n", stderr);
        return 3;
    }
    if (socket < 0)
        return fail("socket");
    // In the place of one that was closed, what is written there would be sent.
    if (socket <= STDERR_FILENO)
        return fail("standard input, output or error", EBADF);
    if (const char* failed = hear::hearOnly(socket, adapter, port))
        return fail(failed);
    const int bytes = 4 << 20;
    if (setsockopt(socket, SOL_SOCKET, SO_RCVBUFFORCE, &bytes, sizeof bytes) != 0 &&
        setsockopt(socket, SOL_SOCKET, SO_RCVBUF, &bytes, sizeof bytes) != 0)
        return fail("SO_RCVBUF");
    sockaddr_ll address{AF_PACKET, htons(arrivals ? ETH_P_ALL : ETH_P_IP), adapter, 0, 0, 0, {}};
    socklen_t size = sizeof address;
    if (bind(socket, reinterpret_cast<const sockaddr*>(&address), size) != 0 ||
        getsockname(socket, reinterpret_cast<sockaddr*>(&address), &size) != 0)
        return fail("bind");
    if (address.sll_hatype != ARPHRD_ETHER)
        return 0; // Nothing is to be heard there.
    if (const char* failed = hear::confineTo(socket))
        return fail(failed);
    _exit(relay(socket));
}
