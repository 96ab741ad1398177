// SPDX-License-Identifier: Apache-2.0
#include "cli/session/Interruption.h"

#include <poll.h>
#include <sys/signalfd.h>
#include <system_error>
#include <unistd.h>

namespace cli {
namespace {

bool isIgnored(int signal)
{
    struct sigaction action
    {};
    return ::sigaction(signal, nullptr, &action) == 0 && action.sa_handler == SIG_IGN;
}

} // namespace

Interruption::Interruption()
{
    sigset_t signals;
    sigemptyset(&signals);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP})
        if (!isIgnored(signal))
            sigaddset(&signals, signal);
    m_descriptor = base::FileDescriptor(::signalfd(-1, &signals, SFD_CLOEXEC | SFD_NONBLOCK));
    if (!m_descriptor)
        throw std::system_error(errno, std::generic_category(), "signalfd");
    ::pthread_sigmask(SIG_BLOCK, &signals, &m_before);
}

Interruption::~Interruption()
{
    ::pthread_sigmask(SIG_SETMASK, &m_before, nullptr);
}

bool Interruption::arrives(std::chrono::milliseconds patience)
{
    pollfd waiting{descriptor(), POLLIN, 0};
    if (::poll(&waiting, 1, static_cast<int>(patience.count())) != 1)
        return false;
    signalfd_siginfo signal;
    while (::read(descriptor(), &signal, sizeof signal) == static_cast<ssize_t>(sizeof signal)) {
    }
    return true;
}

} // namespace cli
