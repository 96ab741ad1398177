// SPDX-License-Identifier: Apache-2.0
#include "doctor/ListenerFault.h"

#include "doctor/Words.h"

#include <grp.h>
#include <pwd.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace doctor {
namespace {

std::string grant(const std::string& program)
{
    return "setcap cap_net_raw+ep " + quoted(program);
}

ListenerFault ofForbidden(const std::string& program)
{
    struct stat file
    {};
    if (::stat(program.c_str(), &file) != 0)
        return {
            {TRANSLATABLE("Sentence", "%1, which hears them all, is out of this user's reach."), {program}},
            {},
            {}};
    if ((file.st_mode & (S_IXUSR | S_IXGRP | S_IXOTH)) == 0)
        return {{TRANSLATABLE("Sentence", "%1, which hears them all, may not be run."), {program}},
                {TRANSLATABLE("Sentence", "To change it"), {}},
                {"chmod 0755 " + quoted(program), grant(program)}};
    const group* const members = ::getgrgid(file.st_gid);
    const passwd* const user = ::getpwuid(::getuid());
    if (!members || !user || (file.st_mode & S_IXGRP) == 0 || file.st_gid == 0)
        return {
            {TRANSLATABLE("Sentence", "%1, which hears them all, is not for this user to run."), {program}},
            {},
            {}};
    return {{TRANSLATABLE("Sentence", "Only the group %1 may run %2, which hears them all."),
             {members->gr_name, program}},
            {TRANSLATABLE("Sentence", "To join it, from the next login on"), {}},
            {"usermod -a -G " + quoted(members->gr_name) + " " + quoted(user->pw_name)}};
}

ListenerFault ofUnprivileged(const std::string& program)
{
    if (::getxattr(program.c_str(), "security.capability", nullptr, 0) > 0)
        return {{TRANSLATABLE("Sentence",
                              "%1, which hears them all, has the privilege for it and may not use it "
                              "here: in a container without CAP_NET_RAW, on a file system that is mounted "
                              "with nosuid, or under no_new_privs."),
                 {program}},
                {},
                {}};
    return {{TRANSLATABLE("Sentence", "The program lacks the privilege to hear them all."), {}},
            {TRANSLATABLE("Sentence", "To give it"), {}},
            {grant(program)}};
}

} // namespace

std::optional<ListenerFault> findListenerFault(inventory::Listener listener, const std::string& program)
{
    switch (listener) {
    case inventory::Listener::Hears:
        break;
    case inventory::Listener::Missing:
        return {
            {{TRANSLATABLE("Sentence", "%1, which hears them all, is not there. Install or build it again."),
              {program}},
             {},
             {}}};
    case inventory::Listener::Forbidden:
        return ofForbidden(program);
    case inventory::Listener::Unprivileged:
        return ofUnprivileged(program);
    case inventory::Listener::Failed:
        return {{{TRANSLATABLE("Sentence", "%1, which hears them all, did not start, or did not go on."),
                  {program}},
                 {},
                 {}}};
    }
    return {};
}

} // namespace doctor
