// SPDX-License-Identifier: Apache-2.0
#ifdef __SANITIZE_ADDRESS__

#include <dlfcn.h>
#include <pthread.h>
#include <sanitizer/asan_interface.h>

/// In place of the C library's. The address sanitizer marks what is around a frame's variables and takes the
/// marks away when the function returns or an exception passes, not when the thread's cancellation does.
extern "C" void pthread_testcancel()
{
    static const auto real = reinterpret_cast<void (*)()>(dlsym(RTLD_NEXT, "pthread_testcancel"));
    __asan_handle_no_return();
    real();
}

#endif
