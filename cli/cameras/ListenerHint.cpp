// SPDX-License-Identifier: Apache-2.0
#include "cli/cameras/ListenerHint.h"

#include <grp.h>
#include <pwd.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace cli {
namespace {

/// The word as a shell takes it for one.
std::string quoted(const std::string& word)
{
    constexpr const char* plain = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789/._-+";
    if (word.find_first_not_of(plain) == std::string::npos)
        return word;
    std::string result = "'";
    for (const char each : word)
        result += each == '\'' ? std::string("'\\''") : std::string(1, each);
    return result + "'";
}

std::string grant(const std::string& program)
{
    return "sudo setcap cap_net_raw+ep " + quoted(program);
}

std::string withCommand(const std::string& reason, const std::string& command)
{
    return reason + ":\n    " + command + "\n";
}

std::string ofForbidden(const std::string& program)
{
    struct stat file
    {};
    if (::stat(program.c_str(), &file) != 0)
        return program + ", which hears them all, is out of this user's reach.\n";
    if ((file.st_mode & (S_IXUSR | S_IXGRP | S_IXOTH)) == 0)
        return withCommand(program + ", which hears them all, may not be run. To change it",
                           "sudo chmod 0755 " + quoted(program) + " && " + grant(program));
    const group* const members = ::getgrgid(file.st_gid);
    const passwd* const user = ::getpwuid(::getuid());
    if (!members || !user || (file.st_mode & S_IXGRP) == 0 || file.st_gid == 0)
        return program + ", which hears them all, is not for this user to run.\n";
    return withCommand("only the group " + std::string(members->gr_name) + " may run " + program +
                           ", which hears them all. To join it, from the next login on",
                       "sudo usermod -a -G " + quoted(members->gr_name) + " " + quoted(user->pw_name));
}

std::string ofUnprivileged(const std::string& program)
{
    if (::getxattr(program.c_str(), "security.capability", nullptr, 0) > 0)
        return program +
               ", which hears them all, has the privilege for it and may not use it here: in a container "
               "without CAP_NET_RAW, on a file system that is mounted with nosuid, or under "
               "no_new_privs.\n";
    return withCommand("the program lacks the privilege to hear them all. To give it", grant(program));
}

std::string reason(const ListenerReport& report)
{
    const std::string program = report.strProgram.toStdString();
    switch (report.state) {
    case ListenerState::Hears:
        break;
    case ListenerState::Missing:
        return program + ", which hears them all, is not there. Install or build it again.\n";
    case ListenerState::Forbidden:
        return ofForbidden(program);
    case ListenerState::Unprivileged:
        return ofUnprivileged(program);
    case ListenerState::Failed:
        return program + ", which hears them all, did not start, or did not go on.\n";
    }
    return {};
}

} // namespace

std::string listenerHint(const ListenerReport& report)
{
    const std::string text = reason(report);
    return text.empty() ? text
                        : "note: cameras outside this computer's subnets may be missing, because " + text;
}

std::string listenerDoubt(const ListenerReport& report)
{
    return report.state == ListenerState::Hears
               ? ""
               : "as the listener has not its privilege, a camera outside the subnet may not be heard";
}

} // namespace cli
