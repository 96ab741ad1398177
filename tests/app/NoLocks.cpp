// SPDX-License-Identifier: Apache-2.0
// Preloaded by a program, it takes record locks from all of its files. The error is the one whose number
// stands in LOCK_ERROR: ENOLCK is that of a file system that knows no locks.
#include <cerrno>
#include <cstdarg>
#include <cstdlib>
#include <dlfcn.h>
#include <fcntl.h>

extern "C" __attribute__((visibility("default"))) int fcntl(int fd, int command, ...)
{
    if (command == F_SETLK) {
        errno = std::atoi(std::getenv("LOCK_ERROR"));
        return -1;
    }
    va_list arguments;
    va_start(arguments, command);
    void* argument =
        va_arg(arguments, void*); // Whatever it is, it fits, and is not looked at where there is none.
    va_end(arguments);
    return reinterpret_cast<int (*)(int, int, void*)>(dlsym(RTLD_NEXT, "fcntl"))(fd, command, argument);
}
