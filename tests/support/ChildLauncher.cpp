// SPDX-License-Identifier: Apache-2.0
#include "tests/support/ChildLauncher.h"

#include <cerrno>
#include <condition_variable>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <functional>
#include <mutex>
#include <optional>
#include <sched.h>
#include <stdexcept>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <thread>
#include <unistd.h>
#include <utility>

namespace lab {

namespace {

/// The parent-death signal comes when the thread that forked ends, not the process. So one thread, which
/// lasts as long as the process, forks for all.
class ForkingThread
{
public:
    static ForkingThread& instance()
    {
        static auto* const forever = new ForkingThread;
        return *forever;
    }

    pid_t fork(const std::function<void()>& child)
    {
        std::unique_lock lock(m_mutex);
        m_changed.wait(lock, [this] { return !m_child; });
        m_child = &child;
        m_pid.reset();
        m_changed.notify_all();
        m_changed.wait(lock, [this] { return m_pid.has_value(); });
        const pid_t pid = *m_pid;
        m_child = nullptr;
        m_changed.notify_all();
        return pid;
    }

private:
    ForkingThread()
    {
        std::thread([this] { work(); }).detach();
    }

    void work()
    {
        std::unique_lock lock(m_mutex);
        for (;;) {
            m_changed.wait(lock, [this] { return m_child && !m_pid; });
            const pid_t pid = ::fork();
            if (pid == 0)
                (*m_child)();
            m_pid = pid;
            m_changed.notify_all();
        }
    }

    std::mutex m_mutex;
    std::condition_variable m_changed;
    const std::function<void()>* m_child = nullptr; ///< What is asked for; ends in exec or _exit.
    std::optional<pid_t> m_pid;
};

/// What runs between fork and exec: nothing there may allocate or lock, other threads may have held anything.
struct Preparation
{
    pid_t parent;
    int namespaceFd;
    int output;
    int errors;
    char* const* arguments;
    const std::string& failure;

    [[noreturn]] void operator()() const
    {
        sigset_t none;
        ::sigemptyset(&none);
        ::sigprocmask(SIG_SETMASK, &none, nullptr);
        ::setpgid(0, 0);
        ::prctl(PR_SET_PDEATHSIG, SIGKILL);
        const bool ready = ::getppid() == parent && ::setns(namespaceFd, CLONE_NEWNET) == 0 &&
                           ::dup2(output, STDOUT_FILENO) >= 0 &&
                           (errors < 0 || ::dup2(errors, STDERR_FILENO) >= 0) &&
                           ::close_range(STDERR_FILENO + 1, ~0u, CLOSE_RANGE_CLOEXEC) == 0;
        if (ready)
            ::execvp(arguments[0], arguments);
        [[maybe_unused]] const ssize_t said = ::write(STDERR_FILENO, failure.data(), failure.size());
        ::_exit(127);
    }
};

struct Pipe
{
    Pipe()
    {
        if (::pipe2(ends, O_CLOEXEC) != 0)
            throw std::runtime_error(std::string("pipe: ") + std::strerror(errno));
    }
    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;
    ~Pipe()
    {
        for (const int end : ends)
            if (end >= 0)
                ::close(end);
    }

    int ends[2]{-1, -1};
};

} // namespace

Child launchChild(int namespaceFd, const std::vector<std::string>& arguments, CaptureErrors captureErrors)
{
    Pipe output;
    std::optional<Pipe> errors;
    if (captureErrors == CaptureErrors::Yes)
        errors.emplace();

    std::vector<char*> pointers;
    for (const std::string& argument : arguments)
        pointers.push_back(const_cast<char*>(argument.c_str()));
    pointers.push_back(nullptr);
    const std::string failure = "cannot start " + arguments.at(0) + "\n";

    const Preparation child{::getpid(),      namespaceFd, output.ends[1], errors ? errors->ends[1] : -1,
                            pointers.data(), failure};
    const pid_t pid = ForkingThread::instance().fork(child);
    if (pid < 0)
        throw std::runtime_error("fork: " + failure);
    // Done by both sides, so that the group exists whoever runs first.
    ::setpgid(pid, pid);
    return {pid, std::exchange(output.ends[0], -1), errors ? std::exchange(errors->ends[0], -1) : -1};
}

int openProcess(pid_t pid)
{
    // glibc 2.36 declares pidfd_open for C only.
    const auto fd = static_cast<int>(::syscall(SYS_pidfd_open, pid, 0));
    if (fd < 0)
        throw std::runtime_error(std::string("pidfd_open: ") + std::strerror(errno));
    return fd;
}

} // namespace lab
